#include "qzk/ecad/PCBSchCompareScene.h"

#include "SceneMessages.h"
#include "qzk/AnnoSetTableEntry.h"
#include "qzk/ClassType.h"
#include "qzk/EcadDesign.h"
#include "qzk/ViewableSource.h"
#include "qzk/ecad/BaseSceneObserver.h"
#include "qzk/ecad/EcadPCBData.h"
#include "qzk/ecad/EcadSchematicData.h"
#include "qzk/ecad/PCBAppearance.h"
#include "qzk/ecad/PCBSchCompareSceneObserver.h"
#include "qzref/DesignFile.h"
#include "qzref/RecordFmt.h"

namespace qzk::ecad {

namespace {

bool const registered =
    ClassType::RegisterClass(classid::EcadPCBSchCompareScene, {classid::EcadCompareScene});

std::string FmtMap(std::map<short, ColorVisInfo> const& map) {
    std::string out = "[";
    for (auto const& [handle, info] : map) {
        out += (out.size() > 1 ? " " : "") + qzref::Fmt(handle) + ":" + qzref::Fmt(info);
    }
    return out + "]";
}
} // namespace

void PCBSchCompareScene::Create(du::SmartPtr<qzk::World> const& world,
                                du::SmartPtr<qzk::Instance> const&,
                                du::SmartPtr<qzk::ViewableSource> const& firstSource,
                                du::SmartPtr<qzk::Instance> const&,
                                du::SmartPtr<qzk::ViewableSource> const& secondSource,
                                du::SmartPtr<PCBSchCompareScene>& out) {
    du::Symbol first = firstSource ? firstSource->GetFileSource() : du::Symbol();
    du::Symbol second = secondSource ? secondSource->GetFileSource() : du::Symbol();
    du::SmartPtr<PCBSchCompareScene> scene(new PCBSchCompareScene(world, nullptr, {first, second}));
    qzref::Journal::Record(
        "qzk::ecad::PCBSchCompareScene", "Create",
        {qzref::Fmt(first.str()), qzref::Fmt(second.str()), scene->GetObjectName().str()});
    out = scene;
}

void PCBSchCompareScene::Create(du::SmartPtr<qzk::World> const& world,
                                du::SmartPtr<AnnoSetTableEntry> const& entry,
                                du::SmartPtr<PCBSchCompareScene>& out) {
    du::SmartPtr<PCBSchCompareScene> scene(new PCBSchCompareScene(world, entry, {}));
    qzref::Journal::Record("qzk::ecad::PCBSchCompareScene", "Create",
                           {entry ? qzref::Fmt(entry->GetName().str()) : std::string("null"),
                            scene->GetObjectName().str()});
    out = scene;
}

PCBSchCompareScene::PCBSchCompareScene(du::SmartPtr<qzk::World> const& world,
                                       du::SmartPtr<AnnoSetTableEntry> const& entry,
                                       std::vector<du::Symbol> const& paths)
    : BoardScene(world, entry, paths) {
    (void)registered;
}

PCBSchCompareScene::~PCBSchCompareScene() = default;

ClassType const& PCBSchCompareScene::GetClassType() const {
    static ClassType const type(classid::EcadPCBSchCompareScene);
    return type;
}

du::Symbol PCBSchCompareScene::GetDebugClassName() const {
    return "qzk::ecad::PCBSchCompareScene";
}

bool PCBSchCompareScene::RegisterObserver(PCBSchCompareSceneObserver& observer) {
    return _RegisterSceneObserver(observer);
}

bool PCBSchCompareScene::UnregisterObserver(PCBSchCompareSceneObserver& observer) {
    return _UnregisterSceneObserver(observer);
}

void PCBSchCompareScene::SetColorVisInfo(SublayerPCB_CVSet const& set) {
    _SetColorVis(set, BaseSceneObserver::PcbSublayerColorVisChangedEventId);
}

void PCBSchCompareScene::SetSublayerColorVisInfo(std::map<short, ColorVisInfo> const& map) {
    qzref::Journal::Record(GetObjectName().str(), "SetSublayerColorVisInfo", {FmtMap(map)});
    {
        std::lock_guard lock(stateMutex_);
        schColorVis_ = map;
    }
    _PostNotice(BaseSceneObserver::SchSublayerColorVisChangedEventId);
}

void PCBSchCompareScene::SetPCBDrawOrder(std::vector<short> const& order, bool flag, bool invert) {
    qzref::Journal::Record(GetObjectName().str(), "SetPCBDrawOrder",
                           {qzref::Fmt(order), qzref::Fmt(flag), qzref::Fmt(invert)});
    {
        std::lock_guard lock(stateMutex_);
        pcbDrawOrder_ = order;
        pcbDrawOrderFlag_ = flag;
        invertLayers = invert;
    }
    _PostNotice(BaseSceneObserver::PcbDrawOrderChangedEventId);
}

void PCBSchCompareScene::SetSchDrawOrder(std::vector<short> const& order) {
    qzref::Journal::Record(GetObjectName().str(), "SetSchDrawOrder", {qzref::Fmt(order)});
    {
        std::lock_guard lock(stateMutex_);
        schDrawOrder_ = order;
    }
    _PostNotice(BaseSceneObserver::SchDrawOrderChangedEventId);
}

void PCBSchCompareScene::SetFirstViewDirty() {
    qzref::Journal::Record(GetObjectName().str(), "SetFirstViewDirty");
    std::lock_guard lock(stateMutex_);
    ++firstViewDirty_;
}

void PCBSchCompareScene::SetSecondViewDirty() {
    qzref::Journal::Record(GetObjectName().str(), "SetSecondViewDirty");
    std::lock_guard lock(stateMutex_);
    ++secondViewDirty_;
}

qzk::EcadSource::EcadType PCBSchCompareScene::_GetFirstType() const {
    qzref::Journal::Record(GetObjectName().str(), "_GetFirstType");
    du::SmartPtr<qzk::EcadDesign> design = _GetDesign(0);
    if (!design) {
        return qzk::EcadSource::eUnknown;
    }
    du::SmartPtr<qzk::EcadDesignData> data = design->GetEcadDesignData();
    if (!data) {
        // Not loaded yet: the file says what it holds. Reading it here costs a read, once.
        data = qzref::ReadDesignFile(design->GetURL().str()).data;
    }
    if (auto* board = dynamic_cast<EcadPCBData*>(data.Get())) {
        return board->IsOverlayData() ? qzk::EcadSource::eGerber : qzk::EcadSource::eBoard;
    }
    if (dynamic_cast<EcadSchematicData*>(data.Get()) != nullptr) {
        return qzk::EcadSource::eSchematic;
    }
    return qzk::EcadSource::eUnknown;
}

} // namespace qzk::ecad
