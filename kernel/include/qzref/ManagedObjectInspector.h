// What a test reads back from a keeper of managed objects (the kernel): what it holds.
// Reached through qzref::Inspect.
#pragma once

#include "dom/ManagedObject.h"

#include <cstddef>

namespace qzref {

class ManagedObjectInspector {
public:
    explicit ManagedObjectInspector(dom::ManagedObject& keeper) noexcept : keeper_(keeper) {}

    bool IsManaging(dom::ManagedObject const* object) const { return keeper_.IsManaging(object); }
    std::size_t GetManagedCount() const { return keeper_.GetManagedCount(); }

private:
    dom::ManagedObject& keeper_;
};

} // namespace qzref
