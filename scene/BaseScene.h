// The root of the API scenes: wraps one kernel scene and keeps the working state every scene
// shares (selection looks, highlights, display priority, group colours, the search record).
//
// The kernel scene owns its API scene by a counted reference (set in the constructor through
// SetApiScene) and shares its reader-writer lock with it. Every mutator takes that lock, records
// its undo step before it changes anything, calls the kernel and posts its event. The lock is
// re-entrant for its holder: operations call each other under it, and step constructors read
// state under it.
#pragma once

#include "component/ComponentExport.h"
#include "dg/Color.h"
#include "dom/ObserverProxy.h"
#include "dp/ReadWriteLock.h"
#include "du/CommonAllocatorImpl.h"
#include "du/SmartPtr.h"
#include "du/Symbol.h"
#include "du/Types.h"
#include "qzk/Observable.h"
#include "qzk/Operation.h"
#include "qzk/ecad/AppearanceItem.h"
#include "qzk/ecad/GroupCVInfoSet.h"
#include "qzk/ecad/HighlightItem.h"
#include "qzk/ecad/IsolateItem.h"
#include "qzk/ecad/ItemContainer.h"
#include "scene/ChangeSource.h"
#include "scene/GroupInfo.h"
#include "scene/SceneEvent.h"
#include "scene/SceneLink.h"
#include "scene/SearchQueryInfo.h"

#include <map>
#include <set>
#include <string>
#include <vector>

class IcmApiEcad;

namespace dg {
class DMat33;
}
namespace qz2d::ecad {
class Design;
}

namespace qzk {
class Annotation;
class Operation;
class WorldObserver;
class SelectionItem;
class View;
namespace ecad {
class BaseScene;
class Overlay;
class SelectionItem;
} // namespace ecad
} // namespace qzk

namespace qzkapp::ecad {

class BaseSceneObserver;
class SceneObserver;
class CompareSceneObserver;

class QZECAD_EXPORT BaseScene : public qzk::Observable {
public:
    class SelectionObserver;

    BaseScene(BaseScene const&) = delete;
    BaseScene& operator=(BaseScene const&) = delete;

    // The virtual table keeps the platform's order: qzk::Object's operations come first (the
    // kernel's), then the scene's own.
    ~BaseScene() override;

    virtual void Init();
    virtual bool IsDesignLoaded() const = 0;
    virtual IcmApiEcad* GetIcmApiEcad() const;
    virtual void SetSearchQueryInfo(SearchQueryInfo const& info);
    virtual void DrawOrderInvertLayers(du::SmartPtr<qzk::Operation> const& op);
    virtual void GetDefaultDrawOrder(std::vector<short>& out) const;
    virtual std::wstring GetSublayerLabel(short layer, short sublayer);
    virtual void LoadColorVisInfo(du::SmartPtr<qzk::Operation> const& op);
    virtual void ViewCreated(du::SmartPtr<qzk::View> const& view) = 0;
    // Never null.
    virtual wchar_t const* GetLayerName(short layer) const;
    virtual void SetItems(qzk::ecad::ItemContainer<qzk::ecad::IsolateItem> const& items,
                          bool redraw);
    virtual void GetItems(qzk::ecad::ItemContainer<qzk::ecad::IsolateItem>& out) const;
    virtual void SetRotation(short rotation, du::SmartPtr<qzk::Operation> const& op, bool redraw);
    virtual void ToggleFlip(du::SmartPtr<qzk::Operation> const& op);
    virtual bool GetFlip() const;
    virtual void SetFlip(bool flip, du::SmartPtr<qzk::Operation> const& op, bool redraw);
    virtual short GetRotation() const;
    virtual void AddRotation(short rotation, du::SmartPtr<qzk::Operation> const& op);
    virtual void Isolate(std::vector<du::SmartPtr<qzk::SelectionItem>> const& items,
                         du::SmartPtr<qzk::Operation> const& op);
    virtual void AddToIsolated(std::vector<du::SmartPtr<qzk::SelectionItem>> const& items,
                               du::SmartPtr<qzk::Operation> const& op);
    virtual void Deisolate(std::vector<du::SmartPtr<qzk::SelectionItem>> const& items,
                           du::SmartPtr<qzk::Operation> const& op);
    virtual void ClearAllIsolated(du::SmartPtr<qzk::Operation> const& op);
    virtual bool GetIsolateOnlyVisible() const;
    virtual void SetIsolateOnlyVisible(bool on, ChangeSource source);
    virtual void ApplyIsolatedList() const;
    virtual bool GetHighlightOnlyVisible() const;
    virtual void SetHighlightOnlyVisible(bool on, ChangeSource source);
    virtual void OnPreferencesChanged();

protected:
    virtual void SetDrawOrder(std::vector<short> const& order, bool flag, bool invert);

public:
    virtual void OnSelectionChanged(unsigned int channel, bool clear,
                                    std::vector<du::SmartPtr<qzk::SelectionItem>> const& removed,
                                    std::vector<du::SmartPtr<qzk::SelectionItem>> const& added);

protected:
    virtual void OnDestroyQzkScene();

public:
    virtual dg::Color const& GetSelectionColor(qzk::ecad::AppearanceItem const& item) const;
    virtual dg::Color const& GetPreselectionColor(qzk::ecad::AppearanceItem const& item) const;
    virtual bool IsPreselectionFonted() const;

protected:
    virtual bool GetExcludePlanesCondFigures() const;
    virtual uint64 _GetCurOverlay() const;
    virtual void _ClearSelected();
    virtual void _SetCrossHairObject();

public:
    // The wrapped kernel scene; null once the scene has ended.
    du::SmartPtr<qzk::ecad::BaseScene> const& GetKernelScene() const { return kernelScene; }

    // Search record: not undoable, posts nothing.
    void GetSearchQueryInfo(SearchQueryInfo& out) const;

    // Plain fields: no lock, no event, no look changes.
    bool GetHighlightFonted() const { return highlightFonted; }
    void SetHighlightFonted(bool fonted) { highlightFonted = fonted; }
    void SetHighlightColor(unsigned int word) { highlightColor = word; }

    // Colour and visibility tree of the host: unknown nodes read as expanded.
    void AddCVExpandedState(std::string const& node, bool expanded);
    bool GetCVExpandedState(std::string const& node) const;

    // Highlights.
    void Highlight(std::vector<du::SmartPtr<qzk::SelectionItem>> const& items,
                   du::SmartPtr<qzk::Operation> const& op);
    void AddToHighlights(std::vector<du::SmartPtr<qzk::SelectionItem>> const& items,
                         du::SmartPtr<qzk::Operation> const& op);
    void Dehighlight(std::vector<du::SmartPtr<qzk::SelectionItem>> const& items,
                     du::SmartPtr<qzk::Operation> const& op);
    void ClearHighlights(du::SmartPtr<qzk::Operation> const& op);
    // item must not be null. Takes no lock.
    bool IsHighlighted(du::SmartPtr<qzk::ecad::SelectionItem> const& item);
    void GetHighlights(qzk::ecad::ItemContainer<qzk::ecad::HighlightItem>& out) const;
    void GetItems(qzk::ecad::ItemContainer<qzk::ecad::HighlightItem>& out) const;
    void SetItems(qzk::ecad::ItemContainer<qzk::ecad::HighlightItem> const& items, bool redraw);

    // Display priority.
    void GetDrawOrder(std::vector<short>& out) const;
    bool GetInvertLayers() const;
    void DrawOrderMoveLayer(short layer, uint64 index, bool undo);
    void PreviewDrawOrderTopLayer(short layer);
    void ResetDrawOrder(bool undo);
    void ApplyDrawOrder(std::vector<short> const& order, bool invert,
                        du::SmartPtr<qzk::Operation> const& op);

    // Group colour and visibility.
    void GetGroupColorVisInfo(qzk::ecad::GroupCVInfoSet& out) const;
    void SetGroupColorVisInfo(qzk::ecad::GroupCVInfoSet const& info,
                              du::SmartPtr<qzk::Operation> const& op, ChangeSource source);
    void ApplyGroupColorVisInfo(qzk::ecad::GroupCVInfoSet const& info,
                                du::SmartPtr<qzk::Operation> const& op);
    void UpdateGroupCV(qzk::ecad::GroupCVInfoSet const& info, ChangeSource source);
    void UpdateGroups(std::vector<GroupInfo> const& groups);
    void ClearGroupAppearance();
    void OnGroupContentAdded(du::Symbol const& group,
                             std::vector<du::SmartPtr<qzk::SelectionItem>> const& items);
    void OnGroupContentDeleted(std::vector<du::SmartPtr<qzk::SelectionItem>> const& items);
    void OnGroupOverlapColorChanged();
    bool GetOverlapColor() const { return overlapColor; }
    void SetOverlapColor(bool on, du::SmartPtr<qzk::Operation> const& op);
    void ToggleOverlapColor(du::SmartPtr<qzk::Operation> const& op);
    bool GetFillShapes() const { return fillShapes; }
    void SetFillShapes(bool on, du::SmartPtr<qzk::Operation> const& op);
    void ToggleFillShapes(du::SmartPtr<qzk::Operation> const& op);

    // Compare areas shown directly: an overlay of the kernel scene, with no colour row, no event
    // and no lock.
    void AddCompareArea(uint64 id, std::string const& name,
                        du::SmartPtr<qz2d::ecad::Design> const& picture, dg::Color const& color,
                        dg::DMat33 const& matrix, unsigned int parameter);
    void RemoveCompareArea(uint64 id);
    void RenameCompareArea(uint64 id, std::string const& name);

protected:
    // Binds the two objects: the kernel scene learns its API scene and shares its lock.
    BaseScene(du::SmartPtr<qzk::ecad::BaseScene> const& scene, unsigned int highlightColor);

    static unsigned char GetNextEventId();
    static unsigned char DRAWORDER_CHANGED_EVENT();
    static unsigned char HIGHLIGHT_CHANGED_EVENT();
    static unsigned char GROUPCOLORVIS_CHANGED_EVENT();
    static unsigned char ASSOCHIGHLIGHTCOLOR_CHANGED_EVENT();

    void _DrawOrderInvertLayers(du::SmartPtr<qzk::Operation> const& op);
    qzk::ecad::GroupCVInfoSet& GetGroupCV() { return groupCV; }
    qzk::ecad::GroupCVInfoSet const& GetGroupCV() const { return groupCV; }

    void _HandleSelectionChanged(bool clear,
                                 std::vector<du::SmartPtr<qzk::SelectionItem>> const& removed,
                                 std::vector<du::SmartPtr<qzk::SelectionItem>> const& added);
    void _HandlePreSelectionChanged(bool clear,
                                    std::vector<du::SmartPtr<qzk::SelectionItem>> const& removed,
                                    std::vector<du::SmartPtr<qzk::SelectionItem>> const& added);
    void _HandleAssocHlightChanged(bool clear,
                                   std::vector<du::SmartPtr<qzk::SelectionItem>> const& removed,
                                   std::vector<du::SmartPtr<qzk::SelectionItem>> const& added);
    void _OnSelectionColorChanged(bool preselection, bool selection, bool associated);
    // The host's change of the kernel's selection, under the write lock: the selection manager
    // replaces its selection, and the scene is told of it even when the kernel scene has none.
    void _SetSelectedItems(std::vector<du::SmartPtr<qzk::SelectionItem>> const& items);
    void _SetAnnotationSelected(du::SmartPtr<qzk::Annotation> const& annotation, bool selected);
    void _SelectOverlayItem(du::SmartPtr<qzk::SelectionItem> const& item);
    void _DeselectOverlayItem(du::SmartPtr<qzk::SelectionItem> const& item);

    // The register pattern the concrete scenes share: a proxy for the observer, then, under the
    // write lock, _RegisterObserver with an init helper unless a load is in progress (the new
    // observer then hears the load's end like everyone else). SceneT::_IsLoadInProgress is read
    // under the lock.
    template <class SceneT, class ObserverT>
    static bool _RegisterSceneObserver(SceneT* scene, ObserverT& observer);
    bool _UnregisterSceneObserver(qzk::Observer& observer) {
        return DoUnregisterObserver(observer);
    }

    // The end every concrete scene's _OnDestroy closes with: the kernel scene forgets its API
    // scene (it holds a reference of its own while it ends us), the scene's links are cut and
    // its kernel observers go (OnDestroyQzkScene, the most derived), and the kernel scene is let
    // go.
    void _LeaveKernelScene();

    // Posts the event id with the values as its payload, in order (SceneEvent).
    template <class... Values> void _PostEvent(unsigned char id, Values const&... values) {
        PostObservableEvent(SceneEvent<Values...>(id, values...), false);
    }

    qzk::ecad::ItemContainer<qzk::ecad::HighlightItem> highlights;
    SearchQueryInfo searchQueryInfo;
    std::vector<short> drawOrder;
    du::SmartPtr<qzk::ecad::BaseScene> kernelScene;
    unsigned int highlightColor;
    bool highlightFonted;
    bool preselectionHighlighting;
    bool overlapColor;
    dg::Color secondaryColor;
    dg::Color selectionColor;
    dg::Color preselectionColor;
    std::set<qzk::ecad::AppearanceItem> associatedItems;
    std::map<std::string, bool> cvExpandedState;
    std::set<qzk::ecad::AppearanceItem> preselectedItems;
    std::set<qzk::ecad::AppearanceItem> selectedItems;
    std::set<du::SmartPtr<qzk::Annotation>> selectedAnnotations;
    bool fillShapes;
    std::map<uint64, du::SmartPtr<qzk::ecad::Overlay>> selectedOverlays;
    qzk::ecad::GroupCVInfoSet pendingGroupCV;
    du::SmartPtr<SelectionObserver> selectionObserver;
    du::SmartPtr<qzk::WorldObserver> worldObserver;
    qzk::ecad::GroupCVInfoSet groupCV;

private:
    SceneLinks links;

private:
    template <class> friend class SceneLink;
    friend class BaseSceneObserver;
    friend class SceneObserver;
    friend class CompareSceneObserver;
    friend class Scene;
    friend class DisplayPriorityResetStep;
    friend class DisplayPriorityApplyStep;

    static unsigned char GetBaseEventId();

    // The forwarders' ties to this scene; cut when the scene ends.
    SceneLinks& _GetLinks() { return links; }

    int _AddToHighlights(std::vector<du::SmartPtr<qzk::SelectionItem>> const& items);
    int _ClearHighlights();
    void _RemoveHighlightItem(qzk::ecad::HighlightItem const& item);
    void _RecordHighlights(du::SmartPtr<qzk::Operation> const& op);
    // Highlight (replace) and AddToHighlights share everything but the clear.
    void _HighlightItems(std::vector<du::SmartPtr<qzk::SelectionItem>> const& items,
                         du::SmartPtr<qzk::Operation> const& op, bool replace);
    void _PostHighlightCount(unsigned int count, bool redraw);
    void _RewriteSelectionLooks();
    // Clears the look of every entry (on the highlight layer or the selection layer) and empties
    // the set.
    void _ClearLooks(std::set<qzk::ecad::AppearanceItem>& items, bool highlightLayer);
    // Each highlight in its own stored colour and font.
    void _RewriteStoredHighlightLooks();
    void _RewriteAssociatedLooks();
};

template <class SceneT, class ObserverT>
bool BaseScene::_RegisterSceneObserver(SceneT* scene, ObserverT& observer) {
    void* memory = du::CommonAllocatorImpl::Allocate(sizeof(dom::ObserverProxy), nullptr);
    du::SmartPtr<dom::ObserverProxy> proxy(new (memory) dom::ObserverProxy(observer));
    qzk::Observable::DefaultRegisterInitHelper<SceneT, ObserverT> helper(scene, observer);
    BaseScene* base = scene;
    dp::WriteLocker lock(base->GetRWLock());
    return base->_RegisterObserver(observer, proxy, scene->_IsLoadInProgress() ? nullptr : &helper);
}

} // namespace qzkapp::ecad
