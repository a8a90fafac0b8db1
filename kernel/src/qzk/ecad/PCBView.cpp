#include "qzk/ecad/PCBView.h"

#include "SceneMessages.h"
#include "qzk/ClassType.h"
#include "qzk/ecad/PCBViewObserver.h"

namespace qzk::ecad {

namespace {
bool const registered = ClassType::RegisterClass(classid::EcadPCBView, {classid::EcadView});
} // namespace

du::SmartPtr<PCBView> PCBView::Create(qzk::Scene& scene, unsigned int pages) {
    return _AddToScene(scene, du::SmartPtr<PCBView>(new PCBView(scene, pages)));
}

PCBView::PCBView(qzk::Scene& scene, unsigned int pages) : View(scene, pages) {
    (void)registered;
}

PCBView::~PCBView() = default;

ClassType const& PCBView::GetClassType() const {
    static ClassType const type(classid::EcadPCBView);
    return type;
}

du::Symbol PCBView::GetDebugClassName() const {
    return "qzk::ecad::PCBView";
}

bool PCBView::RegisterObserver(PCBViewObserver& observer) {
    return _RegisterViewObserver(observer);
}

bool PCBView::UnregisterObserver(PCBViewObserver& observer) {
    return View2D::UnregisterObserver(observer);
}

void PCBView::NotifyDimmingLevel(unsigned char level) {
    _PostViewEvent(
        detail::PayloadEvent(BaseViewObserver::DimmingLevelEventId,
                             [level](dom::ObserverProxy& p) { p.PushUInt8Value(level); }));
}

} // namespace qzk::ecad
