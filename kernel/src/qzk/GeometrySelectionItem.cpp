#include "qzk/GeometrySelectionItem.h"

namespace qzk {
namespace {
bool const registered =
    ClassType::RegisterClass(classid::GeometrySelectionItem, {classid::SelectionItem});
} // namespace

du::Symbol const& GeometrySelectionItem::CONTENT_TYPE() {
    static du::Symbol const type("QzkGeometry");
    return type;
}

GeometrySelectionItem::GeometrySelectionItem(du::SmartPtr<Object> const& parent,
                                             dg::DPoint3D const& point)
    : parent_(parent), point_(point) {}

GeometrySelectionItem::~GeometrySelectionItem() = default;

ClassType const& GeometrySelectionItem::GetClassType() const {
    static ClassType const type(classid::GeometrySelectionItem);
    return type;
}

du::Symbol GeometrySelectionItem::GetDebugClassName() const {
    return du::Symbol("qzk::GeometrySelectionItem");
}

std::string GeometrySelectionItem::GetName() const {
    auto const* parent = dynamic_cast<SelectionItem const*>(parent_.Get());
    if (parent != nullptr) {
        return parent->GetName();
    }
    return parent_ ? parent_->GetObjectName().str() : std::string();
}

du::SmartPtr<SelectionItem> GeometrySelectionItem::Clone() const {
    return du::SmartPtr<SelectionItem>(new GeometrySelectionItem(parent_, point_));
}

du::Symbol GeometrySelectionItem::GetContentType() const {
    return CONTENT_TYPE();
}

bool GeometrySelectionItem::IsChild(SelectionItem const& parent) const {
    return parent_.Get() == &parent;
}

void GeometrySelectionItem::PopulateRepresentation(std::string& out) const {
    out = "geometry of " + GetName();
}

} // namespace qzk
