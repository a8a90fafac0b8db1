#include "schematic/SchematicScene.h"

#include "design/ColorVisImageOperationStep.h"
#include "dg/DPoint3D.h"
#include "dp/ReadWriteLock.h"
#include "qzk/SelectionItem.h"
#include "qzk/SelectionManager.h"
#include "qzk/View.h"
#include "qzk/ecad/BaseView.h"
#include "qzk/ecad/SchematicData.h"
#include "qzk/ecad/SchematicScene.h"
#include "qzk/ecad/SchematicSceneObserver.h"
#include "qzk/ecad/SchematicView.h"
#include "qzk/ecad/SchematicViewObserver.h"
#include "qzk/ecad/SelectionItem.h"
#include "qzk/ecad/View.h"
#include "qzplugin/PluginHandlerIf.h"
#include "scene/ColorVisGroupOperationStep.h"
#include "scene/SceneForwarders.h"
#include "scene/SceneLink.h"
#include "scene/SelectionChannels.h"
#include "scene/StepRecording.h"
#include "schematic/ColorVisSublayerOperationStep.h"
#include "schematic/SchematicSceneObserver.h"

namespace qzkapp::ecad {
namespace {

// The kernel scene's observer; the exported observer class of the same short name is hidden in
// this file by the private one.
using SchematicSceneObserver =
    GroupOverlapForwarder<qzk::ecad::SchematicSceneObserver, SchematicScene>;
using KernelSceneObserver = SchematicSceneObserver;
using SchematicViewObserver =
    ViewForwarder<qzk::ecad::SchematicViewObserver, qzk::ecad::SchematicView>;

unsigned int const kSchematicClassId = 163;
unsigned int const kHighlightColor = 0x010000FF;
bool const registered =
    qzk::ClassType::RegisterClass(kSchematicClassId, {qzk::classid::Observable});

} // namespace

qzk::ClassType const SchematicScene::CLASS_TYPE(kSchematicClassId);

SchematicScene::SchematicScene(du::SmartPtr<qzk::ecad::Scene> const& kernelScene)
    : Scene(kernelScene, kHighlightColor), SchSceneHelper() {
    (void)registered;
}

// The scene observer's link is cut with the scene's others (BaseScene).
SchematicScene::~SchematicScene() = default;

qzk::ClassType const& SchematicScene::GetClassType() const {
    return CLASS_TYPE;
}

qzk::ecad::SchematicScene* SchematicScene::_GetSchematicKernelScene() const {
    return dynamic_cast<qzk::ecad::SchematicScene*>(kernelScene.Get());
}

unsigned char SchematicScene::GetBaseEventId() {
    return Scene::GetNextEventId();
}
unsigned char SchematicScene::PAGE_CHANGED_EVENT() {
    return GetBaseEventId();
}

// ---------------------------------------------------------------------------------------------
// Life

void SchematicScene::Init() {
    // A barrier only: whoever is inside the scene finishes first. Unlike the board, what follows
    // runs without the lock.
    { dp::WriteLocker barrier(GetRWLock()); }
    sceneObserver = AttachSceneForwarder<KernelSceneObserver>(this, _GetSchematicKernelScene());
    Scene::Init();
}

void SchematicScene::_OnDestroy() {
    { dp::WriteLocker barrier(GetRWLock()); }
    DetachSceneForwarder(sceneObserver, _GetSchematicKernelScene());
    _LeaveKernelScene();
}

void SchematicScene::ViewCreated(du::SmartPtr<qzk::View> const& view) {
    AttachViewForwarder<SchematicViewObserver, qzk::ecad::SchematicView>(view);
    if (auto* ecadView = dynamic_cast<qzk::ecad::BaseView*>(view.Get())) {
        ecadView->FitView();
    }
}

void SchematicScene::OnDesignLoaded() {
    dp::WriteLocker lock(GetRWLock());
    Scene::OnDesignLoaded();
    auto const* schematic = dynamic_cast<qzk::ecad::SchematicData const*>(designData.Get());
    if (schematic == nullptr) {
        return;
    }
    viewStates.resize(schematic->GetNumSheets());
}

// ---------------------------------------------------------------------------------------------
// Observers

bool SchematicScene::RegisterObserver(qzkapp::ecad::SchematicSceneObserver& observer) {
    return _RegisterSceneObserver(this, observer);
}

bool SchematicScene::UnregisterObserver(qzkapp::ecad::SchematicSceneObserver& observer) {
    return _UnregisterSceneObserver(observer);
}

void SchematicScene::_InitObserver(qzkapp::ecad::SchematicSceneObserver& observer) {
    // A failed load is told too; only a loaded design has a draw order to tell.
    observer.OnDesignLoaded(loadError, loadErrorText);
    if (designData) {
        observer.OnDrawOrderChanged();
    }
}

// ---------------------------------------------------------------------------------------------
// Sheets

void SchematicScene::UpdateCurrentViewState(du::SmartPtr<qzk::ecad::BaseView> const& view,
                                            unsigned int page) {
    dp::WriteLocker lock(GetRWLock());
    SheetViewStateHolder::UpdateCurrentViewState(view, page);
}

void SchematicScene::PageNav(short page, du::SmartPtr<qzk::ecad::BaseView> const& view) {
    dp::WriteLocker lock(GetRWLock());
    SheetViewStateHolder::PageNav(page, view);
    // The crosshair shows only on the sheet of the object it marks.
    if (auto* ecadView = dynamic_cast<qzk::ecad::View*>(view.Get())) {
        ecadView->SetCrosshairVisibility(crosshairObject != nullptr && selectCrossHair &&
                                         crosshairSheet == ecadView->GetCurrentPage());
    }
}

void SchematicScene::PreviewPageNav(short page, du::SmartPtr<qzk::ecad::BaseView> const& view) {
    dp::WriteLocker lock(GetRWLock());
    SheetViewStateHolder::PreviewPageNav(page, view);
}

unsigned int SchematicScene::GetCrossHairObjectSheet(void* object) {
    qzk::ecad::View* const view = _GetMainView();
    if (view == nullptr || !designData || object == nullptr) {
        return 0xFFFFFFFFu;
    }
    std::vector<du::SmartPtr<qzk::SelectionItem>> const items{
        du::MakeCounted<qzk::ecad::SelectionItem>(designData, object, nullptr, nullptr,
                                                  dg::DPoint3D::ORIGIN, 0, 0)};
    return qzk::ecad::SelectionItem::GetSchematicSheetToNavigate(
        items, view->GetCurrentPage(), du::SmartPtr<qzk::Scene>(kernelScene));
}

unsigned int SchematicScene::GetCurrentPage() const {
    dp::ReadLocker lock(GetRWLock());
    return currentPage;
}

void SchematicScene::SetLastPreviewOp(short page) {
    dp::WriteLocker lock(GetRWLock());
    lastPreviewOp = page;
}

void SchematicScene::PostPageChangedEvent() {
    _PostEvent(PAGE_CHANGED_EVENT(), currentPage);
}

// ---------------------------------------------------------------------------------------------
// Sublayer colours

void SchematicScene::LoadColorVisInfo(du::SmartPtr<qzk::Operation> const& op) {
    BaseScene::LoadColorVisInfo(op);
    dp::WriteLocker lock(GetRWLock());
    if (_LoadColorVisInfo(designData, op)) {
        _PostEvent(SUBLAYERCOLORVIS_CHANGED_EVENT(), ChangeSourceScene);
    }
}

void SchematicScene::GetSublayerColorVisInfo(SublayerMap& out) const {
    dp::ReadLocker lock(GetRWLock());
    SchSceneHelper::GetSublayerColorVisInfo(out);
}

void SchematicScene::SetSublayerColorVisInfo(SublayerMap const& map,
                                             du::SmartPtr<qzk::Operation> const& op,
                                             ChangeSource source) {
    dp::WriteLocker lock(GetRWLock());
    SchSceneHelper::SetSublayerColorVisInfo(map, op, source);
    _PostEvent(SUBLAYERCOLORVIS_CHANGED_EVENT(), static_cast<unsigned int>(source));
}

void SchematicScene::ApplySublayerColorVisInfo(SublayerMap const& map,
                                               du::SmartPtr<qzk::Operation> const& op) {
    dp::WriteLocker lock(GetRWLock());
    _AppySublayerColorVisInfo(map, op);
    _PostEvent(SUBLAYERCOLORVIS_CHANGED_EVENT(), ChangeSourceScene);
}

void SchematicScene::SetFullColorVisInfo(qzk::ecad::GroupCVInfoSet const& groups,
                                         std::vector<qzk::ecad::AnnoCVInfo> const& images,
                                         SublayerMap const& sublayers,
                                         du::SmartPtr<qzk::Operation> const& op,
                                         ChangeSource source) {
    dp::WriteLocker lock(GetRWLock());
    if (op) {
        AddStep<ColorVisGroupOperationStep>(op, static_cast<BaseScene*>(this), GetGroupCV());
        AddStep<ColorVisSublayerOperationStep>(op, static_cast<SchSceneHelper*>(this), sublayerCV);
        if (qzk::ecad::AnnoCVInfo::AreDifferent(imageCV, images)) {
            AddStep<ColorVisImageOperationStep>(op, static_cast<Scene*>(this), imageCV);
        }
    }
    GetGroupCV().SetInfo(groups);
    ClearGroupAppearance();
    _PostEvent(GROUPCOLORVIS_CHANGED_EVENT(), static_cast<unsigned int>(source));
    sublayerCV.clear();
    sublayerCV.insert(sublayers.begin(), sublayers.end());
    SetSublayerColorVisInfoToQzkScene(sublayerCV);
    SetImageColorVisInfo(images, source);
    _PostEvent(SUBLAYERCOLORVIS_CHANGED_EVENT(), static_cast<unsigned int>(source));
}

void SchematicScene::SetSublayerColorVisInfoToQzkScene(SublayerMap const& map) const {
    if (qzk::ecad::SchematicScene* schematic = _GetSchematicKernelScene()) {
        schematic->SetSublayerColorVisInfo(map);
    }
}

void SchematicScene::GetDefaultDrawOrder(std::vector<short>& out) const {
    dp::ReadLocker lock(GetRWLock());
    _GetDefaultDrawOrder(designData, out);
}

wchar_t const* SchematicScene::GetLayerName(short layer) const {
    dp::ReadLocker lock(GetRWLock());
    return _GetLayerName(designData, layer);
}

// ---------------------------------------------------------------------------------------------
// Selection

void SchematicScene::SetSelectedItems(std::vector<du::SmartPtr<qzk::SelectionItem>> const& items) {
    _SetSelectedItems(items);
}

} // namespace qzkapp::ecad
