#include "qzk/ecad/PCBCompareView.h"

#include "SceneMessages.h"
#include "qzk/ClassType.h"
#include "qzk/ecad/PCBCompareViewObserver.h"

namespace qzk::ecad {

namespace {
bool const registered =
    ClassType::RegisterClass(classid::EcadPCBCompareView, {classid::EcadCompareView});
} // namespace

du::SmartPtr<PCBCompareView> PCBCompareView::Create(qzk::Scene& scene, unsigned int pages) {
    return _AddToScene(scene, du::SmartPtr<PCBCompareView>(new PCBCompareView(scene, pages)));
}

PCBCompareView::PCBCompareView(qzk::Scene& scene, unsigned int pages) : CompareView(scene, pages) {
    (void)registered;
}

PCBCompareView::~PCBCompareView() = default;

ClassType const& PCBCompareView::GetClassType() const {
    static ClassType const type(classid::EcadPCBCompareView);
    return type;
}

du::Symbol PCBCompareView::GetDebugClassName() const {
    return "qzk::ecad::PCBCompareView";
}

bool PCBCompareView::RegisterObserver(PCBCompareViewObserver& observer) {
    return _RegisterViewObserver(observer);
}

bool PCBCompareView::UnregisterObserver(PCBCompareViewObserver& observer) {
    return View2D::UnregisterObserver(observer);
}

void PCBCompareView::NotifyDimmingLevel(unsigned char level) {
    _PostViewEvent(
        detail::PayloadEvent(BaseViewObserver::DimmingLevelEventId,
                             [level](dom::ObserverProxy& p) { p.PushUInt8Value(level); }));
}

} // namespace qzk::ecad
