// Looks of items per appearance layer, set inside appearance-update brackets.
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

bool BaseScene::BeginAppearanceUpdate() {
    qzref::Journal::Record(GetObjectName().str(), "BeginAppearanceUpdate");
    std::lock_guard lock(stateMutex_);
    if (refuseAppearanceUpdate_) {
        return false;
    }
    ++openAppearanceUpdates_;
    return true;
}

void BaseScene::ClearItemAppearance(AppearanceItem const& item, bool highlightLayer) {
    // Per item on hot paths: nothing is formatted while the journal is off.
    if (qzref::Journal::IsEnabled()) {
        qzref::Journal::Record(GetObjectName().str(), "ClearItemAppearance",
                               {qzref::Fmt(item), qzref::Fmt(highlightLayer)});
    }
    std::lock_guard lock(stateMutex_);
    looks_[highlightLayer ? HighlightLayer : SelectionLayer].erase(AppearanceItem(item));
}

void BaseScene::_SetLook(AppearanceItem const& item, int layer, Look const& look) {
    std::lock_guard lock(stateMutex_);
    // The key is copied as a plain AppearanceItem, so what a derived record adds never lives on.
    looks_[layer][AppearanceItem(item.object, item.firstHandle, item.secondHandle, item.icm)] =
        look;
}

void BaseScene::SetItemSelectionAppearance(AppearanceItem const& item, dg::Color const& color,
                                           bool fonted, bool excludePlanesCondFigures) {
    if (qzref::Journal::IsEnabled()) {
        qzref::Journal::Record(GetObjectName().str(), "SetItemSelectionAppearance",
                               {qzref::Fmt(item), qzref::Fmt(color), qzref::Fmt(fonted),
                                qzref::Fmt(excludePlanesCondFigures)});
    }
    _SetLook(item, SelectionLayer, Look{color.GetAsHexUI(), fonted, excludePlanesCondFigures});
}

void BaseScene::SetItemHighlightAppearance(AppearanceItem const& item, dg::Color const& color,
                                           bool fonted) {
    if (qzref::Journal::IsEnabled()) {
        qzref::Journal::Record(GetObjectName().str(), "SetItemHighlightAppearance",
                               {qzref::Fmt(item), qzref::Fmt(color), qzref::Fmt(fonted)});
    }
    _SetLook(item, HighlightLayer, Look{color.GetAsHexUI(), fonted, false});
}

void BaseScene::SetItemGroupAppearance(AppearanceItem const& item, dg::Color const& color) {
    if (qzref::Journal::IsEnabled()) {
        qzref::Journal::Record(GetObjectName().str(), "SetItemGroupAppearance",
                               {qzref::Fmt(item), qzref::Fmt(color)});
    }
    _SetLook(item, GroupLayer, Look{color.GetAsHexUI(), false, false});
}

void BaseScene::ClearGroupAppearances(int layer) {
    qzref::Journal::Record(GetObjectName().str(), "ClearGroupAppearances", {qzref::Fmt(layer)});
    if (!IsAppearanceLayer(layer)) {
        return;
    }
    std::lock_guard lock(stateMutex_);
    looks_[layer].clear();
}

void BaseScene::EndAppearanceUpdate() {
    qzref::Journal::Record(GetObjectName().str(), "EndAppearanceUpdate");
    std::lock_guard lock(stateMutex_);
    if (openAppearanceUpdates_ == 0) {
        ++unbalancedEnds_;
        return;
    }
    --openAppearanceUpdates_;
}

bool BaseScene::GetItemAppearanceCount(AppearanceItem const& item, int layer) {
    qzref::Journal::Record(GetObjectName().str(), "GetItemAppearanceCount",
                           {qzref::Fmt(item), qzref::Fmt(layer)});
    if (!IsAppearanceLayer(layer)) {
        return false;
    }
    std::lock_guard lock(stateMutex_);
    return looks_[layer].count(AppearanceItem(item)) != 0;
}

void BaseScene::SetDefaultSelectionAppearance(dg::Color const& color, bool flag) {
    qzref::Journal::Record(GetObjectName().str(), "SetDefaultSelectionAppearance",
                           {qzref::Fmt(color), qzref::Fmt(flag)});
    std::lock_guard lock(stateMutex_);
    defaultSelectionColor_ = color.GetAsHexUI();
}

} // namespace qzk::ecad
