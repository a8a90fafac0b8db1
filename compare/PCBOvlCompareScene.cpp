#include "compare/PCBOvlCompareScene.h"

#include "board/BoardSwitches.h"
#include "board/ColorVisOverlayOperationStep.h"
#include "board/ColorVisPCBOperationStep.h"
#include "board/IsolateOperations.h"
#include "board/OrientationOperations.h"
#include "compare/PCBOvlCompareSceneObserver.h"
#include "dg/Color.h"
#include "dg/DMat33.h"
#include "dg/DPoint2D.h"
#include "dp/ReadWriteLock.h"
#include "du/Localizer.h"
#include "du/StringConversion.h"
#include "qzk/EcadDesign.h"
#include "qzk/Kernel.h"
#include "qzk/View.h"
#include "qzk/ecad/AnnoCVInfo.h"
#include "qzk/ecad/DefaultColorVisibility.h"
#include "qzk/ecad/EcadPCBData.h"
#include "qzk/ecad/OverlayLoaderEvent.h"
#include "qzk/ecad/OverlayPrefs.h"
#include "qzk/ecad/PCBCompareView.h"
#include "qzk/ecad/PCBCompareViewObserver.h"
#include "qzk/ecad/PCBOvlCompareScene.h"
#include "qzk/ecad/PCBOvlCompareSceneObserver.h"
#include "qzk/ecad/SublayerEcad.h"
#include "qzk/ecad/SublayerPCB_CV.h"
#include "qzloader/Loader.h"
#include "scene/AdditiveRandom.h"
#include "scene/SceneForwarders.h"
#include "scene/SceneLink.h"
#include "scene/StepRecording.h"

#include <optional>

namespace qzkapp::ecad {

// Defined behind the scene, whose protected handlers it calls as the owner of its overlay loads.
class OverlayLoadCompletion {
public:
    static void Loaded(PCBOvlCompareScene& scene, qzk::ecad::OverlayLoaderEvent* event) {
        scene.OnOverlayLoaded(event);
    }
    static void Failed(PCBOvlCompareScene& scene, qzk::ecad::OverlayLoaderEvent* event) {
        scene.OnDesignLoadFailed(event);
    }
};

namespace {

// The load of the Gerber design, with where and how its overlay is to be placed. Without
// placing preferences of its own (the caller gave them) the overlay goes where point and matrix
// say; with them, about the film's centre.
class OverlayLoaderEvent : public qzk::ecad::OverlayLoaderEvent {
public:
    OverlayLoaderEvent(PCBOvlCompareScene* scene, qzk::ecad::GerberPrefs const& gerber,
                       std::optional<qzk::ecad::OverlayPrefs> const& placing,
                       dg::DMat33 const& matrix, dg::DPoint2D const& point, bool visible)
        : qzk::ecad::OverlayLoaderEvent(L"", gerber, du::Symbol::EMPTY, false), scene_(scene),
          placing_(placing), matrix_(matrix), point_(point), visible_(visible) {}
    ~OverlayLoaderEvent() override { DetachFromMessageLoop(); }

    std::optional<qzk::ecad::OverlayPrefs> const& Placing() const { return placing_; }
    dg::DMat33 const& Matrix() const { return matrix_; }
    dg::DPoint2D const& Point() const { return point_; }
    bool Visible() const { return visible_; }

private:
    void OnProgress(unsigned char /*percent*/) override {}

    void OnCompleted(int status) override {
        if (status != StatusSuccess && status != StatusError && status != StatusCanceled) {
            return;
        }
        scene_.Call([this, status](PCBOvlCompareScene& scene) {
            if (status == StatusSuccess) {
                OverlayLoadCompletion::Loaded(scene, this);
            } else {
                OverlayLoadCompletion::Failed(scene, this);
            }
        });
    }

    SceneLink<PCBOvlCompareScene> scene_;
    std::optional<qzk::ecad::OverlayPrefs> const placing_;
    dg::DMat33 const matrix_;
    dg::DPoint2D const point_;
    bool const visible_;
};

// The kernel scene's observer: the user's change of the compare colours. Unlike the other board
// scenes' it leaves the group overlap colour to the base class: this scene shows no groups.
class QzkSceneObserver
    : public SceneForwarder<qzk::ecad::PCBOvlCompareSceneObserver, PCBOvlCompareScene> {
public:
    using SceneForwarder::SceneForwarder;

    void OnCompareColorChanged() override {
        scene_.Call([](PCBOvlCompareScene& scene) { scene.SetColorInfo(); });
    }
};
using QzkViewObserver = ViewForwarder<qzk::ecad::PCBCompareViewObserver, qzk::ecad::PCBCompareView>;

unsigned int const kOverlayCompareClassId = 178;
unsigned int const kHighlightColor = 0x01FFFFFF;
bool const registered =
    qzk::ClassType::RegisterClass(kOverlayCompareClassId, {qzk::classid::Observable});

// The overlays of this scene class draw their ids from a source of their own.
AdditiveRandom const& OverlayIds() {
    static AdditiveRandom const ids;
    return ids;
}

// Every overlay of this scene class has this name.
std::wstring const& OverlayName() {
    static std::wstring const name = [] {
        du::Localizer const localizer("qzecad:qzecadStrings");
        return du::Utf8ToWideStr(localizer.LocalizeMessage(
            "LayerOverlay", static_cast<du::Localizer::ActionOnFailure>(0)));
    }();
    return name;
}

// The board's data stays null until it is there; a reference to this stands in for it.
du::SmartPtr<qzk::ecad::EcadDesignData> const& NoData() {
    static du::SmartPtr<qzk::ecad::EcadDesignData> const none;
    return none;
}

void Manage(dom::ManagedObject* object) {
    if (du::SmartPtr<qzk::Kernel> kernel = qzk::Kernel::GetKernel()) {
        kernel->ManageObject(du::SmartPtr<dom::ManagedObject>(object));
    }
}

} // namespace

qzk::ClassType const PCBOvlCompareScene::CLASS_TYPE(kOverlayCompareClassId);

PCBOvlCompareScene::PCBOvlCompareScene(
    du::SmartPtr<qzk::ecad::PCBOvlCompareScene> const& kernelScene)
    : CompareScene(du::SmartPtr<qzk::ecad::CompareScene>(kernelScene), kHighlightColor),
      PCBSceneHelper(), highlightOnlyVisible(false), isolateOnlyVisible(false) {
    (void)registered;
    if (!this->kernelScene) {
        return;
    }
    qzk::ecad::PCBOvlCompareScene* board = _GetOvlKernelScene();
    this->kernelScene->SetFillShapes(fillShapes);
    if (board != nullptr) {
        board->SetShowLogicalConnection(showLogicalConnections);
    }
    this->kernelScene->SetHighlightOnlyVisible(highlightOnlyVisible);
    if (board != nullptr) {
        board->SetIsolateOnlyVisible(isolateOnlyVisible);
    }
    // The misc layer's node of the host's colour tree starts collapsed.
    std::string node;
    qzk::ecad::SublayerEcad::GetNodeName(node, qzk::ecad::DefaultColorVisibility::s_miscLayer, 0,
                                         true);
    AddCVExpandedState(node, false);
}

// The links of the scene observer and the overlay loads were cut with the scene's others.
PCBOvlCompareScene::~PCBOvlCompareScene() = default;

qzk::ClassType const& PCBOvlCompareScene::GetClassType() const {
    return CLASS_TYPE;
}

qzk::ecad::PCBOvlCompareScene* PCBOvlCompareScene::_GetOvlKernelScene() const {
    return dynamic_cast<qzk::ecad::PCBOvlCompareScene*>(kernelScene.Get());
}

unsigned char PCBOvlCompareScene::GetBaseEventId() {
    return CompareScene::GetNextEventId();
}
unsigned char PCBOvlCompareScene::HIGHLIGHTONLYVISIBLE_CHANGED_EVENT() {
    return GetBaseEventId();
}
unsigned char PCBOvlCompareScene::OVERLAY_CHANGED_EVENT() {
    return GetBaseEventId() + 1;
}
unsigned char PCBOvlCompareScene::ORIENTATION_CHANGED_EVENT() {
    return GetBaseEventId() + 2;
}
unsigned char PCBOvlCompareScene::ROTATION_CHANGED_EVENT() {
    return GetBaseEventId() + 3;
}
unsigned char PCBOvlCompareScene::ISOLATEONLYVISIBLE_CHANGED_EVENT() {
    return GetBaseEventId() + 4;
}

// ---------------------------------------------------------------------------------------------
// Life

void PCBOvlCompareScene::Init() {
    dp::WriteLocker lock(GetRWLock());
    sceneObserver = AttachSceneForwarder<QzkSceneObserver>(this, _GetOvlKernelScene());
    CompareScene::Init();
}

void PCBOvlCompareScene::ViewCreated(du::SmartPtr<qzk::View> const& view) {
    AttachViewForwarder<QzkViewObserver, qzk::ecad::PCBCompareView>(view);
}

void PCBOvlCompareScene::_OnDestroy() {
    dp::WriteLocker lock(GetRWLock());
    DetachSceneForwarder(sceneObserver, _GetOvlKernelScene());
    _LeaveKernelScene();
}

bool PCBOvlCompareScene::RegisterObserver(qzkapp::ecad::PCBOvlCompareSceneObserver& observer) {
    return _RegisterSceneObserver(this, observer);
}

bool PCBOvlCompareScene::UnregisterObserver(qzkapp::ecad::PCBOvlCompareSceneObserver& observer) {
    return _UnregisterSceneObserver(observer);
}

void PCBOvlCompareScene::_InitObserver(qzkapp::ecad::PCBOvlCompareSceneObserver& observer) {
    // Replayed only with the overlay there too: a board alone is told by its notice.
    if (!designData[0] || !designData[1]) {
        return;
    }
    observer.OnDesignLoaded(false, 0, du::Symbol::EMPTY);
    observer.OnDrawOrderChanged();
}

// ---------------------------------------------------------------------------------------------
// The board

bool PCBOvlCompareScene::IsDesignLoaded() const {
    return _HasOwnDesignData(false) || _HasOwnDesignData(true);
}

bool PCBOvlCompareScene::_IsFirstPCB() const {
    return _HasOwnDesignData(false);
}

du::SmartPtr<qzk::ecad::EcadDesignData> const& PCBOvlCompareScene::_GetPCBData() const {
    if (_IsFirstPCB()) {
        return designData[0];
    }
    return _HasOwnDesignData(true) ? designData[1] : NoData();
}

du::SmartPtr<qzk::ecad::EcadDesignData> const& PCBOvlCompareScene::GetPCBData() const {
    dp::ReadLocker lock(GetRWLock());
    return _GetPCBData();
}

short PCBOvlCompareScene::GetTopLayer() const {
    return _GetTopLayer(_GetPCBData());
}

short PCBOvlCompareScene::GetBottomLayer() const {
    return _GetBottomLayer(_GetPCBData());
}

short PCBOvlCompareScene::GetSublayerHandle(short layer, std::string const& name) const {
    return _GetSublayerHandle(_GetPCBData(), layer, name);
}

std::wstring PCBOvlCompareScene::GetSublayerLabel(short layer, short sublayer) {
    return _GetSublayerLabel(_GetPCBData(), layer, sublayer);
}

void PCBOvlCompareScene::GetDefaultDrawOrder(std::vector<short>& out) const {
    dp::ReadLocker lock(GetRWLock());
    _GetDefaultDrawOrder(_GetPCBData(), out);
}

void PCBOvlCompareScene::_LoadEcadDesign(du::SmartPtr<qzk::EcadDesign> const& design, bool second) {
    if (!design->IsGerber()) {
        CompareScene::_LoadEcadDesign(design, second);
        return;
    }
    // Opened from a saved comparison: its host places the overlay as it was saved.
    if (kernelScene && kernelScene->GetAnnoEntry()) {
        return;
    }
    _LoadOverlay(design, second, nullptr, dg::DMat33::IDENTITY, dg::DPoint2D::BAD, true);
}

// ---------------------------------------------------------------------------------------------
// Colour sets

void PCBOvlCompareScene::GetColorVisInfo(qzk::ecad::SublayerPCB_CVSet& out) const {
    dp::ReadLocker lock(GetRWLock());
    PCBSceneHelper::GetColorVisInfo(out);
}

void PCBOvlCompareScene::_PushSublayers(unsigned int source) {
    if (qzk::ecad::PCBOvlCompareScene* board = _GetOvlKernelScene()) {
        board->SetColorVisInfo(sublayerCV);
    }
    _PostEvent(SUBLAYERCOLORVIS_CHANGED_EVENT(), source);
}

void PCBOvlCompareScene::SetColorVisInfo(qzk::ecad::SublayerPCB_CVSet const& set,
                                         du::SmartPtr<qzk::Operation> const& op,
                                         ChangeSource source) {
    dp::WriteLocker lock(GetRWLock());
    PCBSceneHelper::SetColorVisInfo(set, op, source);
    _PushSublayers(static_cast<unsigned int>(source));
}

void PCBOvlCompareScene::ApplyColorVisInfo(qzk::ecad::SublayerPCB_CVSet const& set,
                                           du::SmartPtr<qzk::Operation> const& op) {
    qzk::ecad::SublayerPCB_CVSet combined;
    {
        dp::ReadLocker lock(GetRWLock());
        CombineColorVisInfo(set, combined);
    }
    SetColorVisInfo(combined, op, ChangeSourceScene);
}

void PCBOvlCompareScene::GetOverlayColorVisInfo(std::vector<qzk::ecad::AnnoCVInfo>& out) const {
    dp::ReadLocker lock(GetRWLock());
    PCBSceneHelper::GetOverlayColorVisInfo(out);
}

void PCBOvlCompareScene::UpdateOverlayCVInfo(std::vector<qzk::ecad::AnnoCVInfo> const& list,
                                             ChangeSource source) {
    dp::WriteLocker lock(GetRWLock());
    PCBSceneHelper::UpdateOverlayCVInfo(list, source);
}

void PCBOvlCompareScene::_NotifyOverlayColorVisChanged(ChangeSource source) {
    if (kernelScene) {
        kernelScene->OverlayColorVisChanged(overlayCV);
    }
    _PostEvent(OVERLAY_CHANGED_EVENT(), static_cast<unsigned int>(source));
}

void PCBOvlCompareScene::LoadColorVisInfo(du::SmartPtr<qzk::Operation> const& op) {
    BaseScene::LoadColorVisInfo(op);
    dp::WriteLocker lock(GetRWLock());
    // Both recorded, whether anything differs or not.
    AddStep<ColorVisPCBOperationStep>(op, static_cast<PCBSceneHelper*>(this), sublayerCV);
    AddStep<ColorVisOverlayOperationStep>(op, static_cast<PCBSceneHelper*>(this), overlayCV);
    sublayerCV.clear();
    // The second design is taken as the board without asking it: the first isn't one.
    du::SmartPtr<qzk::ecad::EcadDesignData> const& board =
        designData[0] && !designData[0]->IsOverlayData() ? designData[0] : designData[1];
    if (board) {
        _GetDefaultColorVisInfo(board, sublayerCV, false);
    }
    if (!overlayCV.empty()) {
        overlayCV.front().visible = true;
    }
    _SetColorInfo();
    _PostEvent(SUBLAYERCOLORVIS_CHANGED_EVENT(), static_cast<unsigned int>(ChangeSourceScene));
    _NotifyOverlayColorVisChanged(ChangeSourceScene);
}

void PCBOvlCompareScene::_SetColorInfo() {
    qzk::ecad::CompareScene* compare = _GetCompareKernelScene();
    if (compare == nullptr) {
        return;
    }
    bool const firstIsBoard = _IsFirstPCB();
    unsigned int const boardColor =
        (firstIsBoard ? compare->GetFirstItemColor() : compare->GetSecondItemColor()).GetAsHexUI();
    unsigned int const overlayColor =
        (firstIsBoard ? compare->GetSecondItemColor() : compare->GetFirstItemColor()).GetAsHexUI();
    // The set is ordered by sublayer alone, so the entries are rebuilt with the new colour.
    qzk::ecad::SublayerPCB_CVSet recoloured;
    for (qzk::ecad::SublayerPCB_CV entry : sublayerCV) {
        entry.color = boardColor;
        recoloured.insert(entry);
    }
    sublayerCV.swap(recoloured);
    if (!overlayCV.empty()) {
        overlayCV.front().color = overlayColor;
    }
}

void PCBOvlCompareScene::SetColorInfo() {
    dp::WriteLocker lock(GetRWLock());
    _SetColorInfo();
}

void PCBOvlCompareScene::SetFullColorVisInfo(qzk::ecad::GroupCVInfoSet const& /*groups*/,
                                             qzk::ecad::SublayerPCB_CVSet const& sublayers,
                                             std::vector<qzk::ecad::AnnoCVInfo> const& overlays,
                                             std::vector<qzk::ecad::AnnoCVInfo> const& /*images*/,
                                             du::SmartPtr<qzk::Operation> const& op,
                                             ChangeSource source) {
    dp::WriteLocker lock(GetRWLock());
    if (qzk::ecad::SublayerPCB_CV::AreDifferent(sublayerCV, sublayers)) {
        PCBSceneHelper::SetColorVisInfo(sublayers, op, source);
        _PushSublayers(static_cast<unsigned int>(source));
    }
    if (qzk::ecad::AnnoCVInfo::AreDifferent(overlayCV, overlays)) {
        AddStep<ColorVisOverlayOperationStep>(op, static_cast<PCBSceneHelper*>(this), overlayCV);
        qzk::ecad::AnnoCVInfo::AssignCVAttrs(overlayCV, overlays);
        _NotifyOverlayColorVisChanged(source);
    }
}

// ---------------------------------------------------------------------------------------------
// The overlay

void PCBOvlCompareScene::GetGerberPrefs(qzk::ecad::GerberPrefs& out) const {
    dp::ReadLocker lock(GetRWLock());
    out = gerberPrefs;
}

void PCBOvlCompareScene::LoadOverlay() {
    dp::WriteLocker lock(GetRWLock());
    _RemoveOverlay();
    if (!kernelScene) {
        return;
    }
    for (bool const second : {false, true}) {
        if (du::SmartPtr<qzk::EcadDesign> const design = _GetDesign(second);
            design && design->IsGerber()) {
            _LoadOverlay(design, second, nullptr, dg::DMat33::IDENTITY, dg::DPoint2D::BAD, true);
            return;
        }
    }
}

void PCBOvlCompareScene::LoadOverlay(qzk::ecad::GerberPrefs const& prefs, dg::DMat33 const& matrix,
                                     dg::DPoint2D const& point, bool visible) {
    dp::WriteLocker lock(GetRWLock());
    _RemoveOverlay();
    if (!kernelScene) {
        return;
    }
    for (bool const second : {false, true}) {
        if (du::SmartPtr<qzk::EcadDesign> const design = _GetDesign(second);
            design && design->IsGerber()) {
            _LoadOverlay(design, second, &prefs, matrix, point, visible);
            return;
        }
    }
}

void PCBOvlCompareScene::_RemoveOverlay() {
    if (overlayCV.empty()) {
        return;
    }
    if (kernelScene) {
        kernelScene->RemoveOverlay(overlayCV.front().id);
    }
    // Told while the list still holds the entry.
    _PostEvent(OVERLAY_CHANGED_EVENT(), static_cast<unsigned int>(ChangeSourceScene));
    overlayCV.clear();
    if (kernelScene) {
        kernelScene->SetViewsDirty();
    }
}

void PCBOvlCompareScene::_LoadOverlay(du::SmartPtr<qzk::EcadDesign> const& design, bool second,
                                      qzk::ecad::GerberPrefs const* prefs, dg::DMat33 const& matrix,
                                      dg::DPoint2D const& point, bool visible) {
    du::SmartPtr<qzk::Kernel> const kernel = qzk::Kernel::GetKernel();
    du::SmartPtr<qzloader::Loader> const loader = qzloader::Loader::GetLoader();
    if (!kernel || !loader) {
        return;
    }
    int const index = second ? 1 : 0;
    if (du::SmartPtr<qzloader::EcadDesignLoaderEvent> const former = loaderEvent[index]) {
        if (!former->IsCanceled() && !former->IsComplete()) {
            former->Cancel();
        }
        loaderEvent[index] = nullptr;
    }
    du::SmartPtr<OverlayLoaderEvent> event;
    if (prefs != nullptr) {
        event =
            du::MakeCounted<OverlayLoaderEvent>(this, *prefs, std::nullopt, matrix, point, visible);
    } else {
        qzk::ecad::GerberPrefs gerber;
        gerber.Init();
        qzk::ecad::OverlayPrefs placing;
        placing.Init();
        event = du::MakeCounted<OverlayLoaderEvent>(this, gerber, placing, dg::DMat33::IDENTITY,
                                                    dg::DPoint2D::BAD, true);
    }
    loaderEvent[index] = event;
    Manage(event.Get());
    loader->LoadEcadDesign(design, event.Get());
    designLoading[index] = true;
}

void PCBOvlCompareScene::OnOverlayLoaded(qzk::ecad::OverlayLoaderEvent* event) {
    if (event == nullptr) {
        return;
    }
    du::SmartPtr<qzk::ecad::EcadPCBData> data;
    dg::Color color;
    {
        dp::WriteLocker lock(GetRWLock());
        bool second = false;
        if (event == loaderEvent[0].Get()) {
            second = false;
        } else if (event == loaderEvent[1].Get()) {
            second = true;
        } else {
            // Cancelled and let go by a later load: that one brings the overlay.
            return;
        }
        loaderEvent[second ? 1 : 0] = nullptr;
        designLoading[second ? 1 : 0] = false;
        if (qzk::ecad::CompareScene* compare = _GetCompareKernelScene()) {
            du::SmartPtr<qzk::EcadDesign> const design = _GetDesign(second);
            data = design ? du::DynamicCast<qzk::ecad::EcadPCBData>(design->GetEcadDesignData())
                          : nullptr;
            _StoreDesignData(second, du::SmartPtr<qzk::ecad::EcadDesignData>(data));
            color = second ? compare->GetSecondItemColor() : compare->GetFirstItemColor();
        }
    }
    if (!data) {
        return;
    }
    // The place is worked out outside the lock; OverlayCreated takes it again.
    auto const* own = dynamic_cast<OverlayLoaderEvent const*>(event);
    if (own != nullptr && own->Placing()) {
        dg::DPoint2D center = data->GetRange().GetCenter();
        dg::DMat33 matrix = dg::DMat33::IDENTITY;
        own->Placing()->ApplyTransform(matrix, center);
        center *= matrix;
        OverlayCreated(data, color, true, event->GetGerberPrefs(), center, matrix);
    } else if (own != nullptr) {
        OverlayCreated(data, color, own->Visible(), event->GetGerberPrefs(), own->Point(),
                       own->Matrix());
    }
}

void PCBOvlCompareScene::OverlayCreated(du::SmartPtr<qzk::ecad::EcadPCBData> const& data,
                                        dg::Color const& color, bool visible,
                                        qzk::ecad::GerberPrefs const& prefs,
                                        dg::DPoint2D const& center, dg::DMat33 const& matrix) {
    AdditiveRandom const& ids = OverlayIds();
    std::wstring const& name = OverlayName();
    if (!data) {
        return;
    }
    uint64 id = ids.NextNonZeroId();
    dp::WriteLocker lock(GetRWLock());
    if (!kernelScene) {
        return;
    }
    // Every source of the process is seeded alike: an id the kernel scene shows already is
    // drawn again.
    while (kernelScene->FindOverlay(id)) {
        id = ids.NextNonZeroId();
    }
    gerberPrefs = prefs;
    kernelScene->CreateOverlay(data, id, visible, color, 1, matrix, center, name);
    overlayCV.emplace_back(id, name.c_str(), color.GetAsHexUI(), visible,
                           qzk::ecad::AnnoCVInfo::eOverlay);
    _PostEvent(OVERLAY_CHANGED_EVENT(), static_cast<unsigned int>(ChangeSourceOverlayLoad));
    kernelScene->SetViewsDirty();
}

void PCBOvlCompareScene::RotateOverlay(double angle) {
    dp::ReadLocker lock(GetRWLock());
    if (kernelScene && !overlayCV.empty()) {
        kernelScene->RotateOverlay(overlayCV.front().id, angle);
    }
}

void PCBOvlCompareScene::FlipHorzOverlay() {
    dp::ReadLocker lock(GetRWLock());
    if (kernelScene && !overlayCV.empty()) {
        kernelScene->FlipHorzOverlay(overlayCV.front().id);
    }
}

void PCBOvlCompareScene::FlipVertOverlay() {
    dp::ReadLocker lock(GetRWLock());
    if (kernelScene && !overlayCV.empty()) {
        kernelScene->FlipVertOverlay(overlayCV.front().id);
    }
}

// ---------------------------------------------------------------------------------------------
// Switches

using Switches = BoardSwitches<PCBOvlCompareScene>;

void PCBOvlCompareScene::ToggleShowLogicalConnection() {
    Switches::ToggleShowLogicalConnection(*this);
}

bool PCBOvlCompareScene::GetHighlightOnlyVisible() const {
    return Switches::GetHighlightOnlyVisible(*this);
}

void PCBOvlCompareScene::SetHighlightOnlyVisible(bool value, ChangeSource source) {
    Switches::SetHighlightOnlyVisible(*this, value, source);
}

bool PCBOvlCompareScene::GetIsolateOnlyVisible() const {
    return Switches::GetIsolateOnlyVisible(*this);
}

void PCBOvlCompareScene::SetIsolateOnlyVisible(bool value, ChangeSource source) {
    Switches::SetIsolateOnlyVisible(*this, value, source);
}

// ---------------------------------------------------------------------------------------------
// Isolation

using Isolation = IsolateOperations<PCBOvlCompareScene>;

void PCBOvlCompareScene::Isolate(std::vector<du::SmartPtr<qzk::SelectionItem>> const& items,
                                 du::SmartPtr<qzk::Operation> const& op) {
    Isolation::Isolate(*this, items, op);
}

void PCBOvlCompareScene::AddToIsolated(std::vector<du::SmartPtr<qzk::SelectionItem>> const& items,
                                       du::SmartPtr<qzk::Operation> const& op) {
    Isolation::AddToIsolated(*this, items, op);
}

void PCBOvlCompareScene::Deisolate(std::vector<du::SmartPtr<qzk::SelectionItem>> const& items,
                                   du::SmartPtr<qzk::Operation> const& op) {
    Isolation::Deisolate(*this, items, op);
}

void PCBOvlCompareScene::ClearAllIsolated(du::SmartPtr<qzk::Operation> const& op) {
    Isolation::ClearAllIsolated(*this, op);
}

void PCBOvlCompareScene::ApplyIsolatedList() const {
    Isolation::Push(*this);
}

void PCBOvlCompareScene::GetItems(qzk::ecad::ItemContainer<qzk::ecad::IsolateItem>& out) const {
    Isolation::GetItems(*this, out);
}

void PCBOvlCompareScene::SetItems(qzk::ecad::ItemContainer<qzk::ecad::IsolateItem> const& items,
                                  bool setViewsDirty) {
    Isolation::SetItems(*this, items, setViewsDirty);
}

void PCBOvlCompareScene::_IsolateViewsDirty() const {
    if (kernelScene) {
        kernelScene->SetViewsDirty();
    }
}

// ---------------------------------------------------------------------------------------------
// Orientation

using Orientation = OrientationOperations<PCBOvlCompareScene>;

bool PCBOvlCompareScene::GetFlip() const {
    return _GetFlip();
}

short PCBOvlCompareScene::GetRotation() const {
    return _GetRotation();
}

void PCBOvlCompareScene::SetFlip(bool flip, du::SmartPtr<qzk::Operation> const& op,
                                 bool applyToView) {
    Orientation::SetFlip(*this, flip, op, applyToView);
}

void PCBOvlCompareScene::ToggleFlip(du::SmartPtr<qzk::Operation> const& op) {
    Orientation::ToggleFlip(*this, op);
}

void PCBOvlCompareScene::SetRotation(short rotation, du::SmartPtr<qzk::Operation> const& op,
                                     bool applyToView) {
    Orientation::SetRotation(*this, rotation, op, applyToView);
}

void PCBOvlCompareScene::AddRotation(short delta, du::SmartPtr<qzk::Operation> const& op) {
    Orientation::AddRotation(*this, delta, op);
}

void PCBOvlCompareScene::_InvertLayersForFlip(du::SmartPtr<qzk::Operation> const& op) {
    if (kernelScene) {
        _DrawOrderInvertLayers(op);
    }
}

} // namespace qzkapp::ecad
