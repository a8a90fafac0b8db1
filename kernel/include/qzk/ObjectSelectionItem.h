// A selection item that stands for a whole kernel object (an annotation, a view, ...).
#pragma once

#include "qzk/SelectionItem.h"

namespace qzk {

class ObjectSelectionItem : public SelectionItem {
public:
    static du::Symbol const& CONTENT_TYPE();

    explicit ObjectSelectionItem(du::SmartPtr<Object> const& object);
    ~ObjectSelectionItem() override;

    ClassType const& GetClassType() const override;
    du::Symbol GetDebugClassName() const override;
    std::string GetName() const override;
    du::SmartPtr<SelectionItem> Clone() const override;
    du::Symbol GetContentType() const override;
    void PopulateRepresentation(std::string& out) const override;

    du::SmartPtr<Object> GetObject() const { return object_; }

private:
    du::SmartPtr<Object> object_;
};

} // namespace qzk
