#include "qzk/ecad/View.h"

#include "SceneMessages.h"
#include "qzk/ClassType.h"
#include "qzk/ecad/BaseViewObserver.h"
#include "qzref/RecordFmt.h"

#include <cstdio>

namespace qzk::ecad {

namespace {

bool const registered = ClassType::RegisterClass(classid::EcadView, {classid::EcadBaseView});

std::string FmtPointer(void const* pointer) {
    char text[32];
    std::snprintf(text, sizeof text, "%p", pointer);
    return pointer == nullptr ? std::string("null") : std::string(text);
}

} // namespace

View::View(qzk::Scene& scene, unsigned int pages) : BaseView(scene, pages) {
    (void)registered;
}

View::~View() = default;

ClassType const& View::GetClassType() const {
    static ClassType const type(classid::EcadView);
    return type;
}

du::Symbol View::GetDebugClassName() const {
    return "qzk::ecad::View";
}

void View::SetCrosshairObject(void* object) {
    qzref::Journal::Record(GetObjectName().str(), "SetCrosshairObject", {FmtPointer(object)});
    StoreCrosshairObject(object);
    _PostCrosshair();
}

void View::SetCrosshairPosition(dg::DPoint2D const& position) {
    qzref::Journal::Record(GetObjectName().str(), "SetCrosshairPosition", {qzref::Fmt(position)});
    StoreCrosshairPosition(position);
    _PostCrosshair();
}

void View::SetCrosshairVisibility(bool visible) {
    qzref::Journal::Record(GetObjectName().str(), "SetCrosshairVisibility", {qzref::Fmt(visible)});
    StoreCrosshairVisibility(visible);
    _PostCrosshair();
}

void View::NotifyTextColorChanged(bool on) {
    _PostViewEvent(detail::PayloadEvent(BaseViewObserver::TextColorChangedEventId,
                                        [on](dom::ObserverProxy& p) { p.PushBooleanValue(on); }));
}

void View::_PostCrosshair() {
    bool visible = GetCrosshairVisibility();
    dg::DPoint2D position = GetCrosshairPosition();
    void* object = GetCrosshairObject();
    _PostViewEvent(detail::PayloadEvent(BaseViewObserver::CrosshairEventId,
                                        [visible, position, object](dom::ObserverProxy& p) {
                                            p.PushBooleanValue(visible);
                                            detail::PushDouble(p, position.x);
                                            detail::PushDouble(p, position.y);
                                            detail::PushPointer(p, object);
                                        }));
}

} // namespace qzk::ecad
