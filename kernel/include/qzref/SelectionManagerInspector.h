// What a test reads back from a selection manager: its observers.
// Reached through qzref::Inspect.
#pragma once

#include "qzk/SelectionManager.h"

#include <cstddef>

namespace qzref {

class SelectionManagerInspector {
public:
    explicit SelectionManagerInspector(qzk::SelectionManager& manager) noexcept
        : manager_(manager) {}

    std::size_t GetObserverCount() const { return manager_.GetObserverCount(); }

private:
    qzk::SelectionManager& manager_;
};

} // namespace qzref
