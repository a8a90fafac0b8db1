#include "qzk/ecad/GeometrySelectionItem.h"

#include "qzk/ecad/selection_types.h"

namespace qzk::ecad {
namespace {
bool const registered =
    ClassType::RegisterClass(classid::EcadGeometrySelectionItem, {classid::GeometrySelectionItem});
} // namespace

GeometrySelectionItem::GeometrySelectionItem(du::SmartPtr<qzk::ecad::SelectionItem> const& parent,
                                             dg::DPoint3D const& point)
    : qzk::GeometrySelectionItem(du::SmartPtr<qzk::Object>(parent), point) {}

GeometrySelectionItem::~GeometrySelectionItem() = default;

ClassType const& GeometrySelectionItem::GetClassType() const {
    static ClassType const type(classid::EcadGeometrySelectionItem);
    return type;
}

du::Symbol GeometrySelectionItem::GetDebugClassName() const {
    return du::Symbol("qzk::ecad::GeometrySelectionItem");
}

du::SmartPtr<qzk::SelectionItem> GeometrySelectionItem::Clone() const {
    return du::SmartPtr<qzk::SelectionItem>(new GeometrySelectionItem(GetEcadParent(), GetPoint()));
}

du::Symbol GeometrySelectionItem::GetContentType() const {
    return selection_types::ECAD_GEOMETRY();
}

du::SmartPtr<qzk::ecad::SelectionItem> GeometrySelectionItem::GetEcadParent() const {
    return du::DynamicCast<qzk::ecad::SelectionItem>(GetParentObject());
}

} // namespace qzk::ecad
