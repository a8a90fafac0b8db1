// A selection item for a piece of geometry picked inside an object; it names the object it
// belongs to as its parent.
#pragma once

#include "dg/DPoint3D.h"
#include "qzk/SelectionItem.h"

namespace qzk {

class GeometrySelectionItem : public SelectionItem {
public:
    static du::Symbol const& CONTENT_TYPE();

    GeometrySelectionItem(du::SmartPtr<Object> const& parent, dg::DPoint3D const& point);
    ~GeometrySelectionItem() override;

    ClassType const& GetClassType() const override;
    du::Symbol GetDebugClassName() const override;
    std::string GetName() const override;
    du::SmartPtr<SelectionItem> Clone() const override;
    du::Symbol GetContentType() const override;
    bool IsChild(SelectionItem const& parent) const override;
    void PopulateRepresentation(std::string& out) const override;

    du::SmartPtr<Object> GetParentObject() const { return parent_; }
    dg::DPoint3D const& GetPoint() const noexcept { return point_; }

private:
    du::SmartPtr<Object> parent_;
    dg::DPoint3D point_;
};

} // namespace qzk
