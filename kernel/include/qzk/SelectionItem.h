// The root of what a selection holds. Items are kernel objects: reference counted, pool
// allocated, with a class type. The virtual operations keep the platform's order.
//
// Defaults of this class: no serialised form, no name, not compound, no children, no
// instanced siblings, not a body; LessThan orders by content type, then by address, so that a
// list of items of one kind sorts the same within a run.
#pragma once

#include "du/SmartPtr.h"
#include "du/Symbol.h"
#include "qzk/Object.h"

#include <string>
#include <vector>

namespace qzk {

class Scene;

class SelectionItem : public Object {
public:
    ~SelectionItem() override;
    ClassType const& GetClassType() const override;
    du::Symbol GetDebugClassName() const override;

    // Rebuilds the item from CreateSerializedContent's text; false when it cannot.
    virtual bool PopulateSerializedContent(std::string const& content);
    virtual std::string CreateSerializedContent() const;
    // The name shown for the item in scene (UTF-8).
    virtual std::string GetName(du::SmartPtr<Scene> const& scene) const;
    virtual std::string GetName() const;
    virtual bool IsCompoundItem() const;
    virtual bool IsChild(SelectionItem const& parent) const;
    virtual du::SmartPtr<SelectionItem> Clone() const = 0;
    virtual du::Symbol GetContentType() const = 0;
    // The finer type; the content type unless a class knows better.
    virtual du::Symbol GetDerivedType() const;
    virtual bool IsInstancedSibling(SelectionItem const& other) const;
    virtual du::SmartPtr<SelectionItem> GetFirstInstancedSibling() const;
    virtual void GetAllInstancedSiblings(std::vector<du::SmartPtr<SelectionItem>>& out) const;
    virtual bool IsBodyType() const;
    // A one-line description for logs and the journal.
    virtual void PopulateRepresentation(std::string& out) const;
    virtual void _GetChildren(std::vector<du::SmartPtr<SelectionItem>>& out) const;
    virtual bool LessThan(SelectionItem const& other) const;
    virtual bool ContentTypeMatches(du::Symbol const& contentType) const;

protected:
    SelectionItem() = default;
    void _OnDestroy() override;
};

} // namespace qzk
