#include "compare/SchematicCompareScene.h"

#include "compare/ColorVisSchematicCompareOperationStep.h"
#include "compare/SchematicCompareSceneObserver.h"
#include "dp/ReadWriteLock.h"
#include "qzk/View.h"
#include "qzk/ecad/BaseView.h"
#include "qzk/ecad/DefaultColorVisibility.h"
#include "qzk/ecad/EcadSchematicData.h"
#include "qzk/ecad/PageList.h"
#include "qzk/ecad/SchematicCompareScene.h"
#include "qzk/ecad/SchematicCompareSceneObserver.h"
#include "qzk/ecad/SchematicCompareView.h"
#include "qzk/ecad/SchematicCompareViewObserver.h"
#include "scene/ColorVisGroupOperationStep.h"
#include "scene/SceneForwarders.h"
#include "scene/StepRecording.h"

#include <set>

namespace qzkapp::ecad {
namespace {

// The kernel scene's observer: the group overlap colour, and the user's change of the three
// compare colours. The exported observer class of the same short name is hidden in this file by
// the private one.
class SchematicCompareSceneObserver
    : public GroupOverlapForwarder<qzk::ecad::SchematicCompareSceneObserver,
                                   SchematicCompareScene> {
public:
    using GroupOverlapForwarder::GroupOverlapForwarder;

    void OnCompareColorChanged() override {
        scene_.Call([](SchematicCompareScene& scene) { scene.SetColorInfo(); });
    }
};
using KernelSceneObserver = SchematicCompareSceneObserver;
using SchematicCompareViewObserver =
    ViewForwarder<qzk::ecad::SchematicCompareViewObserver, qzk::ecad::SchematicCompareView>;

unsigned int const kSchematicCompareClassId = 165;
unsigned int const kHighlightColor = 0x010000FF;
bool const registered =
    qzk::ClassType::RegisterClass(kSchematicCompareClassId, {qzk::classid::Observable});

// A record's colours before the kernel's are written in: each sublayer's own.
unsigned int const kOwnColor = 0xFFFFFFFF;
// The default visibility is asked of the kernel as for layer 1; where the kernel has no rule
// for the handle, the record is shown.
short const kVisibilityLayer = 1;
bool const kShownWithoutRule = true;

} // namespace

qzk::ClassType const SchematicCompareScene::CLASS_TYPE(kSchematicCompareClassId);

SchematicCompareScene::SchematicCompareScene(
    du::SmartPtr<qzk::ecad::SchematicCompareScene> const& scene)
    : CompareScene(du::SmartPtr<qzk::ecad::CompareScene>(scene), kHighlightColor),
      SheetViewStateHolder() {
    (void)registered;
}

// The scene observer's link is cut with the scene's others (BaseScene).
SchematicCompareScene::~SchematicCompareScene() = default;

qzk::ClassType const& SchematicCompareScene::GetClassType() const {
    return CLASS_TYPE;
}

qzk::ecad::SchematicCompareScene* SchematicCompareScene::_GetSchematicCompareKernelScene() const {
    return dynamic_cast<qzk::ecad::SchematicCompareScene*>(kernelScene.Get());
}

unsigned char SchematicCompareScene::GetBaseEventId() {
    return CompareScene::GetNextEventId();
}
unsigned char SchematicCompareScene::PAGE_CHANGED_EVENT() {
    return GetBaseEventId();
}

// ---------------------------------------------------------------------------------------------
// Life

void SchematicCompareScene::Init() {
    dp::WriteLocker lock(GetRWLock());
    sceneObserver =
        AttachSceneForwarder<KernelSceneObserver>(this, _GetSchematicCompareKernelScene());
    CompareScene::Init();
}

void SchematicCompareScene::_OnDestroy() {
    dp::WriteLocker lock(GetRWLock());
    DetachSceneForwarder(sceneObserver, _GetSchematicCompareKernelScene());
    _LeaveKernelScene();
}

void SchematicCompareScene::ViewCreated(du::SmartPtr<qzk::View> const& view) {
    AttachViewForwarder<SchematicCompareViewObserver, qzk::ecad::SchematicCompareView>(view);
    if (auto* ecadView = dynamic_cast<qzk::ecad::BaseView*>(view.Get())) {
        ecadView->FitView();
    }
}

void SchematicCompareScene::OnDesignLoaded(bool second) {
    dp::WriteLocker lock(GetRWLock());
    CompareScene::OnDesignLoaded(second);
    if (!IsDesignLoaded()) {
        return;
    }
    qzk::ecad::CompareScene* compare = _GetCompareKernelScene();
    du::SmartPtr<qzk::ecad::PageList> const pages =
        compare != nullptr ? compare->GetPageList() : nullptr;
    if (!pages) {
        return;
    }
    // Grows only: records of sheets past the count stay, unlike on a schematic scene.
    unsigned int const count = pages->Count();
    if (viewStates.size() < count) {
        viewStates.resize(count);
    }
}

bool SchematicCompareScene::RegisterObserver(
    qzkapp::ecad::SchematicCompareSceneObserver& observer) {
    return _RegisterSceneObserver(this, observer);
}

bool SchematicCompareScene::UnregisterObserver(
    qzkapp::ecad::SchematicCompareSceneObserver& observer) {
    return _UnregisterSceneObserver(observer);
}

void SchematicCompareScene::_InitObserver(qzkapp::ecad::SchematicCompareSceneObserver& observer) {
    // Only a complete pair is told; a failure of either load isn't replayed.
    if (!designData[0] || !designData[1]) {
        return;
    }
    observer.OnDesignLoaded(false, 0, du::Symbol::EMPTY);
    observer.OnDrawOrderChanged();
}

// ---------------------------------------------------------------------------------------------
// The two schematics

void SchematicCompareScene::GetDefaultDrawOrder(std::vector<short>& out) const {
    dp::ReadLocker lock(GetRWLock());
    out.clear();
    auto const* first = dynamic_cast<qzk::ecad::EcadSchematicData const*>(designData[0].Get());
    auto const* second = dynamic_cast<qzk::ecad::EcadSchematicData const*>(designData[1].Get());
    for (uint64 index = 0; GetDefaultOrderSublayer(index) != 0; ++index) {
        short const layer = GetDefaultOrderSublayer(index);
        // The second design is asked only when the first has nothing there.
        if ((first != nullptr && first->HasLayerContent(layer)) ||
            (second != nullptr && second->HasLayerContent(layer))) {
            out.push_back(layer);
        }
    }
}

unsigned int SchematicCompareScene::GetNumSheets() const {
    dp::ReadLocker lock(GetRWLock());
    return kernelScene ? kernelScene->GetNumPages() : 0;
}

std::wstring SchematicCompareScene::GetSublayerLabel(short sublayer, bool second) {
    auto const* schematic =
        dynamic_cast<qzk::ecad::EcadSchematicData const*>(designData[second ? 1 : 0].Get());
    if (schematic == nullptr) {
        return std::wstring();
    }
    auto const name = schematic->layerNames.find(sublayer);
    return name != schematic->layerNames.end() ? name->second : std::wstring();
}

// ---------------------------------------------------------------------------------------------
// Compare records

void SchematicCompareScene::LoadColorVisInfo(du::SmartPtr<qzk::Operation> const& op) {
    BaseScene::LoadColorVisInfo(op);
    auto const* first = dynamic_cast<qzk::ecad::EcadSchematicData const*>(designData[0].Get());
    auto const* second = dynamic_cast<qzk::ecad::EcadSchematicData const*>(designData[1].Get());
    if (first == nullptr || second == nullptr) {
        return;
    }
    dp::WriteLocker lock(GetRWLock());
    AddStep<ColorVisSchematicCompareOperationStep>(op, this, compareColors);
    compareColors.clear();
    // Only the handles count: where the two designs name a handle differently it still makes
    // one record.
    std::set<short> handles;
    for (auto const& [handle, name] : first->layerNames) {
        handles.insert(handle);
    }
    for (auto const& [handle, name] : second->layerNames) {
        handles.insert(handle);
    }
    qzk::ecad::CompareScene* compare = _GetCompareKernelScene();
    if (compare == nullptr) {
        return;
    }
    unsigned int const firstColor = compare->GetFirstItemColor().GetAsHexUI();
    unsigned int const secondColor = compare->GetSecondItemColor().GetAsHexUI();
    unsigned int const commonColor = compare->GetCommonItemColor().GetAsHexUI();
    for (short const handle : handles) {
        auto record = du::MakeCounted<qzk::ecad::CompareColorVis>(
            kOwnColor, kOwnColor, kOwnColor, qzk::ecad::CompareColorVis::eShowAll, true, false);
        record->visible = qzk::ecad::DefaultColorVisibility::GetVisibility(kVisibilityLayer, handle,
                                                                           kShownWithoutRule);
        record->firstColor = firstColor;
        record->secondColor = secondColor;
        record->commonColor = commonColor;
        compareColors.emplace(handle, std::move(record));
    }
    _PushColors(ChangeSourceScene);
}

void SchematicCompareScene::_PushColors(unsigned int source) {
    if (qzk::ecad::SchematicCompareScene* schematic = _GetSchematicCompareKernelScene()) {
        schematic->SetSublayerColorVisInfo(compareColors);
    }
    _PostEvent(SUBLAYERCOLORVIS_CHANGED_EVENT(), source);
}

void SchematicCompareScene::_ReplaceColors(CompareMap const& colors) {
    if (&colors == &compareColors) {
        return;
    }
    compareColors.clear();
    compareColors.insert(colors.begin(), colors.end());
}

void SchematicCompareScene::GetSublayerColorVisInfo(CompareMap& out) const {
    dp::ReadLocker lock(GetRWLock());
    if (&out == &compareColors) {
        return;
    }
    out.clear();
    out.insert(compareColors.begin(), compareColors.end());
}

void SchematicCompareScene::SetSublayerColorVisInfo(CompareMap const& colors,
                                                    du::SmartPtr<qzk::Operation> const& op,
                                                    ChangeSource source) {
    dp::WriteLocker lock(GetRWLock());
    AddStep<ColorVisSchematicCompareOperationStep>(op, this, compareColors);
    _ReplaceColors(colors);
    _PushColors(static_cast<unsigned int>(source));
}

void SchematicCompareScene::SetSublayerColorVisInfo(qzk::ecad::GroupCVInfoSet const& groups,
                                                    CompareMap const& colors,
                                                    du::SmartPtr<qzk::Operation> const& op,
                                                    ChangeSource source) {
    dp::WriteLocker lock(GetRWLock());
    AddStep<ColorVisGroupOperationStep>(op, static_cast<BaseScene*>(this), GetGroupCV());
    AddStep<ColorVisSchematicCompareOperationStep>(op, this, compareColors);
    GetGroupCV().SetInfo(groups);
    ClearGroupAppearance();
    _PostEvent(GROUPCOLORVIS_CHANGED_EVENT(), static_cast<unsigned int>(source));
    _ReplaceColors(colors);
    _PushColors(static_cast<unsigned int>(source));
}

void SchematicCompareScene::ApplySublayerColorVisInfo(CompareMap const& colors,
                                                      du::SmartPtr<qzk::Operation> const& op) {
    if (op) {
        // Built before the setter takes the write lock; the read lock only keeps the copy of the
        // map whole.
        CompareMap present;
        GetSublayerColorVisInfo(present);
        AddStep<ColorVisSchematicCompareOperationStep>(op, this, present);
    }
    SetSublayerColorVisInfo(colors, op, ChangeSourceScene);
}

void SchematicCompareScene::SetColorInfo() {
    dp::WriteLocker lock(GetRWLock());
    qzk::ecad::CompareScene* compare = _GetCompareKernelScene();
    if (compare == nullptr) {
        return;
    }
    unsigned int const first = compare->GetFirstItemColor().GetAsHexUI();
    unsigned int const second = compare->GetSecondItemColor().GetAsHexUI();
    unsigned int const common = compare->GetCommonItemColor().GetAsHexUI();
    // In place: every map that shares these records sees the new colours.
    for (auto const& [handle, record] : compareColors) {
        if (record) {
            record->firstColor = first;
            record->secondColor = second;
            record->commonColor = common;
        }
    }
    _PushColors(ChangeSourceScene);
}

// ---------------------------------------------------------------------------------------------
// Sheets

void SchematicCompareScene::PageNav(short page, du::SmartPtr<qzk::ecad::BaseView> const& view) {
    dp::WriteLocker lock(GetRWLock());
    SheetViewStateHolder::PageNav(page, view);
}

void SchematicCompareScene::UpdateCurrentViewState(du::SmartPtr<qzk::ecad::BaseView> const& view,
                                                   unsigned int page) {
    dp::WriteLocker lock(GetRWLock());
    SheetViewStateHolder::UpdateCurrentViewState(view, page);
}

void SchematicCompareScene::PreviewPageNav(short page,
                                           du::SmartPtr<qzk::ecad::BaseView> const& view) {
    dp::WriteLocker lock(GetRWLock());
    SheetViewStateHolder::PreviewPageNav(page, view);
}

unsigned int SchematicCompareScene::GetCurrentPage() const {
    dp::ReadLocker lock(GetRWLock());
    return currentPage;
}

void SchematicCompareScene::SetLastPreviewOp(short page) {
    dp::WriteLocker lock(GetRWLock());
    lastPreviewOp = page;
}

void SchematicCompareScene::PostPageChangedEvent() {
    _PostEvent(PAGE_CHANGED_EVENT(), currentPage);
}

} // namespace qzkapp::ecad
