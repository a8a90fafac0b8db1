#include "qzk/ecad/SchematicView.h"

#include "SceneMessages.h"
#include "qzk/ClassType.h"
#include "qzk/ecad/SchematicViewObserver.h"

namespace qzk::ecad {

namespace {
bool const registered = ClassType::RegisterClass(classid::EcadSchematicView, {classid::EcadView});
} // namespace

du::SmartPtr<SchematicView> SchematicView::Create(qzk::Scene& scene, unsigned int pages) {
    return _AddToScene(scene, du::SmartPtr<SchematicView>(new SchematicView(scene, pages)));
}

SchematicView::SchematicView(qzk::Scene& scene, unsigned int pages) : View(scene, pages) {
    (void)registered;
}

SchematicView::~SchematicView() = default;

ClassType const& SchematicView::GetClassType() const {
    static ClassType const type(classid::EcadSchematicView);
    return type;
}

du::Symbol SchematicView::GetDebugClassName() const {
    return "qzk::ecad::SchematicView";
}

bool SchematicView::RegisterObserver(SchematicViewObserver& observer) {
    return _RegisterViewObserver(observer);
}

bool SchematicView::UnregisterObserver(SchematicViewObserver& observer) {
    return View2D::UnregisterObserver(observer);
}

void SchematicView::NotifyHome() {
    _PostViewEvent(detail::PayloadEvent(BaseViewObserver::HomeEventId, {}));
}

} // namespace qzk::ecad
