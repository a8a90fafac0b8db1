// The kernel's root view: one window onto a scene. It shows one page of the scene's design at a
// location, may draw a crosshair, has a status message for the host's status bar, and carries out
// workflow actions through its workflow manager.
//
// A view shares its scene's reader-writer lock and points back to the scene by a plain pointer,
// nulled when the scene lets the view go (GetScene then answers null). Its own state is guarded
// by a small mutex of its own. The Store* operations are the kernel side: what the user or the
// kernel does to the view. They are not journalled; the layer-facing operations of the derived
// views journal the call and then store through them.
#pragma once

#include "dg/DPoint2D.h"
#include "dg/Location.h"
#include "du/SmartPtr.h"
#include "qzk/Observable.h"
#include "qzk/Scene.h"

#include <mutex>
#include <string>

namespace qzref {
class ViewInspector;
}

namespace qzk {

class WorkflowManager;

class View : public Observable {
public:
    ~View() override;

    ClassType const& GetClassType() const override;
    du::Symbol GetDebugClassName() const override;

    // The text the host shows in its status bar; empty until one is set. Always true.
    bool GetStatusMessage(std::string& out) const;
    // Every view has one manager, made with it. Always true.
    bool GetWorkflowManager(du::SmartPtr<WorkflowManager>& out) const;

    // Kernel side: the scene the view belongs to, null once it has left it.
    Scene* GetScene() const;
    void DetachFromScene();

    // Kernel side.
    void StoreStatusMessage(std::string const& text);
    // false, and no change, for a page at or past the page count.
    bool StorePage(unsigned int page);
    // Grows or shrinks the page count; the page moves to the last page if it falls off.
    // 0 is taken as 1.
    void StoreNumPages(unsigned int pages);
    void StoreLocation(dg::Location const& location);
    void StoreFit();
    void StoreCrosshairObject(void* object);
    void StoreCrosshairPosition(dg::DPoint2D const& position);
    void StoreCrosshairVisibility(bool visible);

protected:
    // The view shares scene's lock; pages of 0 is taken as 1.
    View(Scene& scene, unsigned int pages);

    // What the view holds, for the derived views' platform operations.
    unsigned int GetNumPages() const;
    // 0-based; 0 until the view is sent elsewhere.
    unsigned int GetPage() const;
    // Default (not set) until the view is placed.
    dg::Location GetLocation() const;
    // How often the view was fitted (FitView of the derived views).
    unsigned int GetFitCount() const;
    void* GetCrosshairObject() const;
    dg::DPoint2D GetCrosshairPosition() const;
    bool GetCrosshairVisibility() const;

    void _OnDestroy() override;

private:
    friend class qzref::ViewInspector;

    du::SmartPtr<WorkflowManager> const workflowManager_;
    mutable std::mutex mutex_;
    Scene* scene_;
    std::string statusMessage_;
    unsigned int pages_;
    unsigned int page_ = 0;
    dg::Location location_;
    unsigned int fitCount_ = 0;
    void* crosshairObject_ = nullptr;
    dg::DPoint2D crosshairPosition_;
    bool crosshairVisible_ = false;
};

} // namespace qzk
