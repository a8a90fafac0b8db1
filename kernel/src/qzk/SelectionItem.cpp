#include "qzk/SelectionItem.h"

#include <functional>

namespace qzk {
namespace {
bool const registered = ClassType::RegisterClass(classid::SelectionItem, {classid::Object});
} // namespace

SelectionItem::~SelectionItem() = default;

ClassType const& SelectionItem::GetClassType() const {
    static ClassType const type(classid::SelectionItem);
    return type;
}

du::Symbol SelectionItem::GetDebugClassName() const {
    return du::Symbol("qzk::SelectionItem");
}

bool SelectionItem::PopulateSerializedContent(std::string const&) {
    return false;
}

std::string SelectionItem::CreateSerializedContent() const {
    return {};
}

std::string SelectionItem::GetName(du::SmartPtr<Scene> const&) const {
    return GetName();
}

std::string SelectionItem::GetName() const {
    return {};
}

bool SelectionItem::IsCompoundItem() const {
    return false;
}

bool SelectionItem::IsChild(SelectionItem const&) const {
    return false;
}

du::Symbol SelectionItem::GetDerivedType() const {
    return GetContentType();
}

bool SelectionItem::IsInstancedSibling(SelectionItem const&) const {
    return false;
}

du::SmartPtr<SelectionItem> SelectionItem::GetFirstInstancedSibling() const {
    return {};
}

void SelectionItem::GetAllInstancedSiblings(std::vector<du::SmartPtr<SelectionItem>>&) const {}

bool SelectionItem::IsBodyType() const {
    return false;
}

void SelectionItem::PopulateRepresentation(std::string& out) const {
    out = GetContentType().str() + " " + GetName();
}

void SelectionItem::_GetChildren(std::vector<du::SmartPtr<SelectionItem>>&) const {}

bool SelectionItem::LessThan(SelectionItem const& other) const {
    du::Symbol const mine = GetContentType();
    du::Symbol const theirs = other.GetContentType();
    if (!(mine == theirs)) {
        return mine < theirs;
    }
    return std::less<SelectionItem const*>()(this, &other);
}

bool SelectionItem::ContentTypeMatches(du::Symbol const& contentType) const {
    return GetContentType() == contentType;
}

void SelectionItem::_OnDestroy() {}

} // namespace qzk
