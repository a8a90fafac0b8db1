#include "board/PCBScene.h"

#include "board/BoardSwitches.h"
#include "board/ColorVisPCBOperationStep.h"
#include "board/IsolateOperations.h"
#include "board/OrientationOperations.h"
#include "board/PCBSceneObserver.h"
#include "dp/ReadWriteLock.h"
#include "qzk/SelectionItem.h"
#include "qzk/SelectionManager.h"
#include "qzk/View.h"
#include "qzk/ecad/DefaultColorVisibility.h"
#include "qzk/ecad/PCBScene.h"
#include "qzk/ecad/PCBSceneObserver.h"
#include "qzk/ecad/PCBView.h"
#include "qzk/ecad/PCBViewObserver.h"
#include "qzk/ecad/SublayerEcad.h"
#include "qzplugin/PluginHandlerIf.h"
#include "scene/SceneForwarders.h"
#include "scene/SceneLink.h"
#include "scene/SelectionChannels.h"
#include "scene/StepRecording.h"

namespace qzkapp::ecad {
namespace {

// The kernel scene's observer; the exported observer class of the same short name is hidden in
// this file by the private one.
using PCBSceneObserver = GroupOverlapForwarder<qzk::ecad::PCBSceneObserver, PCBScene>;
using KernelSceneObserver = PCBSceneObserver;
using PCBViewObserver = ViewForwarder<qzk::ecad::PCBViewObserver, qzk::ecad::PCBView>;

unsigned int const kBoardClassId = 162;
unsigned int const kHighlightColor = 0x01FFFFFF;
bool const registered = qzk::ClassType::RegisterClass(kBoardClassId, {qzk::classid::Observable});

} // namespace

qzk::ClassType const PCBScene::CLASS_TYPE(kBoardClassId);

PCBScene::PCBScene(du::SmartPtr<qzk::ecad::Scene> const& kernelScene)
    : Scene(kernelScene, kHighlightColor), PCBSceneHelper(), highlightOnlyVisible(false),
      isolateOnlyVisible(false) {
    (void)registered;
    if (!this->kernelScene) {
        return;
    }
    this->kernelScene->SetHighlightOnlyVisible(highlightOnlyVisible);
    if (qzk::ecad::PCBScene* board = _GetPCBKernelScene()) {
        board->SetIsolateOnlyVisible(isolateOnlyVisible);
    }
    this->kernelScene->SetFillShapes(fillShapes);
    if (qzk::ecad::PCBScene* board = _GetPCBKernelScene()) {
        board->SetShowLogicalConnection(showLogicalConnections);
    }
    // The misc layer's node of the host's colour tree starts collapsed.
    std::string node;
    qzk::ecad::SublayerEcad::GetNodeName(node, qzk::ecad::DefaultColorVisibility::s_miscLayer, 0,
                                         true);
    AddCVExpandedState(node, false);
}

// The scene observer's link is cut with the scene's others (BaseScene).
PCBScene::~PCBScene() = default;

qzk::ClassType const& PCBScene::GetClassType() const {
    return CLASS_TYPE;
}

qzk::ecad::PCBScene* PCBScene::_GetPCBKernelScene() const {
    return dynamic_cast<qzk::ecad::PCBScene*>(kernelScene.Get());
}

unsigned char PCBScene::GetBaseEventId() {
    return Scene::GetNextEventId();
}
unsigned char PCBScene::HIGHLIGHTONLYVISIBLE_CHANGED_EVENT() {
    return GetBaseEventId();
}
unsigned char PCBScene::OVERLAY_CHANGED_EVENT() {
    return GetBaseEventId() + 1;
}
unsigned char PCBScene::ORIENTATION_CHANGED_EVENT() {
    return GetBaseEventId() + 2;
}
unsigned char PCBScene::ROTATION_CHANGED_EVENT() {
    return GetBaseEventId() + 3;
}
unsigned char PCBScene::ISOLATEONLYVISIBLE_CHANGED_EVENT() {
    return GetBaseEventId() + 4;
}

// ---------------------------------------------------------------------------------------------
// Life

void PCBScene::Init() {
    dp::WriteLocker lock(GetRWLock());
    sceneObserver = AttachSceneForwarder<KernelSceneObserver>(this, _GetPCBKernelScene());
    Scene::Init();
}

void PCBScene::_OnDestroy() {
    dp::WriteLocker lock(GetRWLock());
    DetachSceneForwarder(sceneObserver, _GetPCBKernelScene());
    _LeaveKernelScene();
}

void PCBScene::ViewCreated(du::SmartPtr<qzk::View> const& view) {
    AttachViewForwarder<PCBViewObserver, qzk::ecad::PCBView>(view);
}

// ---------------------------------------------------------------------------------------------
// Observers

bool PCBScene::RegisterObserver(qzkapp::ecad::PCBSceneObserver& observer) {
    return _RegisterSceneObserver(this, observer);
}

bool PCBScene::UnregisterObserver(qzkapp::ecad::PCBSceneObserver& observer) {
    return _UnregisterSceneObserver(observer);
}

void PCBScene::_InitObserver(qzkapp::ecad::PCBSceneObserver& observer) {
    // A failed load is told too; only a loaded design has a draw order to tell.
    observer.OnDesignLoaded(loadError, loadErrorText);
    if (designData) {
        observer.OnDrawOrderChanged();
    }
}

// ---------------------------------------------------------------------------------------------
// Colour sets

void PCBScene::LoadColorVisInfo(du::SmartPtr<qzk::Operation> const& op) {
    BaseScene::LoadColorVisInfo(op);
    dp::WriteLocker lock(GetRWLock());
    AddStep<ColorVisPCBOperationStep>(op, static_cast<PCBSceneHelper*>(this), sublayerCV);
    sublayerCV.clear();
    _GetDefaultColorVisInfo(designData, sublayerCV, false);
    if (qzk::ecad::PCBScene* board = _GetPCBKernelScene()) {
        board->SetColorVisInfo(sublayerCV);
    }
    _PostEvent(SUBLAYERCOLORVIS_CHANGED_EVENT(), ChangeSourceScene);
}

void PCBScene::GetColorVisInfo(qzk::ecad::SublayerPCB_CVSet& out) const {
    dp::ReadLocker lock(GetRWLock());
    PCBSceneHelper::GetColorVisInfo(out);
}

void PCBScene::SetColorVisInfo(qzk::ecad::SublayerPCB_CVSet const& set,
                               du::SmartPtr<qzk::Operation> const& op, ChangeSource source) {
    dp::WriteLocker lock(GetRWLock());
    PCBSceneHelper::SetColorVisInfo(set, op, source);
    if (qzk::ecad::PCBScene* board = _GetPCBKernelScene()) {
        board->SetColorVisInfo(sublayerCV);
    }
    _PostEvent(SUBLAYERCOLORVIS_CHANGED_EVENT(), static_cast<unsigned int>(source));
}

void PCBScene::ApplyColorVisInfo(qzk::ecad::SublayerPCB_CVSet const& set,
                                 du::SmartPtr<qzk::Operation> const& op) {
    qzk::ecad::SublayerPCB_CVSet combined;
    {
        dp::ReadLocker lock(GetRWLock());
        CombineColorVisInfo(set, combined);
    }
    SetColorVisInfo(combined, op, ChangeSourceScene);
}

void PCBScene::GetDefaultColorVisInfo(qzk::ecad::SublayerPCB_CVSet& out, bool flag) const {
    dp::ReadLocker lock(GetRWLock());
    _GetDefaultColorVisInfo(designData, out, flag);
}

void PCBScene::GetDefaultDrawOrder(std::vector<short>& out) const {
    dp::ReadLocker lock(GetRWLock());
    _GetDefaultDrawOrder(designData, out);
}

std::wstring PCBScene::GetSublayerLabel(short layer, short sublayer) {
    return _GetSublayerLabel(designData, layer, sublayer);
}

short PCBScene::GetSublayerHandle(short layer, std::string const& name) const {
    return _GetSublayerHandle(designData, layer, name);
}

short PCBScene::GetTopLayer() const {
    return _GetTopLayer(designData);
}
short PCBScene::GetBottomLayer() const {
    return _GetBottomLayer(designData);
}

// ---------------------------------------------------------------------------------------------
// Switches and selection

using Switches = BoardSwitches<PCBScene>;

void PCBScene::ToggleShowLogicalConnection() {
    Switches::ToggleShowLogicalConnection(*this);
}

bool PCBScene::GetHighlightOnlyVisible() const {
    return Switches::GetHighlightOnlyVisible(*this);
}

void PCBScene::SetHighlightOnlyVisible(bool value, ChangeSource source) {
    Switches::SetHighlightOnlyVisible(*this, value, source);
}

bool PCBScene::GetIsolateOnlyVisible() const {
    return Switches::GetIsolateOnlyVisible(*this);
}

void PCBScene::SetIsolateOnlyVisible(bool value, ChangeSource source) {
    Switches::SetIsolateOnlyVisible(*this, value, source);
}

void PCBScene::SetSelectedItems(std::vector<du::SmartPtr<qzk::SelectionItem>> const& items) {
    _SetSelectedItems(items);
}

// ---------------------------------------------------------------------------------------------
// Isolation

using Isolation = IsolateOperations<PCBScene>;

void PCBScene::Isolate(std::vector<du::SmartPtr<qzk::SelectionItem>> const& items,
                       du::SmartPtr<qzk::Operation> const& op) {
    Isolation::Isolate(*this, items, op);
}

void PCBScene::AddToIsolated(std::vector<du::SmartPtr<qzk::SelectionItem>> const& items,
                             du::SmartPtr<qzk::Operation> const& op) {
    Isolation::AddToIsolated(*this, items, op);
}

void PCBScene::Deisolate(std::vector<du::SmartPtr<qzk::SelectionItem>> const& items,
                         du::SmartPtr<qzk::Operation> const& op) {
    Isolation::Deisolate(*this, items, op);
}

void PCBScene::ClearAllIsolated(du::SmartPtr<qzk::Operation> const& op) {
    Isolation::ClearAllIsolated(*this, op);
}

void PCBScene::ApplyIsolatedList() const {
    _SetIsolatedToQzkScene();
}

void PCBScene::GetItems(qzk::ecad::ItemContainer<qzk::ecad::IsolateItem>& out) const {
    Isolation::GetItems(*this, out);
}

void PCBScene::SetItems(qzk::ecad::ItemContainer<qzk::ecad::IsolateItem> const& items,
                        bool setViewsDirty) {
    Isolation::SetItems(*this, items, setViewsDirty);
}

void PCBScene::_SetIsolatedToQzkScene() const {
    Isolation::Push(*this);
}

void PCBScene::_IsolateViewsDirty() const {
    if (kernelScene) {
        kernelScene->SetViewsDirty();
    }
}

// ---------------------------------------------------------------------------------------------
// Orientation

using Orientation = OrientationOperations<PCBScene>;

bool PCBScene::GetFlip() const {
    return _GetFlip();
}

short PCBScene::GetRotation() const {
    return _GetRotation();
}

void PCBScene::SetFlip(bool flip, du::SmartPtr<qzk::Operation> const& op, bool applyToView) {
    Orientation::SetFlip(*this, flip, op, applyToView);
}

void PCBScene::ToggleFlip(du::SmartPtr<qzk::Operation> const& op) {
    Orientation::ToggleFlip(*this, op);
}

void PCBScene::SetRotation(short rotation, du::SmartPtr<qzk::Operation> const& op,
                           bool applyToView) {
    Orientation::SetRotation(*this, rotation, op, applyToView);
}

void PCBScene::AddRotation(short delta, du::SmartPtr<qzk::Operation> const& op) {
    Orientation::AddRotation(*this, delta, op);
}

void PCBScene::_InvertLayersForFlip(du::SmartPtr<qzk::Operation> const& op) {
    if (kernelScene) {
        _DrawOrderInvertLayers(op);
    }
}

} // namespace qzkapp::ecad
