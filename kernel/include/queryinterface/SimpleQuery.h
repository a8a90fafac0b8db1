// A search as the host's search dialog states it: the text, where to look, and how to match.
// A default query is empty: no text, every object type, case-insensitive, partial matches.
#pragma once

#include "du/Symbol.h"
#include "queryinterface/BaseQuery.h"

#include <string>
#include <vector>

namespace queryinterface {

class SimpleQuery : public BaseQuery {
public:
    SimpleQuery() = default;
    explicit SimpleQuery(std::string text) : text(std::move(text)) {}
    SimpleQuery(SimpleQuery const&) = default;
    // Copies the content; the reference count of either object is untouched.
    SimpleQuery& operator=(SimpleQuery const&) = default;
    ~SimpleQuery() override;

    std::string Describe() const override;
    bool IsEmpty() const noexcept { return text.empty() && objectTypes.empty(); }
    bool operator==(SimpleQuery const& other) const;
    bool operator!=(SimpleQuery const& other) const { return !(*this == other); }

    // UTF-8.
    std::string text;
    // Empty: every type.
    std::vector<du::Symbol> objectTypes;
    bool caseSensitive = false;
    bool wholeWord = false;
};

} // namespace queryinterface
