#include "qzref/SceneInspector.h"

#include <mutex>

namespace qzref {

bool SceneInspector::IsDesignLoadedFlag() const {
    std::lock_guard lock(scene_.stateMutex_);
    return scene_.designLoaded_;
}

} // namespace qzref
