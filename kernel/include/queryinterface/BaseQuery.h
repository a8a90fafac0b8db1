// The root of the query layer's query objects: reference counted values whose content is
// copied with operator=, never shared by it.
#pragma once

#include "du/RefCounted.h"

#include <string>

namespace queryinterface {

class BaseQuery : public du::RefCounted {
public:
    BaseQuery() = default;
    BaseQuery(BaseQuery const&) = default;
    BaseQuery& operator=(BaseQuery const&) = default;
    ~BaseQuery() override;

    // A one-line description for logs and the journal.
    virtual std::string Describe() const = 0;
};

} // namespace queryinterface
