#include "qzk/View.h"

#include "qzk/Scene.h"
#include "qzk/WorkflowManager.h"

namespace qzk {
namespace {
bool const registered = ClassType::RegisterClass(classid::View, {classid::Observable});
} // namespace

View::View(Scene& scene, unsigned int pages)
    : Observable(&scene), workflowManager_(new WorkflowManager()), scene_(&scene),
      pages_(pages == 0 ? 1 : pages) {}

View::~View() = default;

ClassType const& View::GetClassType() const {
    static ClassType const type(classid::View);
    return type;
}

du::Symbol View::GetDebugClassName() const {
    return du::Symbol("qzk::View");
}

bool View::GetStatusMessage(std::string& out) const {
    std::lock_guard lock(mutex_);
    out = statusMessage_;
    return true;
}

bool View::GetWorkflowManager(du::SmartPtr<WorkflowManager>& out) const {
    out = workflowManager_;
    return true;
}

Scene* View::GetScene() const {
    std::lock_guard lock(mutex_);
    return scene_;
}

void View::DetachFromScene() {
    std::lock_guard lock(mutex_);
    scene_ = nullptr;
}

unsigned int View::GetNumPages() const {
    std::lock_guard lock(mutex_);
    return pages_;
}

unsigned int View::GetPage() const {
    std::lock_guard lock(mutex_);
    return page_;
}

dg::Location View::GetLocation() const {
    std::lock_guard lock(mutex_);
    return location_;
}

unsigned int View::GetFitCount() const {
    std::lock_guard lock(mutex_);
    return fitCount_;
}

void* View::GetCrosshairObject() const {
    std::lock_guard lock(mutex_);
    return crosshairObject_;
}

dg::DPoint2D View::GetCrosshairPosition() const {
    std::lock_guard lock(mutex_);
    return crosshairPosition_;
}

bool View::GetCrosshairVisibility() const {
    std::lock_guard lock(mutex_);
    return crosshairVisible_;
}

void View::StoreStatusMessage(std::string const& text) {
    std::lock_guard lock(mutex_);
    statusMessage_ = text;
}

bool View::StorePage(unsigned int page) {
    std::lock_guard lock(mutex_);
    if (page >= pages_) {
        return false;
    }
    page_ = page;
    return true;
}

void View::StoreNumPages(unsigned int pages) {
    std::lock_guard lock(mutex_);
    pages_ = pages == 0 ? 1 : pages;
    if (page_ >= pages_) {
        page_ = pages_ - 1;
    }
}

void View::StoreLocation(dg::Location const& location) {
    std::lock_guard lock(mutex_);
    location_ = location;
}

void View::StoreFit() {
    std::lock_guard lock(mutex_);
    ++fitCount_;
}

void View::StoreCrosshairObject(void* object) {
    std::lock_guard lock(mutex_);
    crosshairObject_ = object;
}

void View::StoreCrosshairPosition(dg::DPoint2D const& position) {
    std::lock_guard lock(mutex_);
    crosshairPosition_ = position;
}

void View::StoreCrosshairVisibility(bool visible) {
    std::lock_guard lock(mutex_);
    crosshairVisible_ = visible;
}

void View::_OnDestroy() {}

} // namespace qzk
