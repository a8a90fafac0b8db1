#include "qzref/SchematicSceneInspector.h"

#include <mutex>

namespace qzref {

std::map<short, qzk::ecad::ColorVisInfo> SchematicSceneInspector::GetSublayerColorVisInfo() const {
    std::lock_guard lock(scene_.stateMutex_);
    return scene_.colorVis_;
}

} // namespace qzref
