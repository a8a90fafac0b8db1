#include "qzk/ecad/BaseView.h"

#include "qzk/ClassType.h"
#include "qzref/RecordFmt.h"

namespace qzk::ecad {

namespace {

bool const registered = ClassType::RegisterClass(classid::EcadBaseView, {classid::View2D});

std::string FmtLocation(dg::Location const& location) {
    return qzref::Fmt(location.center) + " " + qzref::Fmt(location.width);
}

} // namespace

BaseView::BaseView(qzk::Scene& scene, unsigned int pages) : qzk::View2D(scene, pages) {
    (void)registered;
}

BaseView::~BaseView() = default;

ClassType const& BaseView::GetClassType() const {
    static ClassType const type(classid::EcadBaseView);
    return type;
}

du::Symbol BaseView::GetDebugClassName() const {
    return "qzk::ecad::BaseView";
}

unsigned int BaseView::GetCurrentPage() const {
    qzref::Journal::Record(GetObjectName().str(), "GetCurrentPage");
    return GetPage();
}

bool BaseView::SetViewPage(unsigned short page, bool flag) {
    qzref::Journal::Record(GetObjectName().str(), "SetViewPage",
                           {qzref::Fmt(page), qzref::Fmt(flag)});
    return StorePage(page);
}

void BaseView::GetViewLocation(dg::Location& out) const {
    qzref::Journal::Record(GetObjectName().str(), "GetViewLocation");
    out = GetLocation();
}

void BaseView::SetViewLocation(dg::Location const& location) {
    qzref::Journal::Record(GetObjectName().str(), "SetViewLocation", {FmtLocation(location)});
    StoreLocation(location);
}

void BaseView::FitView() {
    qzref::Journal::Record(GetObjectName().str(), "FitView");
    StoreFit();
}

} // namespace qzk::ecad
