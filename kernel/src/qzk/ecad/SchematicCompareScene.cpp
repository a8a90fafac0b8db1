#include "qzk/ecad/SchematicCompareScene.h"

#include "SceneMessages.h"
#include "qzk/AnnoSetTableEntry.h"
#include "qzk/ClassType.h"
#include "qzk/ViewableSource.h"
#include "qzk/ecad/BaseSceneObserver.h"
#include "qzk/ecad/SchematicAppearance.h"
#include "qzk/ecad/SchematicCompareSceneObserver.h"
#include "qzref/RecordFmt.h"

namespace qzk::ecad {

namespace {

bool const registered =
    ClassType::RegisterClass(classid::EcadSchematicCompareScene, {classid::EcadCompareScene});

std::string FmtMap(std::map<short, du::SmartPtr<CompareColorVis>> const& map) {
    std::string out = "[";
    for (auto const& [handle, info] : map) {
        out += (out.size() > 1 ? " " : "") + qzref::Fmt(handle) + ":" +
               (info ? qzref::Fmt(*info) : std::string("null"));
    }
    return out + "]";
}
} // namespace

void SchematicCompareScene::Create(du::SmartPtr<qzk::World> const& world,
                                   du::SmartPtr<qzk::Instance> const&,
                                   du::SmartPtr<qzk::ViewableSource> const& firstSource,
                                   du::SmartPtr<qzk::Instance> const&,
                                   du::SmartPtr<qzk::ViewableSource> const& secondSource,
                                   du::SmartPtr<SchematicCompareScene>& out) {
    du::Symbol first = firstSource ? firstSource->GetFileSource() : du::Symbol();
    du::Symbol second = secondSource ? secondSource->GetFileSource() : du::Symbol();
    du::SmartPtr<SchematicCompareScene> scene(
        new SchematicCompareScene(world, nullptr, {first, second}));
    qzref::Journal::Record(
        "qzk::ecad::SchematicCompareScene", "Create",
        {qzref::Fmt(first.str()), qzref::Fmt(second.str()), scene->GetObjectName().str()});
    out = scene;
}

void SchematicCompareScene::Create(du::SmartPtr<qzk::World> const& world,
                                   du::SmartPtr<AnnoSetTableEntry> const& entry,
                                   du::SmartPtr<SchematicCompareScene>& out) {
    du::SmartPtr<SchematicCompareScene> scene(new SchematicCompareScene(world, entry, {}));
    qzref::Journal::Record("qzk::ecad::SchematicCompareScene", "Create",
                           {entry ? qzref::Fmt(entry->GetName().str()) : std::string("null"),
                            scene->GetObjectName().str()});
    out = scene;
}

SchematicCompareScene::SchematicCompareScene(du::SmartPtr<qzk::World> const& world,
                                             du::SmartPtr<AnnoSetTableEntry> const& entry,
                                             std::vector<du::Symbol> const& paths)
    : CompareScene(world, entry, paths) {
    (void)registered;
}

SchematicCompareScene::~SchematicCompareScene() = default;

ClassType const& SchematicCompareScene::GetClassType() const {
    static ClassType const type(classid::EcadSchematicCompareScene);
    return type;
}

du::Symbol SchematicCompareScene::GetDebugClassName() const {
    return "qzk::ecad::SchematicCompareScene";
}

bool SchematicCompareScene::RegisterObserver(SchematicCompareSceneObserver& observer) {
    return _RegisterSceneObserver(observer);
}

bool SchematicCompareScene::UnregisterObserver(SchematicCompareSceneObserver& observer) {
    return _UnregisterSceneObserver(observer);
}

void SchematicCompareScene::SetSublayerColorVisInfo(
    std::map<short, du::SmartPtr<CompareColorVis>> const& map) {
    qzref::Journal::Record(GetObjectName().str(), "SetSublayerColorVisInfo", {FmtMap(map)});
    std::map<short, du::SmartPtr<CompareColorVis>> copy;
    for (auto const& [handle, info] : map) {
        copy[handle] = info ? info->Clone() : nullptr;
    }
    {
        std::lock_guard lock(stateMutex_);
        colorVis_.swap(copy);
    }
    _PostNotice(BaseSceneObserver::SublayerColorVisChangedEventId);
}

int SchematicCompareScene::_AppearanceAspect(Switch which, bool& schematic) const {
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
