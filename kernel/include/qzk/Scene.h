// The kernel's root scene: what one viewing session of one or more designs holds on the kernel
// side. Its views (index 0 the main view), its one selection manager, its annotation set (may be
// null) and the world it belongs to.
//
// A scene owns its reader-writer lock; the API scene built around it, and each of its views,
// share that lock. The scene holds its views by counted references and each view points back to
// it by a plain pointer, which is nulled when the view leaves the scene or the scene ends.
// Views come and go through AddView and RemoveView (the kernel, or a test standing in for the
// user); derived scenes hear of it through OnViewAdded and OnViewRemoved, called outside every
// kernel mutex so they may post events.
#pragma once

#include "du/SmartPtr.h"
#include "qzk/Observable.h"

#include <cstddef>
#include <mutex>
#include <vector>

namespace qzk {

class AnnoSet;
class SelectionManager;
class View;
class World;

class Scene : public Observable {
public:
    ~Scene() override;

    ClassType const& GetClassType() const override;
    du::Symbol GetDebugClassName() const override;

    // Always yields the scene's selection manager, made with the scene.
    void GetSelectionManager(du::SmartPtr<SelectionManager>& out) const;
    // Null when the scene has no annotation set.
    void GetAnnoSet(du::SmartPtr<AnnoSet>& out) const;
    // Views in the order they were added; null past the end.
    du::SmartPtr<View> GetView(unsigned int index) const;
    unsigned int GetNumViews() const;
    du::SmartPtr<World> GetWorld() const;

    // Kernel side and controls; not journalled.
    // false for null, a view of another scene, or one already here.
    bool AddView(du::SmartPtr<View> const& view);
    // false if the view is not one of this scene's; later views move up one index. The view is
    // closed: it forgets the scene, the scene manager forgets it, OnViewRemoved runs, and then
    // the view ends (qzk::Observable::Destroy), which detaches its observers.
    bool RemoveView(du::SmartPtr<View> const& view);
    void SetAnnoSet(du::SmartPtr<AnnoSet> const& set);

protected:
    // lockSeed: the object that creates the scene's own lock (qzk::Observable only shares a lock
    // owner's lock). Leave it to the default; it is kept for the scene's life.
    explicit Scene(du::SmartPtr<World> const& world,
                   du::SmartPtr<ObjectWithRWLock> const& lockSeed = _MakeLockSeed());

    static du::SmartPtr<ObjectWithRWLock> _MakeLockSeed();

    // Hooks for derived scenes, run on the caller's thread after the change.
    virtual void OnViewAdded(du::SmartPtr<View> const& view);
    virtual void OnViewRemoved(du::SmartPtr<View> const& view);

    // Removes every view (telling OnViewRemoved), tells the selection manager's observers that
    // it ends, and drops the annotation set. Derived scenes call it from their _OnDestroy.
    void _OnDestroy() override;

    // Drops the operations recorded for this scene from the undo and redo lists: an operation
    // must not outlive its scene, since its steps may point into objects that end with it.
    // Scene::_OnDestroy does it; a derived scene whose end takes down such objects first calls
    // it before.
    void _ForgetOperations();

private:
    du::SmartPtr<ObjectWithRWLock> const lockSeed_;
    du::SmartPtr<World> const world_;
    du::SmartPtr<SelectionManager> const selectionManager_;
    mutable std::mutex mutex_;
    du::SmartPtr<AnnoSet> annoSet_;
    std::vector<du::SmartPtr<View>> views_;
};

} // namespace qzk
