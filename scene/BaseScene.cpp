// The scene's life (construction, Init, its end) and the user's preferences; the plain virtual
// bodies, the search record and the colour tree's state.
#include "scene/BaseScene.h"

#include "dg/DMat33.h"
#include "qzk/Annotation.h"
#include "qzk/Kernel.h"
#include "qzk/Operation.h"
#include "qzk/Preferences.h"
#include "qzk/SelectionManager.h"
#include "qzk/SelectionObserver.h"
#include "qzk/World.h"
#include "qzk/WorldObserver.h"
#include "qzk/ecad/BaseScene.h"
#include "qzk/ecad/Overlay.h"
#include "scene/EcadItemKinds.h"

namespace qzkapp::ecad {

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

dg::Color Black() {
    return dg::Color(0.0f, 0.0f, 0.0f, 1.0f);
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

    selectionObserver = du::MakeCounted<SelectionObserver>(this);
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
    worldObserver = du::MakeCounted<WorldObserver>(this);
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

void BaseScene::_LeaveKernelScene() {
    if (kernelScene) {
        kernelScene->SetApiScene(nullptr);
    }
    OnDestroyQzkScene();
    kernelScene = nullptr;
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

// Compare areas shown directly, with no row and no event.

void BaseScene::AddCompareArea(uint64 id, std::string const& name,
                               du::SmartPtr<qz2d::ecad::Design> const& picture,
                               dg::Color const& color, dg::DMat33 const& matrix,
                               unsigned int parameter) {
    if (kernelScene) {
        kernelScene->CreateOverlay(picture, id, true, color, 2, matrix, parameter, name, false);
    }
}

void BaseScene::RemoveCompareArea(uint64 id) {
    selectedOverlays.erase(id);
    if (kernelScene) {
        kernelScene->RemoveOverlay(id);
    }
}

void BaseScene::RenameCompareArea(uint64 id, std::string const& name) {
    if (kernelScene) {
        kernelScene->RenameOverlay(id, name);
    }
}

} // namespace qzkapp::ecad
