#include "qzk/ecad/SchematicCompareView.h"

#include "SceneMessages.h"
#include "qzk/ClassType.h"
#include "qzk/ecad/SchematicCompareViewObserver.h"

namespace qzk::ecad {

namespace {
bool const registered =
    ClassType::RegisterClass(classid::EcadSchematicCompareView, {classid::EcadCompareView});
} // namespace

du::SmartPtr<SchematicCompareView> SchematicCompareView::Create(qzk::Scene& scene,
                                                                unsigned int pages) {
    return _AddToScene(scene,
                       du::SmartPtr<SchematicCompareView>(new SchematicCompareView(scene, pages)));
}

SchematicCompareView::SchematicCompareView(qzk::Scene& scene, unsigned int pages)
    : CompareView(scene, pages) {
    (void)registered;
}

SchematicCompareView::~SchematicCompareView() = default;

ClassType const& SchematicCompareView::GetClassType() const {
    static ClassType const type(classid::EcadSchematicCompareView);
    return type;
}

du::Symbol SchematicCompareView::GetDebugClassName() const {
    return "qzk::ecad::SchematicCompareView";
}

bool SchematicCompareView::RegisterObserver(SchematicCompareViewObserver& observer) {
    return _RegisterViewObserver(observer);
}

bool SchematicCompareView::UnregisterObserver(SchematicCompareViewObserver& observer) {
    return View2D::UnregisterObserver(observer);
}

void SchematicCompareView::NotifyHome() {
    _PostViewEvent(detail::PayloadEvent(BaseViewObserver::HomeEventId, {}));
}

} // namespace qzk::ecad
