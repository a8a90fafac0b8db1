// The private forwarders every concrete scene keeps with the kernel, written once: each concrete
// scene's source names its instances in its own unnamed namespace.
//
// SceneForwarder is the frame of every forwarder of a kernel scene: the link, cut when the kernel
// lets the forwarder go. GroupOverlapForwarder hears the scene's kernel scene; only the group
// overlap colour concerns the API scene, the kernel's other notices stay with the base class's
// handlers. It reaches the scene through a SceneLink, cut when the scene ends.
//
// ViewForwarder hears one view and tells the application's scene manager and plug-in interface
// of its focus, activation and status text. It knows no scene, so nothing has to cut it loose.
//
// A concrete scene hooks them up with the three functions at the end, the same way every time:
// AttachSceneForwarder in Init, DetachSceneForwarder in _OnDestroy (before the scene leaves its
// kernel scene, BaseScene::_LeaveKernelScene), AttachViewForwarder in ViewCreated. What differs
// between the scenes (which lock they hold meanwhile, whether a new view is fitted) stays in the
// scene's own source.
#pragma once

#include "dom/ManagedObject.h"
#include "du/SmartPtr.h"
#include "du/Symbol.h"
#include "qzk/Kernel.h"
#include "qzk/Observer.h"
#include "qzk/View.h"
#include "qzkapp/QzkApp.h"
#include "qzkapp/SceneManager.h"
#include "qzplugin/PluginHandlerIf.h"
#include "scene/SceneLink.h"

#include <string>
#include <utility>

namespace qzkapp::ecad {

// What every forwarder of a kernel scene is: a link to its scene, cut when the kernel lets the
// forwarder go. It hears nothing by itself; a scene that shows no groups derives its handlers
// from it directly.
template <class KernelObserver, class SceneT> class SceneForwarder : public KernelObserver {
public:
    explicit SceneForwarder(SceneT* scene) : scene_(scene) {}
    ~SceneForwarder() override { this->DetachFromMessageLoop(); }

    bool RequiresBeginEnd() const override { return false; }
    void DetachObserver() override { scene_.Cut(); }
    bool ZeroReferenceCountHook() const override { return qzk::Observer::ZeroReferenceCountHook(); }

protected:
    SceneLink<SceneT> scene_;
};

template <class KernelObserver, class SceneT>
class GroupOverlapForwarder : public SceneForwarder<KernelObserver, SceneT> {
public:
    using SceneForwarder<KernelObserver, SceneT>::SceneForwarder;

    void OnGroupOverlapColorChanged() override {
        this->scene_.Call([](SceneT& scene) { scene.OnGroupOverlapColorChanged(); });
    }
    // A scene whose kernel scene tells more than the overlap colour adds its handlers on top.
};

template <class KernelViewObserver, class KernelView>
class ViewForwarder : public KernelViewObserver {
public:
    ViewForwarder(qzkapp::SceneManager* manager, du::SmartPtr<qzk::View> view)
        : manager_(manager), view_(std::move(view)) {}
    ~ViewForwarder() override { this->DetachFromMessageLoop(); }

    bool RequiresBeginEnd() const override { return false; }
    void DetachObserver() override {
        if (auto* view = dynamic_cast<KernelView*>(view_.Get())) {
            view->UnregisterObserver(*this);
        }
    }
    void OnViewFocus(bool focused) override {
        if (focused) {
            manager_->_SetFocus(view_);
        } else {
            manager_->_LostFocus(view_);
        }
    }
    void OnViewActivate() override { manager_->SetActiveView(view_, false); }
    void OnStatusMessage() override {
        du::SmartPtr<qzplugin::PluginHandlerIf> pluginIf = qzkapp::QzkApp::Get()->GetPluginIf();
        if (!pluginIf) {
            return;
        }
        std::string text;
        view_->GetStatusMessage(text);
        pluginIf->SetStatusMessage(du::Symbol(text));
    }
    bool ZeroReferenceCountHook() const override { return qzk::Observer::ZeroReferenceCountHook(); }

private:
    // The application's manager lives as long as the process.
    qzkapp::SceneManager* manager_;
    du::SmartPtr<qzk::View> view_;
};

// Makes scene's forwarder of its kernel scene, hands it to the kernel, which keeps it until it is
// unregistered, and registers it with kernelScene when there is one.
template <class Forwarder, class KernelScene, class SceneT>
du::SmartPtr<Forwarder> AttachSceneForwarder(SceneT* scene, KernelScene* kernelScene) {
    du::SmartPtr<qzk::Kernel> kernel = qzk::Kernel::GetKernel();
    auto forwarder = du::MakeCounted<Forwarder>(scene);
    if (kernel) {
        kernel->ManageObject(du::SmartPtr<dom::ManagedObject>(forwarder.Get()));
    }
    if (kernelScene) {
        kernelScene->RegisterObserver(*forwarder);
    }
    return forwarder;
}

// Undoes AttachSceneForwarder and lets go of the forwarder. A notice queued before the
// unregistering finds its link cut when the scene leaves its kernel scene.
template <class ForwarderPtr, class KernelScene>
void DetachSceneForwarder(ForwarderPtr& forwarder, KernelScene* kernelScene) {
    if (!forwarder) {
        return;
    }
    if (kernelScene) {
        kernelScene->UnregisterObserver(*forwarder);
    }
    forwarder = nullptr;
}

// Gives a new view its forwarder to the application's scene manager, kept by the kernel until
// the view lets it go. The view, as a KernelView, or null when it is of another kind.
template <class Forwarder, class KernelView>
KernelView* AttachViewForwarder(du::SmartPtr<qzk::View> const& view) {
    du::SmartPtr<qzkapp::SceneManager> manager = qzkapp::QzkApp::Get()->GetSceneManager();
    auto forwarder = du::MakeCounted<Forwarder>(manager.Get(), view);
    if (du::SmartPtr<qzk::Kernel> kernel = qzk::Kernel::GetKernel()) {
        kernel->ManageObject(du::SmartPtr<dom::ManagedObject>(forwarder.Get()));
    }
    auto* typed = dynamic_cast<KernelView*>(view.Get());
    if (typed) {
        typed->RegisterObserver(*forwarder);
    }
    return typed;
}

} // namespace qzkapp::ecad
