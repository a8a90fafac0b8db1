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
    : BoardScene(world, entry, paths) {
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
    _SetColorVis(set, BaseSceneObserver::SublayerVisChangedEventId);
}

} // namespace qzk::ecad
