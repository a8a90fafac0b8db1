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
    : BoardScene(world, entry, paths) {
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
    _SetColorVis(rows, BaseSceneObserver::SublayerColorVisChangedEventId);
}

} // namespace qzk::ecad
