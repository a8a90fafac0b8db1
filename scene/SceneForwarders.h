// The private forwarders every concrete scene keeps with the kernel, written once: each concrete
// scene's source names its instances in its own unnamed namespace.
//
// GroupOverlapForwarder hears the scene's kernel scene; only the group overlap colour concerns
// the API scene, the kernel's other notices stay with the base class's handlers. It reaches the
// scene through a SceneLink, cut when the scene ends.
//
// ViewForwarder hears one view and tells the application's scene manager and plug-in interface
// of its focus, activation and status text. It knows no scene, so nothing has to cut it loose.
#pragma once

#include "du/SmartPtr.h"
#include "du/Symbol.h"
#include "qzk/Observer.h"
#include "qzk/View.h"
#include "qzkapp/QzkApp.h"
#include "qzkapp/SceneManager.h"
#include "qzplugin/PluginHandlerIf.h"
#include "scene/SceneLink.h"

#include <string>
#include <utility>

namespace qzkapp::ecad {

template <class KernelObserver, class SceneT> class GroupOverlapForwarder : public KernelObserver {
public:
    explicit GroupOverlapForwarder(SceneT* scene) : scene_(scene) {}
    ~GroupOverlapForwarder() override { this->DetachFromMessageLoop(); }

    bool RequiresBeginEnd() const override { return false; }
    void DetachObserver() override { scene_.Cut(); }
    void OnGroupOverlapColorChanged() override {
        scene_.Call([](SceneT& scene) { scene.OnGroupOverlapColorChanged(); });
    }
    bool ZeroReferenceCountHook() const override { return qzk::Observer::ZeroReferenceCountHook(); }

private:
    SceneLink<SceneT> scene_;
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

} // namespace qzkapp::ecad
