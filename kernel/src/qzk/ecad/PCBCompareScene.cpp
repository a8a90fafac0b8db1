#include "qzk/ecad/PCBCompareScene.h"

#include "SceneMessages.h"
#include "qzk/AnnoSetTableEntry.h"
#include "qzk/ClassType.h"
#include "qzk/ViewableSource.h"
#include "qzk/ecad/BaseSceneObserver.h"
#include "qzk/ecad/PCBAppearance.h"
#include "qzk/ecad/PCBCompareSceneObserver.h"
#include "qzref/RecordFmt.h"

namespace qzk::ecad {

namespace {

bool const registered =
    ClassType::RegisterClass(classid::EcadPCBCompareScene, {classid::EcadCompareScene});

} // namespace

void PCBCompareScene::Create(du::SmartPtr<qzk::World> const& world,
                             du::SmartPtr<qzk::Instance> const&,
                             du::SmartPtr<qzk::ViewableSource> const& firstSource,
                             du::SmartPtr<qzk::Instance> const&,
                             du::SmartPtr<qzk::ViewableSource> const& secondSource,
                             du::SmartPtr<PCBCompareScene>& out) {
    du::Symbol first = firstSource ? firstSource->GetFileSource() : du::Symbol();
    du::Symbol second = secondSource ? secondSource->GetFileSource() : du::Symbol();
    du::SmartPtr<PCBCompareScene> scene(new PCBCompareScene(world, nullptr, {first, second}));
    qzref::Journal::Record(
        "qzk::ecad::PCBCompareScene", "Create",
        {qzref::Fmt(first.str()), qzref::Fmt(second.str()), scene->GetObjectName().str()});
    out = scene;
}

void PCBCompareScene::Create(du::SmartPtr<qzk::World> const& world,
                             du::SmartPtr<AnnoSetTableEntry> const& entry,
                             du::SmartPtr<PCBCompareScene>& out) {
    du::SmartPtr<PCBCompareScene> scene(new PCBCompareScene(world, entry, {}));
    qzref::Journal::Record("qzk::ecad::PCBCompareScene", "Create",
                           {entry ? qzref::Fmt(entry->GetName().str()) : std::string("null"),
                            scene->GetObjectName().str()});
    out = scene;
}

PCBCompareScene::PCBCompareScene(du::SmartPtr<qzk::World> const& world,
                                 du::SmartPtr<AnnoSetTableEntry> const& entry,
                                 std::vector<du::Symbol> const& paths)
    : CompareScene(world, entry, paths) {
    (void)registered;
}

PCBCompareScene::~PCBCompareScene() = default;

ClassType const& PCBCompareScene::GetClassType() const {
    static ClassType const type(classid::EcadPCBCompareScene);
    return type;
}

du::Symbol PCBCompareScene::GetDebugClassName() const {
    return "qzk::ecad::PCBCompareScene";
}

bool PCBCompareScene::RegisterObserver(PCBCompareSceneObserver& observer) {
    return _RegisterSceneObserver(observer);
}

bool PCBCompareScene::UnregisterObserver(PCBCompareSceneObserver& observer) {
    return _UnregisterSceneObserver(observer);
}

void PCBCompareScene::SetColorVisInfo(CompareColorVisPtrVec const& rows) {
    qzref::Journal::Record(GetObjectName().str(), "SetColorVisInfo", {qzref::Fmt(rows)});
    CompareColorVisPtrVec copy;
    rows.Clone(copy);
    {
        std::lock_guard lock(stateMutex_);
        colorVis_.swap(copy);
    }
    _PostNotice(BaseSceneObserver::SublayerColorVisChangedEventId);
}

CompareColorVisPtrVec PCBCompareScene::GetColorVisInfo() const {
    std::lock_guard lock(stateMutex_);
    return colorVis_;
}

void PCBCompareScene::SetIsolated(std::vector<AppearanceItem> const& items) {
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

void PCBCompareScene::ClearIsolated() {
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

void PCBCompareScene::SetIsolateOnlyVisible(bool onlyVisible) {
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

void PCBCompareScene::SetShowLogicalConnection(bool show) {
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

std::vector<AppearanceItem> PCBCompareScene::GetIsolated() const {
    std::lock_guard lock(stateMutex_);
    return isolated_;
}

bool PCBCompareScene::IsIsolating() const {
    std::lock_guard lock(stateMutex_);
    return isolating_;
}

bool PCBCompareScene::GetIsolateOnlyVisible() const {
    std::lock_guard lock(stateMutex_);
    return isolateOnlyVisible_;
}

bool PCBCompareScene::GetShowLogicalConnection() const {
    std::lock_guard lock(stateMutex_);
    return showLogicalConnection_;
}

int PCBCompareScene::_AppearanceAspect(Switch which, bool& schematic) const {
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
