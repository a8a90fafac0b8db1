#include "qzk/ecad/PCBScene.h"

#include "SceneMessages.h"
#include "qzk/ClassType.h"
#include "qzk/ViewableSource.h"
#include "qzk/ecad/BaseSceneObserver.h"
#include "qzk/ecad/PCBAppearance.h"
#include "qzk/ecad/PCBSceneObserver.h"
#include "qzref/RecordFmt.h"

namespace qzk::ecad {

namespace {

bool const registered = ClassType::RegisterClass(classid::EcadPCBScene, {classid::EcadScene});

} // namespace

void PCBScene::Create(du::SmartPtr<qzk::World> const& world,
                      du::SmartPtr<qzk::Instance> const& instance,
                      du::SmartPtr<qzk::ViewableSource> const& source,
                      du::SmartPtr<PCBScene>& out) {
    du::SmartPtr<PCBScene> scene(new PCBScene(world, instance, source));
    qzref::Journal::Record("qzk::ecad::PCBScene", "Create",
                           {qzref::Fmt(source ? source->GetFileSource().str() : std::string()),
                            scene->GetObjectName().str()});
    out = scene;
}

PCBScene::PCBScene(du::SmartPtr<qzk::World> const& world,
                   du::SmartPtr<qzk::Instance> const& instance,
                   du::SmartPtr<qzk::ViewableSource> const& source)
    : Scene(world, instance, source) {
    (void)registered;
}

PCBScene::~PCBScene() = default;

ClassType const& PCBScene::GetClassType() const {
    static ClassType const type(classid::EcadPCBScene);
    return type;
}

du::Symbol PCBScene::GetDebugClassName() const {
    return "qzk::ecad::PCBScene";
}

bool PCBScene::RegisterObserver(PCBSceneObserver& observer) {
    return _RegisterSceneObserver(observer);
}

bool PCBScene::UnregisterObserver(PCBSceneObserver& observer) {
    return _UnregisterSceneObserver(observer);
}

void PCBScene::SetColorVisInfo(SublayerPCB_CVSet const& set) {
    qzref::Journal::Record(GetObjectName().str(), "SetColorVisInfo", {qzref::Fmt(set)});
    {
        std::lock_guard lock(stateMutex_);
        colorVis_ = set;
    }
    _PostNotice(BaseSceneObserver::SublayerColorVisChangedEventId);
}

SublayerPCB_CVSet PCBScene::GetColorVisInfo() const {
    std::lock_guard lock(stateMutex_);
    return colorVis_;
}

void PCBScene::SetIsolated(std::vector<AppearanceItem> const& items) {
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

void PCBScene::ClearIsolated() {
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

void PCBScene::SetIsolateOnlyVisible(bool onlyVisible) {
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

void PCBScene::SetShowLogicalConnection(bool show) {
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

std::vector<AppearanceItem> PCBScene::GetIsolated() const {
    std::lock_guard lock(stateMutex_);
    return isolated_;
}

bool PCBScene::IsIsolating() const {
    std::lock_guard lock(stateMutex_);
    return isolating_;
}

bool PCBScene::GetIsolateOnlyVisible() const {
    std::lock_guard lock(stateMutex_);
    return isolateOnlyVisible_;
}

bool PCBScene::GetShowLogicalConnection() const {
    std::lock_guard lock(stateMutex_);
    return showLogicalConnection_;
}

int PCBScene::_AppearanceAspect(Switch which, bool& schematic) const {
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
