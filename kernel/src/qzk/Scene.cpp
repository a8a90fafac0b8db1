#include "qzk/Scene.h"

#include "qzk/AnnoSet.h"
#include "qzk/Kernel.h"
#include "qzk/SelectionManager.h"
#include "qzk/UndoList.h"
#include "qzk/View.h"
#include "qzk/World.h"
#include "qzkapp/QzkApp.h"
#include "qzkapp/SceneManager.h"

#include <algorithm>

namespace qzk {
namespace {

bool const registered = ClassType::RegisterClass(classid::Scene, {classid::Observable});

// The creator of a scene's lock: qzk::Observable can only share a lock owner's lock, so the scene
// keeps one of these for its life and shares its lock. It is never seen outside the scene.
class LockSeed : public ObjectWithRWLock {
public:
    ClassType const& GetClassType() const override {
        static ClassType const type(classid::ObjectWithRWLock);
        return type;
    }

protected:
    void _OnDestroy() override {}
};

} // namespace

du::SmartPtr<ObjectWithRWLock> Scene::_MakeLockSeed() {
    return du::SmartPtr<ObjectWithRWLock>(new LockSeed());
}

Scene::Scene(du::SmartPtr<World> const& world, du::SmartPtr<ObjectWithRWLock> const& lockSeed)
    : Observable(lockSeed.Get()), lockSeed_(lockSeed), world_(world),
      selectionManager_(new SelectionManager()) {}

Scene::~Scene() {
    // A scene that was never destroyed still must not leave views pointing at it.
    for (auto const& view : views_) {
        view->DetachFromScene();
    }
}

ClassType const& Scene::GetClassType() const {
    static ClassType const type(classid::Scene);
    return type;
}

du::Symbol Scene::GetDebugClassName() const {
    return du::Symbol("qzk::Scene");
}

void Scene::GetSelectionManager(du::SmartPtr<SelectionManager>& out) const {
    out = selectionManager_;
}

void Scene::GetAnnoSet(du::SmartPtr<AnnoSet>& out) const {
    std::lock_guard lock(mutex_);
    out = annoSet_;
}

du::SmartPtr<View> Scene::GetView(unsigned int index) const {
    std::lock_guard lock(mutex_);
    return index < views_.size() ? views_[index] : du::SmartPtr<View>();
}

unsigned int Scene::GetNumViews() const {
    std::lock_guard lock(mutex_);
    return static_cast<unsigned int>(views_.size());
}

du::SmartPtr<World> Scene::GetWorld() const {
    return world_;
}

bool Scene::AddView(du::SmartPtr<View> const& view) {
    if (!view || view->GetScene() != this) {
        return false;
    }
    {
        std::lock_guard lock(mutex_);
        if (std::find(views_.begin(), views_.end(), view) != views_.end()) {
            return false;
        }
        views_.push_back(view);
    }
    OnViewAdded(view);
    return true;
}

bool Scene::RemoveView(du::SmartPtr<View> const& view) {
    {
        std::lock_guard lock(mutex_);
        auto found = std::find(views_.begin(), views_.end(), view);
        if (found == views_.end()) {
            return false;
        }
        views_.erase(found);
    }
    view->DetachFromScene();
    qzkapp::QzkApp::Get()->GetSceneManager()->ForgetView(view.Get());
    OnViewRemoved(view);
    // A view that leaves its scene is closed: its observers are detached.
    view->Destroy();
    return true;
}

void Scene::SetAnnoSet(du::SmartPtr<AnnoSet> const& set) {
    du::SmartPtr<AnnoSet> old;
    std::lock_guard lock(mutex_);
    old = annoSet_;
    annoSet_ = set;
}

void Scene::OnViewAdded(du::SmartPtr<View> const&) {}

void Scene::OnViewRemoved(du::SmartPtr<View> const&) {}

void Scene::_OnDestroy() {
    _ForgetOperations();
    for (;;) {
        du::SmartPtr<View> last;
        {
            std::lock_guard lock(mutex_);
            if (views_.empty()) {
                break;
            }
            last = views_.back();
        }
        RemoveView(last);
    }
    selectionManager_->NotifyDestroyed();
    du::SmartPtr<AnnoSet> set;
    {
        std::lock_guard lock(mutex_);
        set = std::move(annoSet_);
    }
}

void Scene::_ForgetOperations() {
    // The caller of Destroy still holds the scene, so dropping the operations' references to it
    // cannot end it here.
    if (du::SmartPtr<Kernel> kernel = Kernel::GetKernel()) {
        kernel->GetUndoList().ForgetScene(this);
    }
}

} // namespace qzk
