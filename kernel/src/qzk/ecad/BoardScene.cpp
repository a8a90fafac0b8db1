#include "qzk/ecad/BoardScene.h"

#include "SceneMessages.h"
#include "qzk/ecad/BaseSceneObserver.h"
#include "qzk/ecad/CompareColorVisPtrVec.h"
#include "qzk/ecad/CompareScene.h"
#include "qzk/ecad/PCBAppearance.h"
#include "qzk/ecad/Scene.h"
#include "qzk/ecad/SublayerPCB_CVSet.h"
#include "qzref/RecordFmt.h"

namespace qzk::ecad {

namespace {

void CopyColorVis(SublayerPCB_CVSet const& from, SublayerPCB_CVSet& to) {
    to = from;
}

// The rows are records shared by pointer: only a clone keeps them apart from the caller's.
void CopyColorVis(CompareColorVisPtrVec const& from, CompareColorVisPtrVec& to) {
    from.Clone(to);
}

} // namespace

template <class Base, class ColorSet>
void BoardScene<Base, ColorSet>::_SetColorVis(ColorSet const& set, unsigned char noticeId) {
    qzref::Journal::Record(this->GetObjectName().str(), "SetColorVisInfo", {qzref::Fmt(set)});
    ColorSet copy;
    CopyColorVis(set, copy);
    {
        std::lock_guard lock(this->stateMutex_);
        std::swap(colorVis_, copy);
    }
    this->_PostNotice(noticeId);
}

template <class Base, class ColorSet> ColorSet BoardScene<Base, ColorSet>::GetColorVisInfo() const {
    std::lock_guard lock(this->stateMutex_);
    return colorVis_;
}

template <class Base, class ColorSet>
void BoardScene<Base, ColorSet>::SetIsolated(std::vector<AppearanceItem> const& items) {
    if (qzref::Journal::IsEnabled()) {
        qzref::Journal::Record(this->GetObjectName().str(), "SetIsolated", {qzref::Fmt(items)});
    }
    {
        std::lock_guard lock(this->stateMutex_);
        isolated_ = items;
        isolating_ = true;
    }
    this->_PostNotice(BaseSceneObserver::IsolateEventId, [items](dom::ObserverProxy& p) {
        detail::PushItems(p, items);
        p.PushBooleanValue(true);
    });
}

template <class Base, class ColorSet> void BoardScene<Base, ColorSet>::ClearIsolated() {
    qzref::Journal::Record(this->GetObjectName().str(), "ClearIsolated");
    {
        std::lock_guard lock(this->stateMutex_);
        isolated_.clear();
        isolating_ = false;
    }
    this->_PostNotice(BaseSceneObserver::IsolateEventId, [](dom::ObserverProxy& p) {
        detail::PushItems(p, {});
        p.PushBooleanValue(false);
    });
}

template <class Base, class ColorSet>
void BoardScene<Base, ColorSet>::SetIsolateOnlyVisible(bool onlyVisible) {
    qzref::Journal::Record(this->GetObjectName().str(), "SetIsolateOnlyVisible",
                           {qzref::Fmt(onlyVisible)});
    {
        std::lock_guard lock(this->stateMutex_);
        if (isolateOnlyVisible_ == onlyVisible) {
            return;
        }
        isolateOnlyVisible_ = onlyVisible;
    }
    this->_PostNotice(BaseSceneObserver::IsolateOnlyVisibleChangedEventId,
                      [onlyVisible](dom::ObserverProxy& p) { p.PushBooleanValue(onlyVisible); });
    this->_TellSwitch(Base::Switch::IsolateOnlyVisible, onlyVisible);
}

template <class Base, class ColorSet>
void BoardScene<Base, ColorSet>::SetShowLogicalConnection(bool show) {
    qzref::Journal::Record(this->GetObjectName().str(), "SetShowLogicalConnection",
                           {qzref::Fmt(show)});
    {
        std::lock_guard lock(this->stateMutex_);
        if (showLogicalConnection_ == show) {
            return;
        }
        showLogicalConnection_ = show;
    }
    this->_TellSwitch(Base::Switch::ShowLogicalConnection, show);
}

template <class Base, class ColorSet>
std::vector<AppearanceItem> BoardScene<Base, ColorSet>::GetIsolated() const {
    std::lock_guard lock(this->stateMutex_);
    return isolated_;
}

template <class Base, class ColorSet> bool BoardScene<Base, ColorSet>::IsIsolating() const {
    std::lock_guard lock(this->stateMutex_);
    return isolating_;
}

template <class Base, class ColorSet>
bool BoardScene<Base, ColorSet>::GetIsolateOnlyVisible() const {
    std::lock_guard lock(this->stateMutex_);
    return isolateOnlyVisible_;
}

template <class Base, class ColorSet>
bool BoardScene<Base, ColorSet>::GetShowLogicalConnection() const {
    std::lock_guard lock(this->stateMutex_);
    return showLogicalConnection_;
}

template <class Base, class ColorSet>
int BoardScene<Base, ColorSet>::_AppearanceAspect(typename Base::Switch which,
                                                  bool& schematic) const {
    schematic = false;
    switch (which) {
    case Base::Switch::FillShapes:
        return ePCBFillShapes;
    case Base::Switch::HighlightOnlyVisible:
        return ePCBHighlightOnlyVisible;
    case Base::Switch::OverlapColor:
        return ePCBOverlapColor;
    case Base::Switch::IsolateOnlyVisible:
        return ePCBIsolateOnlyVisible;
    case Base::Switch::ShowLogicalConnection:
        return ePCBShowLogicalConnection;
    }
    return -1;
}

template class BoardScene<Scene, SublayerPCB_CVSet>;
template class BoardScene<CompareScene, SublayerPCB_CVSet>;
template class BoardScene<CompareScene, CompareColorVisPtrVec>;

} // namespace qzk::ecad
