#include "qzk/View2D.h"

#include "dom/ObservableEvent.h"
#include "dom/ObserverProxy.h"
#include "qzk/Scene.h"
#include "qzk/View2DObserver.h"
#include "qzref/Journal.h"

#include <cmath>

namespace qzk {
namespace {

bool const registered = ClassType::RegisterClass(classid::View2D, {classid::View});

class FocusEvent : public dom::ObservableEvent {
public:
    explicit FocusEvent(bool focused) noexcept : focused_(focused) {}
    void Post(dom::ObserverProxy* proxy) const override {
        proxy->PushUInt8Value(View2DObserver::ViewFocusEventId);
        proxy->PushBooleanValue(focused_);
    }

private:
    bool focused_;
};

} // namespace

du::SmartPtr<View2D> View2D::Create(Scene& scene, unsigned int pages) {
    du::SmartPtr<View2D> view(new View2D(scene, pages));
    scene.AddView(view);
    return view;
}

View2D::View2D(Scene& scene, unsigned int pages) : View(scene, pages) {}

View2D::~View2D() = default;

ClassType const& View2D::GetClassType() const {
    static ClassType const type(classid::View2D);
    return type;
}

du::Symbol View2D::GetDebugClassName() const {
    return du::Symbol("qzk::View2D");
}

bool View2D::GetOrthoWidth(double& out) const {
    std::lock_guard lock(widthMutex_);
    out = orthoWidth_;
    return true;
}

bool View2D::SetOrthoWidth(double width) {
    qzref::Journal::Record(GetObjectName().str(), "SetOrthoWidth", {qzref::Fmt(width)});
    if (!(width > 0.0) || !std::isfinite(width)) {
        return false;
    }
    std::lock_guard lock(widthMutex_);
    orthoWidth_ = width;
    return true;
}

bool View2D::RegisterObserver(View2DObserver& observer) {
    return _RegisterViewObserver(observer);
}

bool View2D::UnregisterObserver(View2DObserver& observer) {
    return DoUnregisterObserver(observer);
}

bool View2D::_RegisterViewObserver(View2DObserver& observer) {
    du::SmartPtr<dom::ObserverProxy> proxy(new dom::ObserverProxy(observer));
    return _RegisterObserver(observer, proxy, nullptr);
}

void View2D::_PostViewEvent(dom::ObservableEvent const& event) {
    _PostKernelNotice(event);
}

void View2D::NotifyFocus(bool focused) {
    _PostViewEvent(FocusEvent(focused));
}

void View2D::NotifyActivate() {
    _PostViewEvent(SimpleEvent(View2DObserver::ViewActivateEventId));
}

void View2D::PostStatusMessage(std::string const& text) {
    StoreStatusMessage(text);
    _PostViewEvent(SimpleEvent(View2DObserver::StatusMessageEventId));
}

} // namespace qzk
