#include "qzref/SchematicCompareSceneInspector.h"

#include <mutex>

namespace qzref {

std::map<short, du::SmartPtr<qzk::ecad::CompareColorVis>>
SchematicCompareSceneInspector::GetSublayerColorVisInfo() const {
    std::lock_guard lock(scene_.stateMutex_);
    return scene_.colorVis_;
}

} // namespace qzref
