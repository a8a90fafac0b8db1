#include "scene/BaseScene.h"

#include "du/AssembleArgs.h"
#include "du/Localizer.h"
#include "du/StringConversion.h"
#include "qzk/Annotation.h"
#include "qzk/Kernel.h"
#include "qzk/ObjectSelectionItem.h"
#include "qzk/Operation.h"
#include "qzk/Preferences.h"
#include "qzk/SelectionManager.h"
#include "qzk/SelectionObserver.h"
#include "qzk/View.h"
#include "qzk/World.h"
#include "qzk/WorldObserver.h"
#include "qzk/ecad/BaseScene.h"
#include "qzk/ecad/GeometrySelectionItem.h"
#include "qzk/ecad/Overlay.h"
#include "qzk/ecad/OverlaySelectionItem.h"
#include "qzk/ecad/PCBScene.h"
#include "qzk/ecad/SelectionItem.h"
#include "qzk/ecad/selection_types.h"
#include "scene/AppearanceUpdate.h"
#include "scene/ColorVisGroupOperationStep.h"
#include "scene/DisplayPriorityApplyStep.h"
#include "scene/DisplayPriorityOperationStep.h"
#include "scene/DisplayPriorityResetStep.h"
#include "scene/FillShapesOperationStep.h"
#include "scene/InvertLayersOperationStep.h"
#include "scene/ItemsApearnceOperationStep.h"
#include "scene/SelectionChannels.h"
#include "scene/StepRecording.h"

#include <algorithm>

namespace qzkapp::ecad {

using ItemList = std::vector<du::SmartPtr<qzk::SelectionItem>>;
using HighlightContainer = qzk::ecad::ItemContainer<qzk::ecad::HighlightItem>;
using HighlightStep = ItemsApearnceOperationStep<HighlightContainer>;

// Forwards the kernel's selection changes to the scene. It holds no reference to the scene
// between calls; the link is cut when the selection manager ends or the scene goes.
class BaseScene::SelectionObserver : public qzk::SelectionObserver {
public:
    explicit SelectionObserver(BaseScene* scene) : scene_(scene) {}

    void OnSelectionChanged(unsigned int channel, bool clear, ItemList const& removed,
                            ItemList const& added) override {
        scene_.Call(
            [&](BaseScene& scene) { scene.OnSelectionChanged(channel, clear, removed, added); });
    }
    void OnSelectionManagerDestroyed() override { scene_.Cut(); }

private:
    SceneLink<BaseScene> scene_;
};

namespace {

// Forwards the user's preference changes to the scene; the world's end cuts the tie.
class WorldObserver : public qzk::WorldObserver {
public:
    explicit WorldObserver(BaseScene* scene) : scene_(scene) {}

    void OnPreferencesChanged() override {
        scene_.Call([](BaseScene& scene) { scene.OnPreferencesChanged(); });
    }
    void OnWorldDestroyed() override { scene_.Cut(); }

private:
    SceneLink<BaseScene> scene_;
};

char const* const kSelectionColorKey = "General/Navigation/highlight_color";
char const* const kPreselectionColorKey = "General/Navigation/preselection_color";
char const* const kSecondaryColorKey = "General/Navigation/secondary_color";
char const* const kPreselectionHighlightingKey =
    "General/Navigation/enable_preselection_highlighting";
unsigned int const kGroupLayer = 2;

dg::Color Black() {
    return dg::Color(0.0f, 0.0f, 0.0f, 1.0f);
}

// The ECAD selection item an entry stands for, or null.
du::SmartPtr<qzk::ecad::SelectionItem> AsEcadItem(du::SmartPtr<qzk::SelectionItem> const& item) {
    return du::DynamicCast<qzk::ecad::SelectionItem>(item);
}

// An ECAD selection item itself or, for a geometry item, its parent; null when neither. The
// flag tells whether the entry was of one of the two kinds at all (a geometry item whose parent
// is no ECAD item still counts, and yields the empty appearance item).
du::SmartPtr<qzk::ecad::SelectionItem>
EcadItemOrParent(du::SmartPtr<qzk::SelectionItem> const& item, bool& matched) {
    matched = true;
    if (auto ecad = AsEcadItem(item)) {
        return ecad;
    }
    if (auto geometry = du::DynamicCast<qzk::ecad::GeometrySelectionItem>(item)) {
        return du::DynamicCast<qzk::ecad::SelectionItem>(geometry->GetParentObject());
    }
    matched = false;
    return nullptr;
}

// The checks every highlight operation makes of an entry: present, of a content type that can be
// highlighted, and an ECAD selection item.
du::SmartPtr<qzk::ecad::SelectionItem> Highlightable(du::SmartPtr<qzk::SelectionItem> const& item) {
    if (!item || !qzk::ecad::selection_types::Belongs(item->GetContentType())) {
        return nullptr;
    }
    return AsEcadItem(item);
}

} // namespace

BaseScene::BaseScene(du::SmartPtr<qzk::ecad::BaseScene> const& scene, unsigned int highlightColor)
    : qzk::Observable(scene.Get()), drawOrder(), kernelScene(scene), highlightColor(highlightColor),
      highlightFonted(false), preselectionHighlighting(true), overlapColor(false),
      secondaryColor(Black()), selectionColor(Black()), preselectionColor(Black()),
      fillShapes(false), pendingGroupCV(false),
      groupCV(scene && scene->IsATypeOf(qzk::ClassType(qzk::classid::EcadSchematicScene))) {
    if (kernelScene) {
        kernelScene->SetApiScene(this);
    }
}

BaseScene::~BaseScene() {
    // Normally cut when the scene ended; a scene that never started its end (a failed start)
    // is cut here, where its links already refuse it (nobody holds it any more).
    links.CutAll();
    if (worldObserver) {
        if (auto world = qzk::World::GetWorld()) {
            world->DeregisterObserver(worldObserver);
        }
        worldObserver->DetachFromMessageLoop();
    }
    if (selectionObserver) {
        selectionObserver->DetachFromMessageLoop();
    }
}

unsigned char BaseScene::GetBaseEventId() {
    return qzk::Observable::GetNextEventId();
}
unsigned char BaseScene::GetNextEventId() {
    return GetBaseEventId() + 4;
}
unsigned char BaseScene::DRAWORDER_CHANGED_EVENT() {
    return GetBaseEventId();
}
unsigned char BaseScene::HIGHLIGHT_CHANGED_EVENT() {
    return GetBaseEventId() + 1;
}
unsigned char BaseScene::GROUPCOLORVIS_CHANGED_EVENT() {
    return GetBaseEventId() + 2;
}
unsigned char BaseScene::ASSOCHIGHLIGHTCOLOR_CHANGED_EVENT() {
    return GetBaseEventId() + 3;
}

// ---------------------------------------------------------------------------------------------
// Life

void BaseScene::Init() {
    du::SmartPtr<qzk::Kernel> kernel = qzk::Kernel::GetKernel();

    selectionObserver = new SelectionObserver(this);
    if (kernel) {
        kernel->ManageObject(du::SmartPtr<dom::ManagedObject>(selectionObserver.Get()));
    }
    du::SmartPtr<qzk::SelectionManager> selectionManager;
    if (kernelScene) {
        kernelScene->GetSelectionManager(selectionManager);
    }
    if (selectionManager) {
        selectionManager->RegisterObserver(*selectionObserver);
    }

    du::SmartPtr<qzk::World> world = qzk::World::GetWorld();
    worldObserver = new WorldObserver(this);
    if (kernel) {
        kernel->ManageObject(du::SmartPtr<dom::ManagedObject>(worldObserver.Get()));
    }
    if (world) {
        world->RegisterObserver(worldObserver, true);
    }

    searchQueryInfo.Init();

    du::SmartPtr<qzk::Preferences> preferences = world ? world->GetPreferences() : nullptr;
    if (preferences) {
        preferences->GetIntUIAsColor(kSelectionColorKey, selectionColor, nullptr);
        preferences->GetIntUIAsColor(kPreselectionColorKey, preselectionColor, nullptr);
        preferences->GetIntUIAsColor(kSecondaryColorKey, secondaryColor, nullptr);
        preferences->GetBool(kPreselectionHighlightingKey, preselectionHighlighting, nullptr);
    }
}

void BaseScene::OnPreferencesChanged() {
    du::SmartPtr<qzk::World> world = qzk::World::GetWorld();
    du::SmartPtr<qzk::Preferences> preferences = world ? world->GetPreferences() : nullptr;
    if (!preferences) {
        return;
    }
    // Unlike Init, a key that has gone reads as black here. The switch is required to exist;
    // should it not, it starts from the present value and so changes nothing.
    dg::Color selection = Black();
    dg::Color preselection = Black();
    dg::Color secondary = Black();
    bool highlighting = preselectionHighlighting;
    preferences->GetIntUIAsColor(kSelectionColorKey, selection, nullptr);
    preferences->GetIntUIAsColor(kPreselectionColorKey, preselection, nullptr);
    preferences->GetIntUIAsColor(kSecondaryColorKey, secondary, nullptr);
    preferences->GetBool(kPreselectionHighlightingKey, highlighting, nullptr);

    bool selectionChanged = false;
    bool preselectionChanged = false;
    bool secondaryChanged = false;
    if (!(selection == selectionColor)) {
        selectionColor = selection;
        selectionChanged = true;
    }
    if (!(preselection == preselectionColor)) {
        preselectionColor = preselection;
        preselectionChanged = true;
    }
    if (highlighting != preselectionHighlighting) {
        preselectionHighlighting = highlighting;
        preselectionChanged = true;
    }
    if (!(secondary == secondaryColor)) {
        secondaryColor = secondary;
        secondaryChanged = true;
        _PostEvent(ASSOCHIGHLIGHTCOLOR_CHANGED_EVENT(), secondaryColor.GetAsHexUI());
    }
    if (selectionChanged || preselectionChanged || secondaryChanged) {
        _OnSelectionColorChanged(preselectionChanged, selectionChanged, secondaryChanged);
    }
}

void BaseScene::OnDestroyQzkScene() {
    // The one place the scene's forwarders lose it: the kernel still holds the scene here, so
    // a call already through a link finishes on a live object.
    links.CutAll();
    if (selectionObserver && kernelScene) {
        du::SmartPtr<qzk::SelectionManager> selectionManager;
        kernelScene->GetSelectionManager(selectionManager);
        if (selectionManager) {
            selectionManager->UnregisterObserver(*selectionObserver);
        }
    }
    Destroy();
}

// ---------------------------------------------------------------------------------------------
// Plain virtual bodies

IcmApiEcad* BaseScene::GetIcmApiEcad() const {
    return nullptr;
}
void BaseScene::GetDefaultDrawOrder(std::vector<short>& /*out*/) const {}
std::wstring BaseScene::GetSublayerLabel(short /*layer*/, short /*sublayer*/) {
    return {};
}
wchar_t const* BaseScene::GetLayerName(short /*layer*/) const {
    return L"";
}
void BaseScene::SetItems(qzk::ecad::ItemContainer<qzk::ecad::IsolateItem> const& /*items*/,
                         bool /*redraw*/) {}
void BaseScene::GetItems(qzk::ecad::ItemContainer<qzk::ecad::IsolateItem>& /*out*/) const {}
void BaseScene::SetRotation(short /*rotation*/, du::SmartPtr<qzk::Operation> const& /*op*/,
                            bool /*redraw*/) {}
void BaseScene::ToggleFlip(du::SmartPtr<qzk::Operation> const& /*op*/) {}
bool BaseScene::GetFlip() const {
    return false;
}
void BaseScene::SetFlip(bool /*flip*/, du::SmartPtr<qzk::Operation> const& /*op*/,
                        bool /*redraw*/) {}
short BaseScene::GetRotation() const {
    return 0;
}
void BaseScene::AddRotation(short /*rotation*/, du::SmartPtr<qzk::Operation> const& /*op*/) {}
void BaseScene::Isolate(ItemList const& /*items*/, du::SmartPtr<qzk::Operation> const& /*op*/) {}
void BaseScene::AddToIsolated(ItemList const& /*items*/,
                              du::SmartPtr<qzk::Operation> const& /*op*/) {}
void BaseScene::Deisolate(ItemList const& /*items*/, du::SmartPtr<qzk::Operation> const& /*op*/) {}
void BaseScene::ClearAllIsolated(du::SmartPtr<qzk::Operation> const& /*op*/) {}
bool BaseScene::GetIsolateOnlyVisible() const {
    return false;
}
void BaseScene::SetIsolateOnlyVisible(bool /*on*/, ChangeSource /*source*/) {}
void BaseScene::ApplyIsolatedList() const {}
bool BaseScene::GetHighlightOnlyVisible() const {
    return false;
}
void BaseScene::SetHighlightOnlyVisible(bool /*on*/, ChangeSource /*source*/) {}
dg::Color const& BaseScene::GetSelectionColor(qzk::ecad::AppearanceItem const& /*item*/) const {
    return selectionColor;
}
dg::Color const& BaseScene::GetPreselectionColor(qzk::ecad::AppearanceItem const& /*item*/) const {
    return preselectionColor;
}
bool BaseScene::IsPreselectionFonted() const {
    return false;
}
bool BaseScene::GetExcludePlanesCondFigures() const {
    return false;
}
uint64 BaseScene::_GetCurOverlay() const {
    return 0;
}
void BaseScene::_SetCrossHairObject() {}

// ---------------------------------------------------------------------------------------------
// Search record and tree state

void BaseScene::GetSearchQueryInfo(SearchQueryInfo& out) const {
    dp::ReadLocker lock(GetRWLock());
    out = searchQueryInfo;
}

void BaseScene::SetSearchQueryInfo(SearchQueryInfo const& info) {
    dp::WriteLocker lock(GetRWLock());
    searchQueryInfo = info;
}

void BaseScene::AddCVExpandedState(std::string const& node, bool expanded) {
    dp::WriteLocker lock(GetRWLock());
    cvExpandedState[node] = expanded;
}

bool BaseScene::GetCVExpandedState(std::string const& node) const {
    dp::ReadLocker lock(GetRWLock());
    auto found = cvExpandedState.find(node);
    return found == cvExpandedState.end() ? true : found->second;
}

// ---------------------------------------------------------------------------------------------
// Selection channels

void BaseScene::OnSelectionChanged(unsigned int channel, bool clear, ItemList const& removed,
                                   ItemList const& added) {
    dp::WriteLocker lock(GetRWLock());
    if (!kernelScene) {
        // Ended while the notice was on its way.
        return;
    }
    switch (channel) {
    case kSelectionChannel:
        _HandleSelectionChanged(clear, removed, added);
        break;
    case kPreselectionChannel:
        _HandlePreSelectionChanged(clear, removed, added);
        break;
    case kAssociatedChannel:
        _HandleAssocHlightChanged(clear, removed, added);
        break;
    default:
        break;
    }
}

void BaseScene::_RewriteSelectionLooks() {
    for (qzk::ecad::AppearanceItem const& entry : selectedItems) {
        kernelScene->SetItemSelectionAppearance(entry, GetSelectionColor(entry), false, false);
    }
}

void BaseScene::_RewriteStoredHighlightLooks() {
    for (qzk::ecad::HighlightItem const& entry : highlights) {
        kernelScene->SetItemHighlightAppearance(entry, dg::Color(entry.color, true), entry.fonted);
    }
}

void BaseScene::_RewriteAssociatedLooks() {
    for (qzk::ecad::AppearanceItem const& entry : associatedItems) {
        kernelScene->SetItemHighlightAppearance(entry, secondaryColor, false);
    }
}

void BaseScene::_HandleSelectionChanged(bool clear, ItemList const& removed,
                                        ItemList const& added) {
    {
        AppearanceUpdate update(*kernelScene);
        if (!update) {
            return;
        }
        if (clear) {
            _ClearSelected();
        }
        if (uint64 overlay = _GetCurOverlay(); overlay != 0) {
            kernelScene->GetSelectedOverlay(overlay);
        }
        for (du::SmartPtr<qzk::SelectionItem> const& item : removed) {
            if (auto ecad = AsEcadItem(item)) {
                qzk::ecad::AppearanceItem appearance(ecad);
                kernelScene->ClearItemAppearance(appearance, false);
                selectedItems.erase(appearance);
            } else if (auto object = du::DynamicCast<qzk::ObjectSelectionItem>(item)) {
                if (auto annotation = du::DynamicCast<qzk::Annotation>(object->GetObject())) {
                    _SetAnnotationSelected(annotation, false);
                }
            } else {
                _DeselectOverlayItem(item);
            }
        }
        for (du::SmartPtr<qzk::SelectionItem> const& item : added) {
            if (auto ecad = AsEcadItem(item)) {
                selectedItems.insert(qzk::ecad::AppearanceItem(ecad));
            } else if (auto object = du::DynamicCast<qzk::ObjectSelectionItem>(item)) {
                if (auto annotation = du::DynamicCast<qzk::Annotation>(object->GetObject())) {
                    _SetAnnotationSelected(annotation, true);
                }
            } else {
                _SelectOverlayItem(item);
            }
        }
        // Every selected entry, old and new: a removal may have wiped a look the layer shares.
        _RewriteSelectionLooks();
    }
    _SetCrossHairObject();
}

void BaseScene::_ClearSelected() {
    if (!selectedItems.empty()) {
        for (qzk::ecad::AppearanceItem const& entry : selectedItems) {
            kernelScene->ClearItemAppearance(entry, false);
        }
        selectedItems.clear();
    }
    if (!selectedAnnotations.empty()) {
        // Always view 0, even for an annotation that was selected in view 1.
        du::SmartPtr<qzk::View> view = kernelScene->GetView(0);
        du::SmartPtr<qzk::Scene> scene(kernelScene);
        for (du::SmartPtr<qzk::Annotation> const& annotation : selectedAnnotations) {
            annotation->SetSelected(false, view);
            annotation->OnDeselectedInScene(scene);
        }
        selectedAnnotations.clear();
    }
    if (!selectedOverlays.empty()) {
        for (auto const& [id, overlay] : selectedOverlays) {
            overlay->ClearSelection();
        }
        selectedOverlays.clear();
    }
}

void BaseScene::_HandlePreSelectionChanged(bool clear, ItemList const& removed,
                                           ItemList const& added) {
    AppearanceUpdate update(*kernelScene);
    if (!update) {
        return;
    }
    if (clear) {
        for (qzk::ecad::AppearanceItem const& entry : preselectedItems) {
            kernelScene->ClearItemAppearance(entry, false);
        }
        preselectedItems.clear();
        kernelScene->SetDefaultSelectionAppearance(
            GetSelectionColor(qzk::ecad::AppearanceItem::s_emptyAppItem), false);
        _RewriteSelectionLooks();
    }
    if (!removed.empty()) {
        for (du::SmartPtr<qzk::SelectionItem> const& item : removed) {
            bool matched = false;
            auto ecad = EcadItemOrParent(item, matched);
            if (matched) {
                qzk::ecad::AppearanceItem appearance(ecad);
                preselectedItems.erase(appearance);
                kernelScene->ClearItemAppearance(appearance, false);
            } else if (auto overlayItem = du::DynamicCast<qzk::ecad::OverlaySelectionItem>(item)) {
                // Drops the overlay's whole selection, a real one too; selectedOverlays keeps it.
                overlayItem->GetOverlay()->ClearSelection();
            }
        }
        // The clears wiped the shared selection layer: selected objects get their look back.
        _RewriteSelectionLooks();
    }
    if (added.empty()) {
        return;
    }
    bool const exclude = GetExcludePlanesCondFigures();
    for (du::SmartPtr<qzk::SelectionItem> const& item : added) {
        bool matched = false;
        auto ecad = EcadItemOrParent(item, matched);
        if (matched) {
            qzk::ecad::AppearanceItem appearance(ecad);
            preselectedItems.insert(appearance);
            if (preselectionHighlighting) {
                kernelScene->SetItemSelectionAppearance(
                    appearance, GetPreselectionColor(appearance), IsPreselectionFonted(), exclude);
            }
        } else if (auto overlayItem = du::DynamicCast<qzk::ecad::OverlaySelectionItem>(item)) {
            if (preselectionHighlighting) {
                overlayItem->GetOverlay()->PreSelect(
                    overlayItem, GetPreselectionColor(qzk::ecad::AppearanceItem::s_emptyAppItem),
                    IsPreselectionFonted());
            }
        }
    }
}

void BaseScene::_HandleAssocHlightChanged(bool clear, ItemList const& removed,
                                          ItemList const& added) {
    AppearanceUpdate update(*kernelScene);
    if (!update) {
        return;
    }
    if (clear) {
        for (qzk::ecad::AppearanceItem const& entry : associatedItems) {
            kernelScene->ClearItemAppearance(entry, true);
        }
        associatedItems.clear();
    } else {
        for (du::SmartPtr<qzk::SelectionItem> const& item : removed) {
            bool matched = false;
            auto ecad = EcadItemOrParent(item, matched);
            if (matched) {
                qzk::ecad::AppearanceItem appearance(ecad);
                kernelScene->ClearItemAppearance(appearance, true);
                associatedItems.erase(appearance);
            }
        }
    }
    if (!highlights.empty()) {
        // The scene's present colour, not each item's stored one: the clears above may have
        // wiped highlighted objects, and they come back as the scene shows highlights now.
        dg::Color const color(highlightColor, true);
        for (qzk::ecad::HighlightItem const& entry : highlights) {
            kernelScene->SetItemHighlightAppearance(entry, color, highlightFonted);
        }
    }
    if (added.empty()) {
        return;
    }
    for (du::SmartPtr<qzk::SelectionItem> const& item : added) {
        bool matched = false;
        auto ecad = EcadItemOrParent(item, matched);
        if (matched) {
            qzk::ecad::AppearanceItem appearance(ecad);
            kernelScene->SetItemHighlightAppearance(appearance, secondaryColor, false);
            associatedItems.insert(appearance);
        }
    }
}

void BaseScene::_SetAnnotationSelected(du::SmartPtr<qzk::Annotation> const& annotation,
                                       bool selected) {
    du::SmartPtr<qzk::View> view;
    if (!annotation->hasViewClass) {
        view = kernelScene->GetView(0);
    } else {
        unsigned int const classId = annotation->GetViewClassId();
        for (unsigned int index : {0u, 1u}) {
            du::SmartPtr<qzk::View> candidate = kernelScene->GetView(index);
            if (candidate && candidate->GetClassType().GetId() == classId) {
                view = candidate;
                break;
            }
        }
    }
    if (!view) {
        return;
    }
    annotation->SetSelected(selected, view);
    du::SmartPtr<qzk::Scene> scene(kernelScene);
    if (selected) {
        annotation->OnSelectedInScene(scene);
        selectedAnnotations.insert(annotation);
    } else {
        annotation->OnDeselectedInScene(scene);
        selectedAnnotations.erase(annotation);
    }
}

void BaseScene::_SelectOverlayItem(du::SmartPtr<qzk::SelectionItem> const& item) {
    auto overlayItem = du::DynamicCast<qzk::ecad::OverlaySelectionItem>(item);
    if (!overlayItem) {
        return;
    }
    du::SmartPtr<qzk::ecad::Overlay> overlay = overlayItem->GetOverlay();
    if (overlay->overlayKind != 2) {
        // Board overlays keep their selection to themselves.
        overlay->Select(overlayItem);
        return;
    }
    overlay->Select(overlayItem, GetSelectionColor(qzk::ecad::AppearanceItem::s_emptyAppItem),
                    false);
    selectedOverlays[overlay->GetId()] = overlay;
}

void BaseScene::_DeselectOverlayItem(du::SmartPtr<qzk::SelectionItem> const& item) {
    auto overlayItem = du::DynamicCast<qzk::ecad::OverlaySelectionItem>(item);
    if (!overlayItem) {
        return;
    }
    du::SmartPtr<qzk::ecad::Overlay> overlay = overlayItem->GetOverlay();
    overlay->ClearSelection();
    selectedOverlays.erase(overlay->GetId());
}

void BaseScene::_OnSelectionColorChanged(bool preselection, bool selection, bool associated) {
    dp::WriteLocker lock(GetRWLock());
    du::SmartPtr<qzk::ecad::BaseScene> scene = kernelScene;
    if (!scene) {
        return;
    }
    // The one caller that goes on when the bracket is refused.
    AppearanceUpdate update(*scene, AppearanceUpdate::Refused::CloseAnyway);
    if (selection) {
        _RewriteSelectionLooks();
    }
    if (preselection && preselectionHighlighting) {
        for (qzk::ecad::AppearanceItem const& entry : preselectedItems) {
            scene->SetItemSelectionAppearance(entry, GetPreselectionColor(entry),
                                              IsPreselectionFonted(), false);
        }
    }
    if (associated && dynamic_cast<qzk::ecad::PCBScene*>(scene.Get()) != nullptr) {
        _RewriteAssociatedLooks();
    }
}

// ---------------------------------------------------------------------------------------------
// Highlights

int BaseScene::_AddToHighlights(ItemList const& items) {
    dg::Color const color(highlightColor, true);
    du::SmartPtr<qzk::Scene> scene(kernelScene);
    int count = 0;
    for (du::SmartPtr<qzk::SelectionItem> const& entry : items) {
        auto ecad = Highlightable(entry);
        if (!ecad) {
            continue;
        }
        qzk::ecad::AppearanceItem appearance(ecad);
        // A present entry keeps its old name, colour and flag; the look still takes the present
        // colour, and the item counts.
        highlights.insert(qzk::ecad::HighlightItem(appearance, du::Symbol(ecad->GetName(scene)),
                                                   highlightColor, highlightFonted));
        kernelScene->SetItemHighlightAppearance(appearance, color, highlightFonted);
        ++count;
    }
    return count;
}

int BaseScene::_ClearHighlights() {
    int count = 0;
    for (qzk::ecad::HighlightItem const& entry : highlights) {
        kernelScene->ClearItemAppearance(entry, true);
        ++count;
    }
    highlights.clear();
    return count;
}

void BaseScene::_RemoveHighlightItem(qzk::ecad::HighlightItem const& item) {
    highlights.erase(item);
    kernelScene->ClearItemAppearance(item, true);
}

void BaseScene::_RecordHighlights(du::SmartPtr<qzk::Operation> const& op) {
    if (!op) {
        return;
    }
    HighlightContainer before;
    GetHighlights(before);
    AddStepAndRecord<HighlightStep>(op, this, before);
}

void BaseScene::Highlight(ItemList const& items, du::SmartPtr<qzk::Operation> const& op) {
    _HighlightItems(items, op, true);
}

void BaseScene::AddToHighlights(ItemList const& items, du::SmartPtr<qzk::Operation> const& op) {
    _HighlightItems(items, op, false);
}

void BaseScene::_HighlightItems(ItemList const& items, du::SmartPtr<qzk::Operation> const& op,
                                bool replace) {
    // An empty list changes nothing: ClearHighlights is the way to empty the set.
    if (items.empty()) {
        return;
    }
    dp::WriteLocker lock(GetRWLock());
    int cleared = 0;
    int added = 0;
    {
        AppearanceUpdate update(*kernelScene);
        if (!update) {
            return;
        }
        _RecordHighlights(op);
        cleared = replace ? _ClearHighlights() : 0;
        added = _AddToHighlights(items);
        // Unlike the other highlight operations, the associated looks are not written again.
    }
    if (cleared != 0 || added != 0) {
        _PostHighlightCount(static_cast<unsigned int>(highlights.size()), true);
    }
}

void BaseScene::_PostHighlightCount(unsigned int count, bool redraw) {
    _PostEvent(HIGHLIGHT_CHANGED_EVENT(), count);
    if (redraw) {
        kernelScene->SetViewsDirty();
    }
}

void BaseScene::ClearHighlights(du::SmartPtr<qzk::Operation> const& op) {
    dp::WriteLocker lock(GetRWLock());
    int cleared = 0;
    {
        AppearanceUpdate update(*kernelScene);
        if (!update) {
            return;
        }
        _RecordHighlights(op);
        cleared = _ClearHighlights();
        _RewriteAssociatedLooks();
    }
    if (cleared != 0) {
        _PostHighlightCount(0, true);
    }
}

void BaseScene::Dehighlight(ItemList const& items, du::SmartPtr<qzk::Operation> const& op) {
    if (items.empty()) {
        return;
    }
    dp::WriteLocker lock(GetRWLock());
    {
        AppearanceUpdate update(*kernelScene);
        if (!update) {
            return;
        }
        _RecordHighlights(op);
        for (du::SmartPtr<qzk::SelectionItem> const& entry : items) {
            auto ecad = Highlightable(entry);
            if (!ecad) {
                continue;
            }
            qzk::ecad::HighlightItem const key(qzk::ecad::AppearanceItem(ecad), du::Symbol::EMPTY,
                                               0xFFFFFFFFu, false);
            _RemoveHighlightItem(key);
        }
        // What stays keeps its own stored look.
        _RewriteStoredHighlightLooks();
        _RewriteAssociatedLooks();
    }
    _PostHighlightCount(static_cast<unsigned int>(highlights.size()), true);
}

bool BaseScene::IsHighlighted(du::SmartPtr<qzk::ecad::SelectionItem> const& item) {
    return highlights.contains(qzk::ecad::AppearanceItem(item));
}

void BaseScene::GetHighlights(HighlightContainer& out) const {
    dp::ReadLocker lock(GetRWLock());
    out = highlights;
}

void BaseScene::GetItems(HighlightContainer& out) const {
    GetHighlights(out);
}

void BaseScene::SetItems(HighlightContainer const& items, bool redraw) {
    dp::WriteLocker lock(GetRWLock());
    int count = 0;
    {
        AppearanceUpdate update(*kernelScene);
        if (!update) {
            return;
        }
        count = _ClearHighlights();
        highlights = items;
        count += static_cast<int>(highlights.size());
        _RewriteStoredHighlightLooks();
        _RewriteAssociatedLooks();
    }
    if (count != 0) {
        _PostHighlightCount(static_cast<unsigned int>(highlights.size()), redraw);
    }
}

// ---------------------------------------------------------------------------------------------
// Display priority

void BaseScene::GetDrawOrder(std::vector<short>& out) const {
    dp::ReadLocker lock(GetRWLock());
    out = drawOrder;
}

bool BaseScene::GetInvertLayers() const {
    dp::ReadLocker lock(GetRWLock());
    return kernelScene->invertLayers;
}

void BaseScene::DrawOrderMoveLayer(short layer, uint64 index, bool undo) {
    // Read before the lock, as a caller outside the contract may pass the size itself.
    if (index > drawOrder.size()) {
        return;
    }
    dp::WriteLocker lock(GetRWLock());
    auto found = std::find(drawOrder.begin(), drawOrder.end(), layer);
    if (found == drawOrder.end()) {
        return;
    }
    auto const oldIndex = static_cast<uint64>(found - drawOrder.begin());
    if (undo) {
        std::string const layerName = du::WideStrToUtf8(GetLayerName(layer));
        du::Localizer const localizer("qzecad:qzecadStrings");
        std::string const name =
            localizer.LocalizeMessage("DisplayPriorityUndo", du::AssembleArgs("%s", layerName),
                                      static_cast<du::Localizer::ActionOnFailure>(0));
        du::SmartPtr<qzk::Operation> op(
            new qzk::Operation(name, du::SmartPtr<qzk::Scene>(kernelScene), false));
        AddStepAndRecord<DisplayPriorityOperationStep>(op, this, layer, oldIndex, index);
    }
    drawOrder.erase(found);
    // index counts in the list without the layer; past its end means at the end.
    auto const at = std::min<uint64>(index, drawOrder.size());
    drawOrder.insert(drawOrder.begin() + static_cast<std::ptrdiff_t>(at), layer);
    kernelScene->SetDrawOrder(drawOrder, false, false);
    _PostEvent(DRAWORDER_CHANGED_EVENT());
}

void BaseScene::PreviewDrawOrderTopLayer(short layer) {
    if (layer > 0) {
        std::vector<short> order;
        GetDrawOrder(order);
        if (order.size() < 2) {
            return;
        }
        // The first entry is not looked at: a layer in first place is already on top.
        auto found = std::find(order.begin() + 1, order.end(), layer);
        if (found == order.end()) {
            return;
        }
        std::rotate(order.begin(), found, found + 1);
        kernelScene->SetDrawOrder(order, false, false);
    } else if (layer == 0) {
        dp::ReadLocker lock(GetRWLock());
        kernelScene->SetDrawOrder(drawOrder, false, false);
    } else {
        std::vector<short> order;
        GetDefaultDrawOrder(order);
        kernelScene->SetDrawOrder(order, false, false);
    }
}

void BaseScene::ResetDrawOrder(bool undo) {
    dp::WriteLocker lock(GetRWLock());
    if (undo) {
        du::Localizer const localizer("qzecad:qzecadStrings");
        std::string const name = localizer.LocalizeMessage(
            "DisplayPriorityResetUndo", static_cast<du::Localizer::ActionOnFailure>(0));
        du::SmartPtr<qzk::Operation> op(
            new qzk::Operation(name, du::SmartPtr<qzk::Scene>(kernelScene), false));
        AddStepAndRecord<DisplayPriorityResetStep>(op, this, drawOrder);
    }
    GetDefaultDrawOrder(drawOrder);
    kernelScene->SetDrawOrder(drawOrder, true, false);
    _PostEvent(DRAWORDER_CHANGED_EVENT());
}

namespace {
// Waits until no one else is inside the scene, and holds nothing afterwards.
void LockBarrier(dp::ReadWriteLock* lock) {
    dp::WriteLocker barrier(lock);
}
} // namespace

void BaseScene::ApplyDrawOrder(std::vector<short> const& order, bool invert,
                               du::SmartPtr<qzk::Operation> const& op) {
    LockBarrier(GetRWLock());
    AddStep<DisplayPriorityApplyStep>(op, this);
    std::vector<short> applied;
    for (short handle : order) {
        auto found = std::find(drawOrder.begin(), drawOrder.end(), handle);
        if (found != drawOrder.end()) {
            applied.push_back(handle);
            drawOrder.erase(found);
        }
    }
    applied.insert(applied.end(), drawOrder.begin(), drawOrder.end());
    SetDrawOrder(applied, true, invert);
}

void BaseScene::SetDrawOrder(std::vector<short> const& order, bool flag, bool invert) {
    LockBarrier(GetRWLock());
    drawOrder = order;
    kernelScene->SetDrawOrder(drawOrder, flag, invert);
    _PostEvent(DRAWORDER_CHANGED_EVENT());
}

void BaseScene::DrawOrderInvertLayers(du::SmartPtr<qzk::Operation> const& op) {
    LockBarrier(GetRWLock());
    _DrawOrderInvertLayers(op);
}

void BaseScene::_DrawOrderInvertLayers(du::SmartPtr<qzk::Operation> const& op) {
    AddStep<InvertLayersOperationStep>(op, this);
    std::reverse(drawOrder.begin(), drawOrder.end());
    kernelScene->SetDrawOrder(drawOrder, true, !kernelScene->invertLayers);
    _PostEvent(DRAWORDER_CHANGED_EVENT());
}

// ---------------------------------------------------------------------------------------------
// Group colour and visibility

void BaseScene::GetGroupColorVisInfo(qzk::ecad::GroupCVInfoSet& out) const {
    dp::ReadLocker lock(GetRWLock());
    out.SetInfo(groupCV);
}

void BaseScene::ClearGroupAppearance() {
    dp::WriteLocker lock(GetRWLock());
    if (!kernelScene) {
        return;
    }
    if (AppearanceUpdate update(*kernelScene); update) {
        kernelScene->ClearGroupAppearances(kGroupLayer);
    }
}

void BaseScene::SetGroupColorVisInfo(qzk::ecad::GroupCVInfoSet const& info,
                                     du::SmartPtr<qzk::Operation> const& op, ChangeSource source) {
    dp::WriteLocker lock(GetRWLock());
    AddStep<ColorVisGroupOperationStep>(op, this, groupCV);
    groupCV.SetInfo(info);
    ClearGroupAppearance();
    _PostEvent(GROUPCOLORVIS_CHANGED_EVENT(), static_cast<unsigned int>(source));
}

void BaseScene::ApplyGroupColorVisInfo(qzk::ecad::GroupCVInfoSet const& info,
                                       du::SmartPtr<qzk::Operation> const& op) {
    AddStep<ColorVisGroupOperationStep>(op, this, groupCV);
    UpdateGroupCV(info, ChangeSourceScene);
}

void BaseScene::UpdateGroupCV(qzk::ecad::GroupCVInfoSet const& info, ChangeSource source) {
    dp::WriteLocker lock(GetRWLock());
    if (groupCV.empty()) {
        // The groups are not known yet: keep the colours for when they come.
        pendingGroupCV = info;
        return;
    }
    if (groupCV.Update(info)) {
        ClearGroupAppearance();
        _PostEvent(GROUPCOLORVIS_CHANGED_EVENT(), static_cast<unsigned int>(source));
    }
}

void BaseScene::UpdateGroups(std::vector<GroupInfo> const& groups) {
    dp::WriteLocker lock(GetRWLock());
    qzk::ecad::GroupCVInfoSet fresh(
        kernelScene->IsATypeOf(qzk::ClassType(qzk::classid::EcadSchematicScene)));
    for (GroupInfo const& group : groups) {
        qzk::ecad::GroupCVInfo info(group.name.safe_c_str(), group.color.GetAsHexUI(), false);
        info.groupFlag = group.flag;
        fresh.insert(info);
    }
    if (groupCV.Update(fresh, pendingGroupCV) && IsDesignLoaded()) {
        pendingGroupCV.clear();
        ClearGroupAppearance();
        _PostEvent(GROUPCOLORVIS_CHANGED_EVENT(), ChangeSourceScene);
    }
}

void BaseScene::OnGroupContentAdded(du::Symbol const& group, ItemList const& items) {
    qzk::ecad::GroupCVInfo const key(group.safe_c_str());
    // An unknown group is turned away before any lock, so that content of groups the scene does
    // not colour costs no lock; the colour itself is read again under the lock.
    if (groupCV.find(key) == groupCV.end()) {
        return;
    }
    dp::WriteLocker lock(GetRWLock());
    AppearanceUpdate update(*kernelScene);
    if (!update) {
        return;
    }
    auto const found = groupCV.find(key);
    if (found == groupCV.end()) {
        // Gone between the look and the lock.
        return;
    }
    dg::Color const groupColor = found->GetColor();
    for (du::SmartPtr<qzk::SelectionItem> const& item : items) {
        auto ecad = AsEcadItem(item);
        if (!ecad) {
            continue;
        }
        qzk::ecad::AppearanceItem appearance(ecad);
        if (kernelScene->GetItemAppearanceCount(appearance, kGroupLayer)) {
            // Already coloured by another group.
            dg::Color overlap;
            kernelScene->GetGroupOverlapColor(overlap);
            kernelScene->SetItemGroupAppearance(appearance, overlap);
        } else {
            kernelScene->SetItemGroupAppearance(appearance, groupColor);
        }
    }
}

void BaseScene::OnGroupContentDeleted(ItemList const& /*items*/) {
    // Which members left is not looked at: the layer is cleared and redrawn as content comes.
    OnGroupOverlapColorChanged();
}

void BaseScene::OnGroupOverlapColorChanged() {
    dp::WriteLocker lock(GetRWLock());
    if (!kernelScene) {
        return;
    }
    ClearGroupAppearance();
    _PostEvent(GROUPCOLORVIS_CHANGED_EVENT(), ChangeSourceOverlapColor);
}

void BaseScene::LoadColorVisInfo(du::SmartPtr<qzk::Operation> const& op) {
    if (groupCV.empty()) {
        return;
    }
    dp::WriteLocker lock(GetRWLock());
    AddStep<ColorVisGroupOperationStep>(op, this, groupCV);
    groupCV.ResetToDefault();
    ClearGroupAppearance();
    _PostEvent(GROUPCOLORVIS_CHANGED_EVENT(), ChangeSourceScene);
}

void BaseScene::SetOverlapColor(bool on, du::SmartPtr<qzk::Operation> const& op) {
    if (on != overlapColor) {
        ToggleOverlapColor(op);
    }
}

void BaseScene::ToggleOverlapColor(du::SmartPtr<qzk::Operation> const& /*op*/) {
    // This switch takes an operation but has no step: it cannot be undone.
    dp::WriteLocker lock(GetRWLock());
    overlapColor = !overlapColor;
    kernelScene->SetOverlapColor(overlapColor);
}

void BaseScene::SetFillShapes(bool on, du::SmartPtr<qzk::Operation> const& op) {
    if (on != fillShapes) {
        ToggleFillShapes(op);
    }
}

void BaseScene::ToggleFillShapes(du::SmartPtr<qzk::Operation> const& op) {
    dp::WriteLocker lock(GetRWLock());
    AddStep<FillShapesOperationStep>(op, this);
    fillShapes = !fillShapes;
    kernelScene->SetFillShapes(fillShapes);
}

} // namespace qzkapp::ecad
