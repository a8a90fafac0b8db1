// A geometry pick in an ECAD scene; its parent object is the qzk::ecad::SelectionItem of the
// design object the geometry belongs to.
#pragma once

#include "qzk/GeometrySelectionItem.h"
#include "qzk/ecad/SelectionItem.h"

namespace qzk::ecad {

class GeometrySelectionItem : public qzk::GeometrySelectionItem {
public:
    GeometrySelectionItem(du::SmartPtr<qzk::ecad::SelectionItem> const& parent,
                          dg::DPoint3D const& point);
    ~GeometrySelectionItem() override;

    ClassType const& GetClassType() const override;
    du::Symbol GetDebugClassName() const override;
    du::SmartPtr<qzk::SelectionItem> Clone() const override;
    // selection_types::ECAD_GEOMETRY().
    du::Symbol GetContentType() const override;

    // The parent, already cast; null only if it was given null.
    du::SmartPtr<qzk::ecad::SelectionItem> GetEcadParent() const;
};

} // namespace qzk::ecad
