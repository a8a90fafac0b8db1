// The ECAD kernel scene's state read back under the scene's own lock, and the controls tests use.
#include "qzref/BaseSceneInspector.h"

#include "../qzk/ecad/AppearanceLayers.h"
#include "qzk/ecad/BaseSceneObserver.h"

#include <mutex>

namespace qzref {

using qzk::ecad::IsAppearanceLayer;

bool BaseSceneInspector::GetLook(AppearanceItem const& item, int layer, Look& out) const {
    if (!IsAppearanceLayer(layer)) {
        return false;
    }
    std::lock_guard lock(scene_.stateMutex_);
    auto it = scene_.looks_[layer].find(AppearanceItem(item));
    if (it == scene_.looks_[layer].end()) {
        return false;
    }
    out = it->second;
    return true;
}

std::size_t BaseSceneInspector::GetLookCount(int layer) const {
    std::lock_guard lock(scene_.stateMutex_);
    return IsAppearanceLayer(layer) ? scene_.looks_[layer].size() : 0;
}

std::map<qzk::ecad::AppearanceItem, BaseSceneInspector::Look>
BaseSceneInspector::GetLooks(int layer) const {
    std::lock_guard lock(scene_.stateMutex_);
    return IsAppearanceLayer(layer) ? scene_.looks_[layer] : std::map<AppearanceItem, Look>();
}

int BaseSceneInspector::GetOpenAppearanceUpdates() const {
    std::lock_guard lock(scene_.stateMutex_);
    return scene_.openAppearanceUpdates_;
}

unsigned int BaseSceneInspector::GetUnbalancedEndCount() const {
    std::lock_guard lock(scene_.stateMutex_);
    return scene_.unbalancedEnds_;
}

std::vector<short> BaseSceneInspector::GetDrawOrder() const {
    std::lock_guard lock(scene_.stateMutex_);
    return scene_.drawOrder_;
}

bool BaseSceneInspector::GetDrawOrderFlag() const {
    std::lock_guard lock(scene_.stateMutex_);
    return scene_.drawOrderFlag_;
}

bool BaseSceneInspector::GetOverlapColor() const {
    std::lock_guard lock(scene_.stateMutex_);
    return scene_.overlapColor_;
}

bool BaseSceneInspector::GetHighlightOnlyVisible() const {
    std::lock_guard lock(scene_.stateMutex_);
    return scene_.highlightOnlyVisible_;
}

bool BaseSceneInspector::GetFillShapes() const {
    std::lock_guard lock(scene_.stateMutex_);
    return scene_.fillShapes_;
}

unsigned int BaseSceneInspector::GetDefaultSelectionColor() const {
    std::lock_guard lock(scene_.stateMutex_);
    return scene_.defaultSelectionColor_;
}

unsigned int BaseSceneInspector::GetViewsDirtyCount() const {
    std::lock_guard lock(scene_.stateMutex_);
    return scene_.viewsDirty_;
}

unsigned int BaseSceneInspector::GetViewCreatedCount() const {
    std::lock_guard lock(scene_.stateMutex_);
    return scene_.viewsCreated_;
}

std::vector<du::SmartPtr<qzk::ecad::Overlay>> BaseSceneInspector::GetOverlays() const {
    std::lock_guard lock(scene_.stateMutex_);
    return scene_.overlays_;
}

std::vector<qzk::ecad::AnnoCVInfo> BaseSceneInspector::GetImageColorVis() const {
    std::lock_guard lock(scene_.stateMutex_);
    return scene_.imageColorVis_;
}

du::SmartPtr<qzk::Observable> BaseSceneInspector::GetApiSceneObservable() const {
    std::lock_guard lock(scene_.stateMutex_);
    return scene_.apiSceneHold_;
}

du::Symbol BaseSceneInspector::GetFilePath(int index) const {
    scene_._ResolveEntryPaths();
    std::lock_guard lock(scene_.stateMutex_);
    return index >= 0 && static_cast<std::size_t>(index) < scene_.paths_.size()
               ? scene_.paths_[index]
               : du::Symbol();
}

void BaseSceneInspector::SetRefuseAppearanceUpdate(bool refuse) {
    std::lock_guard lock(scene_.stateMutex_);
    scene_.refuseAppearanceUpdate_ = refuse;
}

void BaseSceneInspector::SetGroupOverlapColor(dg::Color const& color) {
    {
        std::lock_guard lock(scene_.stateMutex_);
        scene_.groupOverlapColor_ = color;
    }
    scene_._PostNotice(qzk::ecad::BaseSceneObserver::GroupOverlapColorChangedEventId);
}

void BaseSceneInspector::DestroyScene() {
    du::SmartPtr<qzk::ecad::BaseScene> self(&scene_);
    scene_.Destroy();
}

} // namespace qzref
