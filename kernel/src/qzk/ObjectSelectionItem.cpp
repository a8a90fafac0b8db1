#include "qzk/ObjectSelectionItem.h"

namespace qzk {
namespace {
bool const registered =
    ClassType::RegisterClass(classid::ObjectSelectionItem, {classid::SelectionItem});
} // namespace

du::Symbol const& ObjectSelectionItem::CONTENT_TYPE() {
    static du::Symbol const type("QzkObject");
    return type;
}

ObjectSelectionItem::ObjectSelectionItem(du::SmartPtr<Object> const& object) : object_(object) {}

ObjectSelectionItem::~ObjectSelectionItem() = default;

ClassType const& ObjectSelectionItem::GetClassType() const {
    static ClassType const type(classid::ObjectSelectionItem);
    return type;
}

du::Symbol ObjectSelectionItem::GetDebugClassName() const {
    return du::Symbol("qzk::ObjectSelectionItem");
}

std::string ObjectSelectionItem::GetName() const {
    return object_ ? object_->GetObjectName().str() : std::string();
}

du::SmartPtr<SelectionItem> ObjectSelectionItem::Clone() const {
    return du::SmartPtr<SelectionItem>(new ObjectSelectionItem(object_));
}

du::Symbol ObjectSelectionItem::GetContentType() const {
    return CONTENT_TYPE();
}

void ObjectSelectionItem::PopulateRepresentation(std::string& out) const {
    out = "object " + GetName();
}

} // namespace qzk
