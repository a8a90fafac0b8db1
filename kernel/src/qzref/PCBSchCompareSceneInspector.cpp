#include "qzref/PCBSchCompareSceneInspector.h"

#include <mutex>

namespace qzref {

std::map<short, qzk::ecad::ColorVisInfo>
PCBSchCompareSceneInspector::GetSublayerColorVisInfo() const {
    std::lock_guard lock(scene_.stateMutex_);
    return scene_.schColorVis_;
}

std::vector<short> PCBSchCompareSceneInspector::GetPCBDrawOrder() const {
    std::lock_guard lock(scene_.stateMutex_);
    return scene_.pcbDrawOrder_;
}

bool PCBSchCompareSceneInspector::GetPCBDrawOrderFlag() const {
    std::lock_guard lock(scene_.stateMutex_);
    return scene_.pcbDrawOrderFlag_;
}

std::vector<short> PCBSchCompareSceneInspector::GetSchDrawOrder() const {
    std::lock_guard lock(scene_.stateMutex_);
    return scene_.schDrawOrder_;
}

unsigned int PCBSchCompareSceneInspector::GetFirstViewDirtyCount() const {
    std::lock_guard lock(scene_.stateMutex_);
    return scene_.firstViewDirty_;
}

unsigned int PCBSchCompareSceneInspector::GetSecondViewDirtyCount() const {
    std::lock_guard lock(scene_.stateMutex_);
    return scene_.secondViewDirty_;
}

qzk::EcadSource::EcadType PCBSchCompareSceneInspector::GetFirstType() const {
    return scene_._GetFirstType();
}

} // namespace qzref
