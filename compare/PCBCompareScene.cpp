#include "compare/PCBCompareScene.h"

#include "board/BoardSwitches.h"
#include "board/IsolateOperations.h"
#include "board/OrientationOperations.h"
#include "compare/BoardCompareMerge.h"
#include "compare/ColorVisPCBCompareOperationStep.h"
#include "compare/CompareColorScheme.h"
#include "compare/PCBCompareSceneObserver.h"
#include "dp/ReadWriteLock.h"
#include "du/StringConversion.h"
#include "qzk/View.h"
#include "qzk/ecad/DefaultColorVisibility.h"
#include "qzk/ecad/EcadPCBData.h"
#include "qzk/ecad/PCBCompareScene.h"
#include "qzk/ecad/PCBCompareSceneObserver.h"
#include "qzk/ecad/PCBCompareView.h"
#include "qzk/ecad/PCBCompareViewObserver.h"
#include "qzk/ecad/SublayerEcad.h"
#include "scene/ColorVisGroupOperationStep.h"
#include "scene/SceneForwarders.h"
#include "scene/StepRecording.h"

namespace qzkapp::ecad {
namespace {

// The kernel scene's observer: the group overlap colour, and the user's change of the three
// compare colours. The exported observer class of the same short name is hidden in this file
// by the private one.
class PCBCompareSceneObserver
    : public GroupOverlapForwarder<qzk::ecad::PCBCompareSceneObserver, PCBCompareScene> {
public:
    using GroupOverlapForwarder::GroupOverlapForwarder;

    void OnCompareColorChanged() override {
        scene_.Call([](PCBCompareScene& scene) { scene.SetColorInfo(); });
    }
};
using KernelSceneObserver = PCBCompareSceneObserver;
using PCBCompareViewObserver =
    ViewForwarder<qzk::ecad::PCBCompareViewObserver, qzk::ecad::PCBCompareView>;

unsigned int const kBoardCompareClassId = 164;
unsigned int const kHighlightColor = 0x01FFFFFF;
bool const registered =
    qzk::ClassType::RegisterClass(kBoardCompareClassId, {qzk::classid::Observable});

// The fixed schemes' colours: red, blue and green, opaque.
unsigned int const kRed = 0x010000DC;
unsigned int const kBlue = 0x01DC0000;
unsigned int const kGreen = 0x0100DC00;
unsigned int const kOwn = CompareRowLook::kOwnColor;

using ShowMode = qzk::ecad::CompareColorVis::ShowMode;

short const kTopLayerFallback = 4;
short const kBottomLayerFallback = 0;

} // namespace

qzk::ClassType const PCBCompareScene::CLASS_TYPE(kBoardCompareClassId);

PCBCompareScene::PCBCompareScene(du::SmartPtr<qzk::ecad::PCBCompareScene> const& kernelScene)
    : CompareScene(du::SmartPtr<qzk::ecad::CompareScene>(kernelScene), kHighlightColor),
      PCBSceneHelper(), highlightOnlyVisible(false), isolateOnlyVisible(false) {
    (void)registered;
    if (!this->kernelScene) {
        return;
    }
    qzk::ecad::PCBCompareScene* board = _GetPCBCompareKernelScene();
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

// The scene observer's link is cut with the scene's others (BaseScene).
PCBCompareScene::~PCBCompareScene() = default;

qzk::ClassType const& PCBCompareScene::GetClassType() const {
    return CLASS_TYPE;
}

qzk::ecad::PCBCompareScene* PCBCompareScene::_GetPCBCompareKernelScene() const {
    return dynamic_cast<qzk::ecad::PCBCompareScene*>(kernelScene.Get());
}

unsigned char PCBCompareScene::GetBaseEventId() {
    return CompareScene::GetNextEventId();
}
unsigned char PCBCompareScene::ORIENTATION_CHANGED_EVENT() {
    return GetBaseEventId();
}
unsigned char PCBCompareScene::ROTATION_CHANGED_EVENT() {
    return GetBaseEventId() + 1;
}
unsigned char PCBCompareScene::HIGHLIGHTONLYVISIBLE_CHANGED_EVENT() {
    return GetBaseEventId() + 2;
}
unsigned char PCBCompareScene::ISOLATEONLYVISIBLE_CHANGED_EVENT() {
    return GetBaseEventId() + 3;
}

// ---------------------------------------------------------------------------------------------
// Life

void PCBCompareScene::Init() {
    dp::WriteLocker lock(GetRWLock());
    sceneObserver = AttachSceneForwarder<KernelSceneObserver>(this, _GetPCBCompareKernelScene());
    CompareScene::Init();
}

void PCBCompareScene::_OnDestroy() {
    dp::WriteLocker lock(GetRWLock());
    DetachSceneForwarder(sceneObserver, _GetPCBCompareKernelScene());
    _LeaveKernelScene();
}

void PCBCompareScene::ViewCreated(du::SmartPtr<qzk::View> const& view) {
    AttachViewForwarder<PCBCompareViewObserver, qzk::ecad::PCBCompareView>(view);
}

bool PCBCompareScene::RegisterObserver(qzkapp::ecad::PCBCompareSceneObserver& observer) {
    return _RegisterSceneObserver(this, observer);
}

bool PCBCompareScene::UnregisterObserver(qzkapp::ecad::PCBCompareSceneObserver& observer) {
    return _UnregisterSceneObserver(observer);
}

void PCBCompareScene::_InitObserver(qzkapp::ecad::PCBCompareSceneObserver& observer) {
    // Only a complete pair is told; a failure of either load isn't replayed.
    if (!designData[0] || !designData[1]) {
        return;
    }
    observer.OnDesignLoaded(false, 0, du::Symbol::EMPTY);
    observer.OnDrawOrderChanged();
}

// ---------------------------------------------------------------------------------------------
// The two boards

void PCBCompareScene::GetHardcodedDefault(qzk::ecad::CompareColorVisPtrVec& out,
                                          unsigned int firstColor, unsigned int secondColor,
                                          unsigned int commonColor, ShowMode mode,
                                          bool flag) const {
    if (!designData[0] || !designData[1]) {
        return;
    }
    MergeBoardSublayers(designData[0], designData[1],
                        CompareRowLook{firstColor, secondColor, commonColor, mode, flag}, out);
}

void PCBCompareScene::GetDefaultDrawOrder(std::vector<short>& out) const {
    dp::ReadLocker lock(GetRWLock());
    MergedDrawOrder(designData[0], designData[1], out);
}

short PCBCompareScene::GetTopLayer(bool second) const {
    auto board = du::DynamicCast<qzk::ecad::EcadPCBData>(designData[second ? 1 : 0]);
    return board ? board->GetTop() : kTopLayerFallback;
}

short PCBCompareScene::GetBottomLayer(bool second) const {
    auto board = du::DynamicCast<qzk::ecad::EcadPCBData>(designData[second ? 1 : 0]);
    return board ? board->GetBottom() : kBottomLayerFallback;
}

std::wstring PCBCompareScene::GetSublayerLabel(short layer, short sublayer, bool second) {
    auto board = du::DynamicCast<qzk::ecad::EcadPCBData>(designData[second ? 1 : 0]);
    if (!board) {
        return std::wstring();
    }
    return du::Utf8ToWideStr(board->GetSublayerLabel(layer, sublayer).str());
}

// ---------------------------------------------------------------------------------------------
// Rows

void PCBCompareScene::LoadColorVisInfo(du::SmartPtr<qzk::Operation> const& op) {
    BaseScene::LoadColorVisInfo(op);
    dp::WriteLocker lock(GetRWLock());
    AddStep<ColorVisPCBCompareOperationStep>(op, this, compareColors);
    compareColors.clear();
    qzk::ecad::CompareScene* compare = _GetCompareKernelScene();
    if (compare == nullptr) {
        return;
    }
    unsigned int const first = compare->GetFirstItemColor().GetAsHexUI();
    unsigned int const second = compare->GetSecondItemColor().GetAsHexUI();
    unsigned int const common = compare->GetCommonItemColor().GetAsHexUI();
    // Any other number leaves no rows; the kernel hears of the empty list all the same.
    switch (ReadCompareColorScheme()) {
    case 0:
        GetHardcodedDefault(compareColors, first, second, common, ShowMode::eShowAll, false);
        break;
    case 1:
        GetHardcodedDefault(compareColors, first, second, kOwn, ShowMode::eShowAll, true);
        break;
    case 2:
        GetHardcodedDefault(compareColors, kOwn, kOwn, kOwn, ShowMode::eShowAll, true);
        break;
    case 3:
        GetHardcodedDefault(compareColors, first, second, kOwn, ShowMode::eShowColoredDifferences,
                            false);
        break;
    case 4:
        GetHardcodedDefault(compareColors, kOwn, kOwn, kOwn, ShowMode::eShowDimmedCommon, false);
        break;
    default:
        break;
    }
    _PushRows(ChangeSourceScene);
}

void PCBCompareScene::_PushRows(unsigned int source) {
    if (qzk::ecad::PCBCompareScene* board = _GetPCBCompareKernelScene()) {
        board->SetColorVisInfo(compareColors);
    }
    _PostEvent(SUBLAYERCOLORVIS_CHANGED_EVENT(), source);
}

void PCBCompareScene::GetColorVisInfo(qzk::ecad::CompareColorVisPtrVec& out) const {
    dp::ReadLocker lock(GetRWLock());
    compareColors.Clone(out);
}

void PCBCompareScene::SetColorVisInfo(qzk::ecad::CompareColorVisPtrVec const& rows,
                                      du::SmartPtr<qzk::Operation> const& op, ChangeSource source) {
    dp::WriteLocker lock(GetRWLock());
    AddStep<ColorVisPCBCompareOperationStep>(op, this, compareColors);
    rows.Clone(compareColors);
    _PushRows(static_cast<unsigned int>(source));
}

void PCBCompareScene::SetColorVisInfo(qzk::ecad::GroupCVInfoSet const& groups,
                                      qzk::ecad::CompareColorVisPtrVec const& rows,
                                      du::SmartPtr<qzk::Operation> const& op, ChangeSource source) {
    dp::WriteLocker lock(GetRWLock());
    // Both compared before anything changes.
    bool const groupsDiffer = qzk::ecad::GroupCVInfo::AreDifferent(GetGroupCV(), groups);
    bool const rowsDiffer = qzk::ecad::CompareColorVisPtrVec::AreDifferent(compareColors, rows);
    if (!groupsDiffer && !rowsDiffer) {
        return;
    }
    if (groupsDiffer) {
        AddStep<ColorVisGroupOperationStep>(op, static_cast<BaseScene*>(this), GetGroupCV());
    }
    if (rowsDiffer) {
        AddStep<ColorVisPCBCompareOperationStep>(op, this, compareColors);
    }
    if (groupsDiffer) {
        GetGroupCV().SetInfo(groups);
        ClearGroupAppearance();
        _PostEvent(GROUPCOLORVIS_CHANGED_EVENT(), static_cast<unsigned int>(source));
    }
    if (rowsDiffer) {
        rows.Clone(compareColors);
        _PushRows(static_cast<unsigned int>(source));
    }
}

void PCBCompareScene::ApplyColorVisInfo(qzk::ecad::CompareColorVisPtrVec const& rows,
                                        du::SmartPtr<qzk::Operation> const& op) {
    SetColorVisInfo(rows, op, ChangeSourceScene);
}

void PCBCompareScene::SetColorInfo() {
    dp::WriteLocker lock(GetRWLock());
    qzk::ecad::CompareScene* compare = _GetCompareKernelScene();
    if (compare == nullptr) {
        return;
    }
    unsigned int const first = compare->GetFirstItemColor().GetAsHexUI();
    unsigned int const second = compare->GetSecondItemColor().GetAsHexUI();
    unsigned int const common = compare->GetCommonItemColor().GetAsHexUI();
    for (du::SmartPtr<qzk::ecad::CompareColorVis> const& row : compareColors) {
        if (row) {
            row->firstColor = first;
            row->secondColor = second;
            row->commonColor = common;
        }
    }
    _PushRows(ChangeSourceScene);
}

void PCBCompareScene::UseRedBlueDimDefault(du::SmartPtr<qzk::Operation> const& op,
                                           ChangeSource source) {
    qzk::ecad::CompareColorVisPtrVec rows;
    GetHardcodedDefault(rows, kRed, kBlue, kOwn, ShowMode::eShowAll, true);
    SetColorVisInfo(rows, op, source);
}

void PCBCompareScene::UseRedBlueGreenDefault(du::SmartPtr<qzk::Operation> const& op,
                                             ChangeSource source) {
    qzk::ecad::CompareColorVisPtrVec rows;
    GetHardcodedDefault(rows, kRed, kBlue, kGreen, ShowMode::eShowAll, false);
    SetColorVisInfo(rows, op, source);
}

void PCBCompareScene::GetColorVisInfo(qzk::ecad::SublayerPCB_CVSet& /*out*/) const {}
void PCBCompareScene::SetColorVisInfo(qzk::ecad::SublayerPCB_CVSet const& /*set*/,
                                      du::SmartPtr<qzk::Operation> const& /*op*/,
                                      ChangeSource /*source*/) {}
void PCBCompareScene::ApplyColorVisInfo(qzk::ecad::SublayerPCB_CVSet const& /*set*/,
                                        du::SmartPtr<qzk::Operation> const& /*op*/) {}

// ---------------------------------------------------------------------------------------------
// Switches

using Switches = BoardSwitches<PCBCompareScene>;

void PCBCompareScene::ToggleShowLogicalConnection() {
    Switches::ToggleShowLogicalConnection(*this);
}

bool PCBCompareScene::GetHighlightOnlyVisible() const {
    return Switches::GetHighlightOnlyVisible(*this);
}

void PCBCompareScene::SetHighlightOnlyVisible(bool value, ChangeSource source) {
    Switches::SetHighlightOnlyVisible(*this, value, source);
}

bool PCBCompareScene::GetIsolateOnlyVisible() const {
    return Switches::GetIsolateOnlyVisible(*this);
}

void PCBCompareScene::SetIsolateOnlyVisible(bool value, ChangeSource source) {
    Switches::SetIsolateOnlyVisible(*this, value, source);
}

// ---------------------------------------------------------------------------------------------
// Isolation

using Isolation = IsolateOperations<PCBCompareScene>;

void PCBCompareScene::Isolate(std::vector<du::SmartPtr<qzk::SelectionItem>> const& items,
                              du::SmartPtr<qzk::Operation> const& op) {
    Isolation::Isolate(*this, items, op);
}

void PCBCompareScene::AddToIsolated(std::vector<du::SmartPtr<qzk::SelectionItem>> const& items,
                                    du::SmartPtr<qzk::Operation> const& op) {
    Isolation::AddToIsolated(*this, items, op);
}

void PCBCompareScene::Deisolate(std::vector<du::SmartPtr<qzk::SelectionItem>> const& items,
                                du::SmartPtr<qzk::Operation> const& op) {
    Isolation::Deisolate(*this, items, op);
}

void PCBCompareScene::ClearAllIsolated(du::SmartPtr<qzk::Operation> const& op) {
    Isolation::ClearAllIsolated(*this, op);
}

void PCBCompareScene::ApplyIsolatedList() const {
    Isolation::Push(*this);
}

void PCBCompareScene::GetItems(qzk::ecad::ItemContainer<qzk::ecad::IsolateItem>& out) const {
    Isolation::GetItems(*this, out);
}

void PCBCompareScene::SetItems(qzk::ecad::ItemContainer<qzk::ecad::IsolateItem> const& items,
                               bool setViewsDirty) {
    Isolation::SetItems(*this, items, setViewsDirty);
}

void PCBCompareScene::_IsolateViewsDirty() const {
    if (kernelScene) {
        kernelScene->SetViewsDirty();
    }
}

// ---------------------------------------------------------------------------------------------
// Orientation

using Orientation = OrientationOperations<PCBCompareScene>;

bool PCBCompareScene::GetFlip() const {
    return _GetFlip();
}

short PCBCompareScene::GetRotation() const {
    return _GetRotation();
}

void PCBCompareScene::SetFlip(bool flip, du::SmartPtr<qzk::Operation> const& op, bool applyToView) {
    Orientation::SetFlip(*this, flip, op, applyToView);
}

void PCBCompareScene::ToggleFlip(du::SmartPtr<qzk::Operation> const& op) {
    Orientation::ToggleFlip(*this, op);
}

void PCBCompareScene::SetRotation(short rotation, du::SmartPtr<qzk::Operation> const& op,
                                  bool applyToView) {
    Orientation::SetRotation(*this, rotation, op, applyToView);
}

void PCBCompareScene::AddRotation(short delta, du::SmartPtr<qzk::Operation> const& op) {
    Orientation::AddRotation(*this, delta, op);
}

void PCBCompareScene::_InvertLayersForFlip(du::SmartPtr<qzk::Operation> const& op) {
    if (kernelScene) {
        _DrawOrderInvertLayers(op);
    }
}

} // namespace qzkapp::ecad
