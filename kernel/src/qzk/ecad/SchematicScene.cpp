#include "qzk/ecad/SchematicScene.h"

#include "SceneMessages.h"
#include "qzk/ClassType.h"
#include "qzk/EcadDesign.h"
#include "qzk/ViewableSource.h"
#include "qzk/ecad/BaseSceneObserver.h"
#include "qzk/ecad/SchematicAppearance.h"
#include "qzk/ecad/SchematicSceneObserver.h"
#include "qzref/RecordFmt.h"

namespace qzk::ecad {

namespace {

bool const registered = ClassType::RegisterClass(classid::EcadSchematicScene, {classid::EcadScene});
// Kind 77 is another name of this class.
bool const alias =
    ClassType::RegisterClass(classid::EcadSchematicSceneAlt, {classid::EcadSchematicScene});

std::string FmtMap(std::map<short, ColorVisInfo> const& map) {
    std::string out = "[";
    for (auto const& [handle, info] : map) {
        out += (out.size() > 1 ? " " : "") + qzref::Fmt(handle) + ":" + qzref::Fmt(info);
    }
    return out + "]";
}
} // namespace

void SchematicScene::Create(du::SmartPtr<qzk::World> const& world,
                            du::SmartPtr<qzk::Instance> const& instance,
                            du::SmartPtr<qzk::ViewableSource> const& source,
                            du::SmartPtr<SchematicScene>& out) {
    du::SmartPtr<SchematicScene> scene(new SchematicScene(world, instance, source));
    qzref::Journal::Record("qzk::ecad::SchematicScene", "Create",
                           {qzref::Fmt(source ? source->GetFileSource().str() : std::string()),
                            scene->GetObjectName().str()});
    out = scene;
}

SchematicScene::SchematicScene(du::SmartPtr<qzk::World> const& world,
                               du::SmartPtr<qzk::Instance> const& instance,
                               du::SmartPtr<qzk::ViewableSource> const& source)
    : Scene(world, instance, source) {
    (void)registered;
    (void)alias;
    // A file that holds a board is refused by the loader instead of reaching a schematic scene.
    if (du::SmartPtr<qzk::EcadDesign> design = _GetDesign(0)) {
        design->RequireKind("schematic");
    }
}

SchematicScene::~SchematicScene() = default;

ClassType const& SchematicScene::GetClassType() const {
    static ClassType const type(classid::EcadSchematicScene);
    return type;
}

du::Symbol SchematicScene::GetDebugClassName() const {
    return "qzk::ecad::SchematicScene";
}

bool SchematicScene::RegisterObserver(SchematicSceneObserver& observer) {
    return _RegisterSceneObserver(observer);
}

bool SchematicScene::UnregisterObserver(SchematicSceneObserver& observer) {
    return _UnregisterSceneObserver(observer);
}

void SchematicScene::SetSublayerColorVisInfo(std::map<short, ColorVisInfo> const& map) {
    qzref::Journal::Record(GetObjectName().str(), "SetSublayerColorVisInfo", {FmtMap(map)});
    {
        std::lock_guard lock(stateMutex_);
        colorVis_ = map;
    }
    _PostNotice(BaseSceneObserver::SublayerColorVisChangedEventId);
}

int SchematicScene::_AppearanceAspect(Switch which, bool& schematic) const {
    schematic = true;
    switch (which) {
    case Switch::FillShapes:
        return eSchFillShapes;
    case Switch::HighlightOnlyVisible:
        return eSchHighlightOnlyVisible;
    case Switch::OverlapColor:
        return eSchOverlapColor;
    default:
        return -1;
    }
}

} // namespace qzk::ecad
