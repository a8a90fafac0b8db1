// The scene-wide switches: draw order, overlap colour, highlight-only-visible, fill.
#include "qzk/ecad/BaseScene.h"

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

void BaseScene::SetDrawOrder(std::vector<short> const& order, bool flag, bool invert) {
    qzref::Journal::Record(GetObjectName().str(), "SetDrawOrder",
                           {qzref::Fmt(order), qzref::Fmt(flag), qzref::Fmt(invert)});
    {
        std::lock_guard lock(stateMutex_);
        drawOrder_ = order;
        drawOrderFlag_ = flag;
        invertLayers = invert;
    }
    // Every call is a new order for the views, so every call is told.
    _PostNotice(BaseSceneObserver::DrawOrderChangedEventId);
}

void BaseScene::SetOverlapColor(bool on) {
    qzref::Journal::Record(GetObjectName().str(), "SetOverlapColor", {qzref::Fmt(on)});
    std::size_t count = 0;
    {
        std::lock_guard lock(stateMutex_);
        if (overlapColor_ == on) {
            return;
        }
        overlapColor_ = on;
        count = looks_[GroupLayer].size();
    }
    auto shortCount = static_cast<unsigned short>(
        std::min<std::size_t>(count, std::numeric_limits<unsigned short>::max()));
    _PostNotice(BaseSceneObserver::OverlapChangedEventId, [on, shortCount](dom::ObserverProxy& p) {
        p.PushBooleanValue(on);
        p.PushUInt16Value(shortCount);
    });
    _TellSwitch(Switch::OverlapColor, on);
}

void BaseScene::GetGroupOverlapColor(dg::Color& out) const {
    qzref::Journal::Record(GetObjectName().str(), "GetGroupOverlapColor");
    std::lock_guard lock(stateMutex_);
    out = groupOverlapColor_;
}

void BaseScene::SetHighlightOnlyVisible(bool onlyVisible) {
    qzref::Journal::Record(GetObjectName().str(), "SetHighlightOnlyVisible",
                           {qzref::Fmt(onlyVisible)});
    {
        std::lock_guard lock(stateMutex_);
        if (highlightOnlyVisible_ == onlyVisible) {
            return;
        }
        highlightOnlyVisible_ = onlyVisible;
    }
    _PostNotice(BaseSceneObserver::HighlightSettingsEventId,
                [onlyVisible](dom::ObserverProxy& p) { p.PushBooleanValue(onlyVisible); });
    _TellSwitch(Switch::HighlightOnlyVisible, onlyVisible);
}

void BaseScene::SetFillShapes(bool fill) {
    qzref::Journal::Record(GetObjectName().str(), "SetFillShapes", {qzref::Fmt(fill)});
    {
        std::lock_guard lock(stateMutex_);
        if (fillShapes_ == fill) {
            return;
        }
        fillShapes_ = fill;
    }
    _PostNotice(BaseSceneObserver::FillShapesChangedEventId,
                [fill](dom::ObserverProxy& p) { p.PushBooleanValue(fill); });
    _TellSwitch(Switch::FillShapes, fill);
}

void BaseScene::SetGroupOverlapColor(dg::Color const& color) {
    {
        std::lock_guard lock(stateMutex_);
        groupOverlapColor_ = color;
    }
    _PostNotice(BaseSceneObserver::GroupOverlapColorChangedEventId);
}

int BaseScene::_AppearanceAspect(Switch, bool& schematic) const {
    schematic = false;
    return -1;
}

void BaseScene::_TellSwitch(Switch which, bool on) {
    bool schematic = false;
    int aspect = _AppearanceAspect(which, schematic);
    if (aspect < 0) {
        return;
    }
    std::vector<unsigned int> changed{static_cast<unsigned int>(aspect)};
    std::vector<unsigned int> none;
    _PostNotice(BaseSceneObserver::AppearanceChangedEventId,
                [schematic, on, changed, none](dom::ObserverProxy& p) {
                    p.PushBooleanValue(schematic);
                    detail::PushUInts(p, on ? changed : none);
                    detail::PushUInts(p, on ? none : changed);
                });
}

} // namespace qzk::ecad
