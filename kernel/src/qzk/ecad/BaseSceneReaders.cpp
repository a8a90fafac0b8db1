// What the scene keeps, read back for inspection; and the one control of appearance updates.
#include "qzk/ecad/BaseScene.h"

#include "AppearanceLayers.h"
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

bool BaseScene::GetLook(AppearanceItem const& item, int layer, Look& out) const {
    if (!IsAppearanceLayer(layer)) {
        return false;
    }
    std::lock_guard lock(stateMutex_);
    auto it = looks_[layer].find(AppearanceItem(item));
    if (it == looks_[layer].end()) {
        return false;
    }
    out = it->second;
    return true;
}

std::size_t BaseScene::GetLookCount(int layer) const {
    std::lock_guard lock(stateMutex_);
    return IsAppearanceLayer(layer) ? looks_[layer].size() : 0;
}

std::map<AppearanceItem, BaseScene::Look> BaseScene::GetLooks(int layer) const {
    std::lock_guard lock(stateMutex_);
    return IsAppearanceLayer(layer) ? looks_[layer] : std::map<AppearanceItem, Look>();
}

int BaseScene::GetOpenAppearanceUpdates() const {
    std::lock_guard lock(stateMutex_);
    return openAppearanceUpdates_;
}

unsigned int BaseScene::GetUnbalancedEndCount() const {
    std::lock_guard lock(stateMutex_);
    return unbalancedEnds_;
}

std::vector<short> BaseScene::GetDrawOrder() const {
    std::lock_guard lock(stateMutex_);
    return drawOrder_;
}

bool BaseScene::GetDrawOrderFlag() const {
    std::lock_guard lock(stateMutex_);
    return drawOrderFlag_;
}

bool BaseScene::GetOverlapColor() const {
    std::lock_guard lock(stateMutex_);
    return overlapColor_;
}

bool BaseScene::GetHighlightOnlyVisible() const {
    std::lock_guard lock(stateMutex_);
    return highlightOnlyVisible_;
}

bool BaseScene::GetFillShapes() const {
    std::lock_guard lock(stateMutex_);
    return fillShapes_;
}

unsigned int BaseScene::GetDefaultSelectionColor() const {
    std::lock_guard lock(stateMutex_);
    return defaultSelectionColor_;
}

unsigned int BaseScene::GetViewsDirtyCount() const {
    std::lock_guard lock(stateMutex_);
    return viewsDirty_;
}

unsigned int BaseScene::GetViewCreatedCount() const {
    std::lock_guard lock(stateMutex_);
    return viewsCreated_;
}

std::vector<du::SmartPtr<Overlay>> BaseScene::GetOverlays() const {
    std::lock_guard lock(stateMutex_);
    return overlays_;
}

std::vector<AnnoCVInfo> BaseScene::GetImageColorVis() const {
    std::lock_guard lock(stateMutex_);
    return imageColorVis_;
}

void BaseScene::SetRefuseAppearanceUpdate(bool refuse) {
    std::lock_guard lock(stateMutex_);
    refuseAppearanceUpdate_ = refuse;
}

} // namespace qzk::ecad
