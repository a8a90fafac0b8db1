#include "qzref/CompareSceneInspector.h"

#include "qzk/ecad/BaseSceneObserver.h"

#include <mutex>

namespace qzref {

dg::Color CompareSceneInspector::GetFirstItemColor() const {
    std::lock_guard lock(scene_.stateMutex_);
    return scene_.firstColor_;
}

dg::Color CompareSceneInspector::GetSecondItemColor() const {
    std::lock_guard lock(scene_.stateMutex_);
    return scene_.secondColor_;
}

dg::Color CompareSceneInspector::GetCommonItemColor() const {
    std::lock_guard lock(scene_.stateMutex_);
    return scene_.commonColor_;
}

bool CompareSceneInspector::IsDesignFinished(bool second) const {
    std::lock_guard lock(scene_.stateMutex_);
    return scene_.finished_[second ? 1 : 0];
}

void CompareSceneInspector::ChangeItemColors(dg::Color const& first, dg::Color const& second,
                                             dg::Color const& common) {
    {
        std::lock_guard lock(scene_.stateMutex_);
        scene_.firstColor_ = first;
        scene_.secondColor_ = second;
        scene_.commonColor_ = common;
    }
    scene_._PostNotice(qzk::ecad::BaseSceneObserver::CompareColorChangedEventId);
}

} // namespace qzref
