#include "scene/DrawOrderLists.h"

#include "du/AssembleArgs.h"
#include "du/Localizer.h"
#include "qzk/Operation.h"
#include "qzk/Scene.h"
#include "qzk/ecad/BaseScene.h"

#include <algorithm>

namespace qzkapp::ecad {
namespace {

char const kCatalogue[] = "qzecad:qzecadStrings";

du::SmartPtr<qzk::Operation> NewOperation(std::string const& name,
                                          du::SmartPtr<qzk::ecad::BaseScene> const& scene) {
    return du::MakeCounted<qzk::Operation>(name, du::SmartPtr<qzk::Scene>(scene), false);
}

} // namespace

du::SmartPtr<qzk::Operation>
NewMoveLayerOperation(std::string const& layerName,
                      du::SmartPtr<qzk::ecad::BaseScene> const& scene) {
    du::Localizer const localizer(kCatalogue);
    return NewOperation(localizer.LocalizeMessage("DisplayPriorityUndo",
                                                  du::AssembleArgs("%s", layerName),
                                                  static_cast<du::Localizer::ActionOnFailure>(0)),
                        scene);
}

du::SmartPtr<qzk::Operation>
NewResetDrawOrderOperation(du::SmartPtr<qzk::ecad::BaseScene> const& scene) {
    du::Localizer const localizer(kCatalogue);
    return NewOperation(localizer.LocalizeMessage("DisplayPriorityResetUndo",
                                                  static_cast<du::Localizer::ActionOnFailure>(0)),
                        scene);
}

void MoveLayerTo(std::vector<short>& list, uint64 oldIndex, uint64 index) {
    short const layer = list[oldIndex];
    list.erase(list.begin() + static_cast<std::ptrdiff_t>(oldIndex));
    auto const at = std::min<uint64>(index, list.size());
    list.insert(list.begin() + static_cast<std::ptrdiff_t>(at), layer);
}

bool PreviewLayerOnTop(std::vector<short>& order, short layer) {
    if (order.size() < 2) {
        return false;
    }
    auto found = std::find(order.begin() + 1, order.end(), layer);
    if (found == order.end()) {
        return false;
    }
    std::rotate(order.begin(), found, found + 1);
    return true;
}

std::vector<short> MergeDrawOrder(std::vector<short> const& order, std::vector<short>& present) {
    std::vector<short> merged;
    for (short handle : order) {
        auto found = std::find(present.begin(), present.end(), handle);
        if (found != present.end()) {
            merged.push_back(handle);
            present.erase(found);
        }
    }
    merged.insert(merged.end(), present.begin(), present.end());
    return merged;
}

} // namespace qzkapp::ecad
