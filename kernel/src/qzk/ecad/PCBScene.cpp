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
    : BoardScene(world, instance, source) {
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
    _SetColorVis(set, BaseSceneObserver::SublayerColorVisChangedEventId);
}

} // namespace qzk::ecad
