// The process-wide registry of designs shared per path between live kernel scenes.
#include "qzk/ecad/BaseScene.h"

#include "SceneMessages.h"
#include "du/CommonAllocatorImpl.h"
#include "du/StringConversion.h"
#include "qzk/AnnoSetTableEntry.h"
#include "qzk/ClassType.h"
#include "qzk/EcadDesign.h"
#include "qzk/Instance.h"
#include "qzk/View.h"
#include "qzk/ViewableSource.h"
#include "qzk/ecad/BaseSceneObserver.h"
#include "qzk/ecad/EcadPCBData.h"
#include "qzref/RecordFmt.h"

#include "qz2d/ecad/Design.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace qzk::ecad {
namespace {

// Designs shared per path between live kernel scenes. Each scene that uses a path holds a counted
// reference to the design, so the raw pointer here stays valid while the path has users.
struct SharedDesign {
    qzk::EcadDesign* design;
    int users;
};

std::mutex& DesignsMutex() {
    static std::mutex mutex;
    return mutex;
}

std::map<std::string, SharedDesign>& Designs() {
    static std::map<std::string, SharedDesign> designs;
    return designs;
}

} // namespace

du::SmartPtr<qzk::EcadDesign> BaseScene::_AcquireDesign(du::Symbol const& path) {
    if (path.empty()) {
        return nullptr;
    }
    std::lock_guard lock(DesignsMutex());
    auto& designs = Designs();
    auto it = designs.find(path.str());
    if (it != designs.end()) {
        ++it->second.users;
        return du::SmartPtr<qzk::EcadDesign>(it->second.design);
    }
    du::SmartPtr<qzk::EcadDesign> design = qzk::EcadDesign::FromFile(path.str());
    designs.emplace(path.str(), SharedDesign{design.Get(), 1});
    return design;
}

void BaseScene::_ReleaseDesign(du::Symbol const& path) {
    if (path.empty()) {
        return;
    }
    std::lock_guard lock(DesignsMutex());
    auto& designs = Designs();
    auto it = designs.find(path.str());
    if (it != designs.end() && --it->second.users == 0) {
        designs.erase(it);
    }
}

} // namespace qzk::ecad
