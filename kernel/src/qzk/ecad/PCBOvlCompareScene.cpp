#include "qzk/ecad/PCBOvlCompareScene.h"

#include "SceneMessages.h"
#include "qzk/AnnoSetTableEntry.h"
#include "qzk/ClassType.h"
#include "qzk/ViewableSource.h"
#include "qzk/ecad/BaseSceneObserver.h"
#include "qzk/ecad/PCBAppearance.h"
#include "qzk/ecad/PCBOvlCompareSceneObserver.h"
#include "qzref/RecordFmt.h"

namespace qzk::ecad {

namespace {

bool const registered =
    ClassType::RegisterClass(classid::EcadPCBOvlCompareScene, {classid::EcadCompareScene});

} // namespace

void PCBOvlCompareScene::Create(du::SmartPtr<qzk::World> const& world,
                                du::SmartPtr<qzk::Instance> const&,
                                du::SmartPtr<qzk::ViewableSource> const& firstSource,
                                du::SmartPtr<qzk::Instance> const&,
                                du::SmartPtr<qzk::ViewableSource> const& secondSource,
                                du::SmartPtr<PCBOvlCompareScene>& out) {
    du::Symbol first = firstSource ? firstSource->GetFileSource() : du::Symbol();
    du::Symbol second = secondSource ? secondSource->GetFileSource() : du::Symbol();
    du::SmartPtr<PCBOvlCompareScene> scene(new PCBOvlCompareScene(world, nullptr, {first, second}));
    qzref::Journal::Record(
        "qzk::ecad::PCBOvlCompareScene", "Create",
        {qzref::Fmt(first.str()), qzref::Fmt(second.str()), scene->GetObjectName().str()});
    out = scene;
}

void PCBOvlCompareScene::Create(du::SmartPtr<qzk::World> const& world,
                                du::SmartPtr<AnnoSetTableEntry> const& entry,
                                du::SmartPtr<PCBOvlCompareScene>& out) {
    du::SmartPtr<PCBOvlCompareScene> scene(new PCBOvlCompareScene(world, entry, {}));
    qzref::Journal::Record("qzk::ecad::PCBOvlCompareScene", "Create",
                           {entry ? qzref::Fmt(entry->GetName().str()) : std::string("null"),
                            scene->GetObjectName().str()});
    out = scene;
}

PCBOvlCompareScene::PCBOvlCompareScene(du::SmartPtr<qzk::World> const& world,
                                       du::SmartPtr<AnnoSetTableEntry> const& entry,
                                       std::vector<du::Symbol> const& paths)
    : CompareScene(world, entry, paths) {
    (void)registered;
}

PCBOvlCompareScene::~PCBOvlCompareScene() = default;

ClassType const& PCBOvlCompareScene::GetClassType() const {
    static ClassType const type(classid::EcadPCBOvlCompareScene);
    return type;
}

du::Symbol PCBOvlCompareScene::GetDebugClassName() const {
    return "qzk::ecad::PCBOvlCompareScene";
}

bool PCBOvlCompareScene::RegisterObserver(PCBOvlCompareSceneObserver& observer) {
    return _RegisterSceneObserver(observer);
}

bool PCBOvlCompareScene::UnregisterObserver(PCBOvlCompareSceneObserver& observer) {
    return _UnregisterSceneObserver(observer);
}

void PCBOvlCompareScene::SetColorVisInfo(SublayerPCB_CVSet const& set) {
    qzref::Journal::Record(GetObjectName().str(), "SetColorVisInfo", {qzref::Fmt(set)});
    {
        std::lock_guard lock(stateMutex_);
        colorVis_ = set;
    }
    _PostNotice(BaseSceneObserver::SublayerVisChangedEventId);
}

SublayerPCB_CVSet PCBOvlCompareScene::GetColorVisInfo() const {
    std::lock_guard lock(stateMutex_);
    return colorVis_;
}

void PCBOvlCompareScene::SetIsolated(std::vector<AppearanceItem> const& items) {
    qzref::Journal::Record(GetObjectName().str(), "SetIsolated", {qzref::Fmt(items)});
    {
        std::lock_guard lock(stateMutex_);
        isolated_ = items;
        isolating_ = true;
    }
    _PostNotice(BaseSceneObserver::IsolateEventId, [items](dom::ObserverProxy& p) {
        detail::PushItems(p, items);
        p.PushBooleanValue(true);
    });
}

void PCBOvlCompareScene::ClearIsolated() {
    qzref::Journal::Record(GetObjectName().str(), "ClearIsolated");
    {
        std::lock_guard lock(stateMutex_);
        isolated_.clear();
        isolating_ = false;
    }
    _PostNotice(BaseSceneObserver::IsolateEventId, [](dom::ObserverProxy& p) {
        detail::PushItems(p, {});
        p.PushBooleanValue(false);
    });
}

void PCBOvlCompareScene::SetIsolateOnlyVisible(bool onlyVisible) {
    qzref::Journal::Record(GetObjectName().str(), "SetIsolateOnlyVisible",
                           {qzref::Fmt(onlyVisible)});
    {
        std::lock_guard lock(stateMutex_);
        if (isolateOnlyVisible_ == onlyVisible) {
            return;
        }
        isolateOnlyVisible_ = onlyVisible;
    }
    _PostNotice(BaseSceneObserver::IsolateOnlyVisibleChangedEventId,
                [onlyVisible](dom::ObserverProxy& p) { p.PushBooleanValue(onlyVisible); });
    _TellSwitch(Switch::IsolateOnlyVisible, onlyVisible);
}

void PCBOvlCompareScene::SetShowLogicalConnection(bool show) {
    qzref::Journal::Record(GetObjectName().str(), "SetShowLogicalConnection", {qzref::Fmt(show)});
    {
        std::lock_guard lock(stateMutex_);
        if (showLogicalConnection_ == show) {
            return;
        }
        showLogicalConnection_ = show;
    }
    _TellSwitch(Switch::ShowLogicalConnection, show);
}

std::vector<AppearanceItem> PCBOvlCompareScene::GetIsolated() const {
    std::lock_guard lock(stateMutex_);
    return isolated_;
}

bool PCBOvlCompareScene::IsIsolating() const {
    std::lock_guard lock(stateMutex_);
    return isolating_;
}

bool PCBOvlCompareScene::GetIsolateOnlyVisible() const {
    std::lock_guard lock(stateMutex_);
    return isolateOnlyVisible_;
}

bool PCBOvlCompareScene::GetShowLogicalConnection() const {
    std::lock_guard lock(stateMutex_);
    return showLogicalConnection_;
}

int PCBOvlCompareScene::_AppearanceAspect(Switch which, bool& schematic) const {
    schematic = false;
    switch (which) {
    case Switch::FillShapes:
        return ePCBFillShapes;
    case Switch::HighlightOnlyVisible:
        return ePCBHighlightOnlyVisible;
    case Switch::OverlapColor:
        return ePCBOverlapColor;
    case Switch::IsolateOnlyVisible:
        return ePCBIsolateOnlyVisible;
    case Switch::ShowLogicalConnection:
        return ePCBShowLogicalConnection;
    }
    return -1;
}

} // namespace qzk::ecad
