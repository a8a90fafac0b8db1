#include "compare/PCBSchCompareScene.h"

#include "board/BoardSwitches.h"
#include "board/ColorVisPCBOperationStep.h"
#include "board/IsolateOperations.h"
#include "board/OrientationOperations.h"
#include "compare/PCBSchCompareSceneObserver.h"
#include "dp/ReadWriteLock.h"
#include "qzk/EcadSource.h"
#include "qzk/SelectionItem.h"
#include "qzk/View.h"
#include "qzk/ecad/DefaultColorVisibility.h"
#include "qzk/ecad/EcadDesignData.h"
#include "qzk/ecad/PCBSchCompareScene.h"
#include "qzk/ecad/PCBSchCompareSceneObserver.h"
#include "qzk/ecad/PCBView.h"
#include "qzk/ecad/PCBViewObserver.h"
#include "qzk/ecad/SchematicData.h"
#include "qzk/ecad/SchematicView.h"
#include "qzk/ecad/SchematicViewObserver.h"
#include "qzk/ecad/SublayerEcad.h"
#include "scene/SceneForwarders.h"
#include "scene/StepRecording.h"

namespace qzkapp::ecad {
namespace {

// The kernel scene's observer; the exported observer class of the same short name is hidden in
// this file by the private one.
using PCBSchSceneObserver =
    GroupOverlapForwarder<qzk::ecad::PCBSchCompareSceneObserver, PCBSchCompareScene>;
using PCBViewObserver = ViewForwarder<qzk::ecad::PCBViewObserver, qzk::ecad::PCBView>;
using SchematicViewObserver =
    ViewForwarder<qzk::ecad::SchematicViewObserver, qzk::ecad::SchematicView>;

unsigned int const kBoardSchematicClassId = 172;
unsigned int const kHighlightColor = 0x01FFFFFF;
bool const registered =
    qzk::ClassType::RegisterClass(kBoardSchematicClassId, {qzk::classid::Observable});

} // namespace

qzk::ClassType const PCBSchCompareScene::CLASS_TYPE(kBoardSchematicClassId);

PCBSchCompareScene::PCBSchCompareScene(
    du::SmartPtr<qzk::ecad::PCBSchCompareScene> const& kernelScene)
    : CompareScene(du::SmartPtr<qzk::ecad::CompareScene>(kernelScene), kHighlightColor),
      PCBSceneHelper(), SchSceneHelper(), firstIsBoard(false), highlightOnlyVisible(false),
      isolateOnlyVisible(false) {
    (void)registered;
    if (!this->kernelScene) {
        return;
    }
    this->kernelScene->SetHighlightOnlyVisible(highlightOnlyVisible);
    qzk::ecad::PCBSchCompareScene* compare = _GetPCBSchKernelScene();
    if (compare != nullptr) {
        compare->SetIsolateOnlyVisible(isolateOnlyVisible);
    }
    this->kernelScene->SetFillShapes(fillShapes);
    if (compare != nullptr) {
        compare->SetShowLogicalConnection(showLogicalConnections);
    }
    // The misc layer's node of the host's colour tree starts collapsed.
    std::string node;
    qzk::ecad::SublayerEcad::GetNodeName(node, qzk::ecad::DefaultColorVisibility::s_miscLayer, 0,
                                         true);
    AddCVExpandedState(node, false);
}

// The scene observer's link is cut with the scene's others (BaseScene).
PCBSchCompareScene::~PCBSchCompareScene() = default;

qzk::ClassType const& PCBSchCompareScene::GetClassType() const {
    return CLASS_TYPE;
}

qzk::ecad::PCBSchCompareScene* PCBSchCompareScene::_GetPCBSchKernelScene() const {
    return dynamic_cast<qzk::ecad::PCBSchCompareScene*>(kernelScene.Get());
}

unsigned char PCBSchCompareScene::GetBaseEventId() {
    return CompareScene::GetNextEventId();
}
unsigned char PCBSchCompareScene::HIGHLIGHTONLYVISIBLE_CHANGED_EVENT() {
    return GetBaseEventId();
}
unsigned char PCBSchCompareScene::ORIENTATION_CHANGED_EVENT() {
    return GetBaseEventId() + 1;
}
unsigned char PCBSchCompareScene::ROTATION_CHANGED_EVENT() {
    return GetBaseEventId() + 2;
}
unsigned char PCBSchCompareScene::PAGE_CHANGED_EVENT() {
    return GetBaseEventId() + 3;
}
unsigned char PCBSchCompareScene::PCB_SUBLAYERCOLORVIS_CHANGED_EVENT() {
    return GetBaseEventId() + 4;
}
unsigned char PCBSchCompareScene::SCH_SUBLAYERCOLORVIS_CHANGED_EVENT() {
    return GetBaseEventId() + 5;
}
unsigned char PCBSchCompareScene::PCB_DRAWORDER_CHANGED_EVENT() {
    return GetBaseEventId() + 6;
}
unsigned char PCBSchCompareScene::SCH_DRAWORDER_CHANGED_EVENT() {
    return GetBaseEventId() + 7;
}
unsigned char PCBSchCompareScene::ISOLATEONLYVISIBLE_CHANGED_EVENT() {
    return GetBaseEventId() + 8;
}

// ---------------------------------------------------------------------------------------------
// Life

void PCBSchCompareScene::Init() {
    dp::WriteLocker lock(GetRWLock());
    qzk::ecad::PCBSchCompareScene* compare = _GetPCBSchKernelScene();
    sceneObserver = AttachSceneForwarder<PCBSchSceneObserver>(this, compare);
    // Known from the first design's source, before either design has loaded.
    firstIsBoard = compare != nullptr && compare->_GetFirstType() == qzk::EcadSource::eBoard;
    CompareScene::Init();
}

void PCBSchCompareScene::_OnDestroy() {
    dp::WriteLocker lock(GetRWLock());
    DetachSceneForwarder(sceneObserver, _GetPCBSchKernelScene());
    _LeaveKernelScene();
}

void PCBSchCompareScene::ViewCreated(du::SmartPtr<qzk::View> const& view) {
    // A view of neither side gets no observer.
    if (dynamic_cast<qzk::ecad::PCBView*>(view.Get()) != nullptr) {
        AttachViewForwarder<PCBViewObserver, qzk::ecad::PCBView>(view);
    } else if (dynamic_cast<qzk::ecad::SchematicView*>(view.Get()) != nullptr) {
        AttachViewForwarder<SchematicViewObserver, qzk::ecad::SchematicView>(view);
    }
}

void PCBSchCompareScene::OnDesignLoaded(bool second) {
    CompareScene::OnDesignLoaded(second);
    dp::WriteLocker lock(GetRWLock());
    auto const* schematic =
        dynamic_cast<qzk::ecad::SchematicData const*>(designData[second ? 1 : 0].Get());
    if (schematic != nullptr && viewStates.size() < schematic->GetNumSheets()) {
        viewStates.resize(schematic->GetNumSheets());
    }
}

bool PCBSchCompareScene::RegisterObserver(qzkapp::ecad::PCBSchCompareSceneObserver& observer) {
    return _RegisterSceneObserver(this, observer);
}

bool PCBSchCompareScene::UnregisterObserver(qzkapp::ecad::PCBSchCompareSceneObserver& observer) {
    return _UnregisterSceneObserver(observer);
}

void PCBSchCompareScene::_InitObserver(qzkapp::ecad::PCBSchCompareSceneObserver& observer) {
    // Only a complete pair is told; a failure of either load isn't replayed.
    if (!designData[0] || !designData[1]) {
        return;
    }
    observer.OnDesignLoaded(false, 0, du::Symbol::EMPTY);
    observer.OnDrawOrderChanged();
}

// ---------------------------------------------------------------------------------------------
// Which design is which

du::SmartPtr<qzk::ecad::EcadDesignData> const& PCBSchCompareScene::_BoardDesign() const {
    return designData[firstIsBoard ? 0 : 1];
}

du::SmartPtr<qzk::ecad::EcadDesignData> const& PCBSchCompareScene::_SchematicDesign() const {
    return designData[firstIsBoard ? 1 : 0];
}

du::SmartPtr<qzk::ecad::EcadDesignData> const&
PCBSchCompareScene::_LoadedData(bool schematic) const {
    for (auto const& data : designData) {
        if (data && data->IsSchematicData() == schematic) {
            return data;
        }
    }
    return noData;
}

du::SmartPtr<qzk::ecad::EcadDesignData> const& PCBSchCompareScene::GetPCBData() const {
    return _LoadedData(false);
}

du::SmartPtr<qzk::ecad::EcadDesignData> const& PCBSchCompareScene::GetSchData() const {
    return _LoadedData(true);
}

// ---------------------------------------------------------------------------------------------
// Colours

void PCBSchCompareScene::LoadColorVisInfo(du::SmartPtr<qzk::Operation> const& op) {
    BaseScene::LoadColorVisInfo(op);
    LoadPCBColorVisInfo(op, false);
    LoadSchematicColorVisInfo(op, false);
}

void PCBSchCompareScene::LoadPCBColorVisInfo(du::SmartPtr<qzk::Operation> const& op,
                                             bool loadBase) {
    if (loadBase) {
        BaseScene::LoadColorVisInfo(op);
    }
    dp::WriteLocker lock(GetRWLock());
    AddStep<ColorVisPCBOperationStep>(op, static_cast<PCBSceneHelper*>(this),
                                      PCBSceneHelper::sublayerCV);
    PCBSceneHelper::sublayerCV.clear();
    _GetDefaultColorVisInfo(_BoardDesign(), PCBSceneHelper::sublayerCV, false);
    if (qzk::ecad::PCBSchCompareScene* compare = _GetPCBSchKernelScene()) {
        compare->SetColorVisInfo(PCBSceneHelper::sublayerCV);
    }
    _PostEvent(PCB_SUBLAYERCOLORVIS_CHANGED_EVENT(), ChangeSourceScene);
}

void PCBSchCompareScene::LoadSchematicColorVisInfo(du::SmartPtr<qzk::Operation> const& op,
                                                   bool loadBase) {
    if (loadBase) {
        BaseScene::LoadColorVisInfo(op);
    }
    dp::WriteLocker lock(GetRWLock());
    if (_LoadColorVisInfo(_SchematicDesign(), op)) {
        _PostEvent(SCH_SUBLAYERCOLORVIS_CHANGED_EVENT(), ChangeSourceScene);
    }
}

void PCBSchCompareScene::GetColorVisInfo(qzk::ecad::SublayerPCB_CVSet& out) const {
    dp::ReadLocker lock(GetRWLock());
    PCBSceneHelper::GetColorVisInfo(out);
}

void PCBSchCompareScene::SetColorVisInfo(qzk::ecad::SublayerPCB_CVSet const& set,
                                         du::SmartPtr<qzk::Operation> const& op,
                                         ChangeSource source) {
    dp::WriteLocker lock(GetRWLock());
    PCBSceneHelper::SetColorVisInfo(set, op, source);
    if (qzk::ecad::PCBSchCompareScene* compare = _GetPCBSchKernelScene()) {
        compare->SetColorVisInfo(PCBSceneHelper::sublayerCV);
    }
    _PostEvent(PCB_SUBLAYERCOLORVIS_CHANGED_EVENT(), static_cast<unsigned int>(source));
}

void PCBSchCompareScene::ApplyColorVisInfo(qzk::ecad::SublayerPCB_CVSet const& set,
                                           du::SmartPtr<qzk::Operation> const& op) {
    qzk::ecad::SublayerPCB_CVSet combined;
    {
        dp::ReadLocker lock(GetRWLock());
        CombineColorVisInfo(set, combined);
    }
    SetColorVisInfo(combined, op, ChangeSourceScene);
}

void PCBSchCompareScene::GetDefaultColorVisInfo(qzk::ecad::SublayerPCB_CVSet& out,
                                                bool flag) const {
    dp::ReadLocker lock(GetRWLock());
    _GetDefaultColorVisInfo(_BoardDesign(), out, flag);
}

void PCBSchCompareScene::GetSublayerColorVisInfo(SublayerMap& out) const {
    dp::ReadLocker lock(GetRWLock());
    SchSceneHelper::GetSublayerColorVisInfo(out);
}

void PCBSchCompareScene::SetSublayerColorVisInfo(SublayerMap const& map,
                                                 du::SmartPtr<qzk::Operation> const& op,
                                                 ChangeSource source) {
    dp::WriteLocker lock(GetRWLock());
    SchSceneHelper::SetSublayerColorVisInfo(map, op, source);
    _PostEvent(SCH_SUBLAYERCOLORVIS_CHANGED_EVENT(), static_cast<unsigned int>(source));
}

void PCBSchCompareScene::ApplySublayerColorVisInfo(SublayerMap const& map,
                                                   du::SmartPtr<qzk::Operation> const& op) {
    _AppySublayerColorVisInfo(map, op);
    _PostEvent(SCH_SUBLAYERCOLORVIS_CHANGED_EVENT(), ChangeSourceScene);
}

void PCBSchCompareScene::SetSublayerColorVisInfoToQzkScene(SublayerMap const& map) const {
    if (qzk::ecad::PCBSchCompareScene* compare = _GetPCBSchKernelScene()) {
        compare->SetSublayerColorVisInfo(map);
    }
}

void PCBSchCompareScene::SetFullColorVisInfo(qzk::ecad::GroupCVInfoSet const& /*groups*/,
                                             qzk::ecad::SublayerPCB_CVSet const& sublayers,
                                             std::vector<qzk::ecad::AnnoCVInfo> const& /*overlays*/,
                                             std::vector<qzk::ecad::AnnoCVInfo> const& /*images*/,
                                             du::SmartPtr<qzk::Operation> const& op,
                                             ChangeSource source) {
    SetColorVisInfo(sublayers, op, source);
}

void PCBSchCompareScene::SetFullColorVisInfo(qzk::ecad::GroupCVInfoSet const& /*groups*/,
                                             std::vector<qzk::ecad::AnnoCVInfo> const& /*images*/,
                                             SublayerMap const& sublayers,
                                             du::SmartPtr<qzk::Operation> const& op,
                                             ChangeSource source) {
    SetSublayerColorVisInfo(sublayers, op, source);
}

// ---------------------------------------------------------------------------------------------
// Layers of either side

wchar_t const* PCBSchCompareScene::GetLayerName(short layer) const {
    dp::ReadLocker lock(GetRWLock());
    return _GetLayerName(_SchematicDesign(), layer);
}

std::wstring PCBSchCompareScene::GetSublayerLabel(short layer, short sublayer) {
    return _GetSublayerLabel(_BoardDesign(), layer, sublayer);
}

short PCBSchCompareScene::GetSublayerHandle(short layer, std::string const& name) const {
    return _GetSublayerHandle(_BoardDesign(), layer, name);
}

short PCBSchCompareScene::GetTopLayer() const {
    return _GetTopLayer(_BoardDesign());
}

short PCBSchCompareScene::GetBottomLayer() const {
    return _GetBottomLayer(_BoardDesign());
}

// ---------------------------------------------------------------------------------------------
// Switches and selection

using Switches = BoardSwitches<PCBSchCompareScene>;

void PCBSchCompareScene::ToggleShowLogicalConnection() {
    Switches::ToggleShowLogicalConnection(*this);
}

bool PCBSchCompareScene::GetHighlightOnlyVisible() const {
    return Switches::GetHighlightOnlyVisible(*this);
}

bool PCBSchCompareScene::GetIsolateOnlyVisible() const {
    return Switches::GetIsolateOnlyVisible(*this);
}

void PCBSchCompareScene::SetHighlightOnlyVisible(bool value, ChangeSource source) {
    Switches::SetHighlightOnlyVisible(*this, value, source);
}

void PCBSchCompareScene::SetIsolateOnlyVisible(bool value, ChangeSource source) {
    Switches::SetIsolateOnlyVisible(*this, value, source);
}

void PCBSchCompareScene::SetSelectedItems(
    std::vector<du::SmartPtr<qzk::SelectionItem>> const& items) {
    _SetSelectedItems(items);
}

// ---------------------------------------------------------------------------------------------
// Sheets

void PCBSchCompareScene::PageNav(short page, du::SmartPtr<qzk::ecad::BaseView> const& view) {
    dp::WriteLocker lock(GetRWLock());
    SheetViewStateHolder::PageNav(page, view);
}

void PCBSchCompareScene::UpdateCurrentViewState(du::SmartPtr<qzk::ecad::BaseView> const& view,
                                                unsigned int page) {
    dp::WriteLocker lock(GetRWLock());
    SheetViewStateHolder::UpdateCurrentViewState(view, page);
}

unsigned int PCBSchCompareScene::GetCurrentPage() const {
    dp::ReadLocker lock(GetRWLock());
    return currentPage;
}

void PCBSchCompareScene::SetLastPreviewOp(short page) {
    dp::WriteLocker lock(GetRWLock());
    lastPreviewOp = page;
}

void PCBSchCompareScene::PostPageChangedEvent() {
    _PostEvent(PAGE_CHANGED_EVENT(), currentPage);
}

// ---------------------------------------------------------------------------------------------
// Isolation

using Isolation = IsolateOperations<PCBSchCompareScene>;

void PCBSchCompareScene::Isolate(std::vector<du::SmartPtr<qzk::SelectionItem>> const& items,
                                 du::SmartPtr<qzk::Operation> const& op) {
    Isolation::Isolate(*this, items, op);
}

void PCBSchCompareScene::AddToIsolated(std::vector<du::SmartPtr<qzk::SelectionItem>> const& items,
                                       du::SmartPtr<qzk::Operation> const& op) {
    Isolation::AddToIsolated(*this, items, op);
}

void PCBSchCompareScene::Deisolate(std::vector<du::SmartPtr<qzk::SelectionItem>> const& items,
                                   du::SmartPtr<qzk::Operation> const& op) {
    Isolation::Deisolate(*this, items, op);
}

void PCBSchCompareScene::ClearAllIsolated(du::SmartPtr<qzk::Operation> const& op) {
    Isolation::ClearAllIsolated(*this, op);
}

void PCBSchCompareScene::ApplyIsolatedList() const {
    Isolation::Push(*this);
}

void PCBSchCompareScene::GetItems(qzk::ecad::ItemContainer<qzk::ecad::IsolateItem>& out) const {
    Isolation::GetItems(*this, out);
}

void PCBSchCompareScene::SetItems(qzk::ecad::ItemContainer<qzk::ecad::IsolateItem> const& items,
                                  bool setViewsDirty) {
    Isolation::SetItems(*this, items, setViewsDirty);
}

// Only the board's views show what is isolated.
void PCBSchCompareScene::_IsolateViewsDirty() const {
    qzk::ecad::PCBSchCompareScene* compare = _GetPCBSchKernelScene();
    if (compare == nullptr) {
        return;
    }
    if (firstIsBoard) {
        compare->SetFirstViewDirty();
    } else {
        compare->SetSecondViewDirty();
    }
}

// ---------------------------------------------------------------------------------------------
// Orientation

using Orientation = OrientationOperations<PCBSchCompareScene>;

bool PCBSchCompareScene::GetFlip() const {
    return _GetFlip();
}

short PCBSchCompareScene::GetRotation() const {
    return _GetRotation();
}

void PCBSchCompareScene::SetFlip(bool flip, du::SmartPtr<qzk::Operation> const& op,
                                 bool applyToView) {
    Orientation::SetFlip(*this, flip, op, applyToView);
}

void PCBSchCompareScene::ToggleFlip(du::SmartPtr<qzk::Operation> const& op) {
    Orientation::ToggleFlip(*this, op);
}

void PCBSchCompareScene::SetRotation(short rotation, du::SmartPtr<qzk::Operation> const& op,
                                     bool applyToView) {
    Orientation::SetRotation(*this, rotation, op, applyToView);
}

void PCBSchCompareScene::AddRotation(short delta, du::SmartPtr<qzk::Operation> const& op) {
    Orientation::AddRotation(*this, delta, op);
}

// Whatever op was: the flip's own step inverts the list again when it is undone.
void PCBSchCompareScene::_InvertLayersForFlip(du::SmartPtr<qzk::Operation> const& /*op*/) {
    if (kernelScene) {
        PCBSchDrawOrderInvertLayers(du::SmartPtr<qzk::Operation>());
    }
}

} // namespace qzkapp::ecad
