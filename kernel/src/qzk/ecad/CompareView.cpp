#include "qzk/ecad/CompareView.h"

#include "qzk/ClassType.h"

namespace qzk::ecad {

namespace {
bool const registered = ClassType::RegisterClass(classid::EcadCompareView, {classid::EcadBaseView});
} // namespace

CompareView::CompareView(qzk::Scene& scene, unsigned int pages) : BaseView(scene, pages) {
    (void)registered;
}

CompareView::~CompareView() = default;

ClassType const& CompareView::GetClassType() const {
    static ClassType const type(classid::EcadCompareView);
    return type;
}

du::Symbol CompareView::GetDebugClassName() const {
    return "qzk::ecad::CompareView";
}

} // namespace qzk::ecad
