// Instantiated for the board scenes the kernel has, as the board scene itself is.
#include "qzref/BoardSceneInspector.h"

#include "qzk/ecad/CompareColorVisPtrVec.h"
#include "qzk/ecad/SublayerPCB_CVSet.h"

#include <mutex>

namespace qzref {

template <class Base, class ColorSet>
ColorSet BoardSceneInspector<Base, ColorSet>::GetColorVisInfo() const {
    std::lock_guard lock(scene_.stateMutex_);
    return scene_.colorVis_;
}

template <class Base, class ColorSet>
std::vector<qzk::ecad::AppearanceItem> BoardSceneInspector<Base, ColorSet>::GetIsolated() const {
    std::lock_guard lock(scene_.stateMutex_);
    return scene_.isolated_;
}

template <class Base, class ColorSet>
bool BoardSceneInspector<Base, ColorSet>::IsIsolating() const {
    std::lock_guard lock(scene_.stateMutex_);
    return scene_.isolating_;
}

template <class Base, class ColorSet>
bool BoardSceneInspector<Base, ColorSet>::GetIsolateOnlyVisible() const {
    std::lock_guard lock(scene_.stateMutex_);
    return scene_.isolateOnlyVisible_;
}

template <class Base, class ColorSet>
bool BoardSceneInspector<Base, ColorSet>::GetShowLogicalConnection() const {
    std::lock_guard lock(scene_.stateMutex_);
    return scene_.showLogicalConnection_;
}

template class BoardSceneInspector<qzk::ecad::Scene, qzk::ecad::SublayerPCB_CVSet>;
template class BoardSceneInspector<qzk::ecad::CompareScene, qzk::ecad::SublayerPCB_CVSet>;
template class BoardSceneInspector<qzk::ecad::CompareScene, qzk::ecad::CompareColorVisPtrVec>;

} // namespace qzref
