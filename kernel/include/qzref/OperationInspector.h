// What a test reads back from an operation: how many steps it holds.
// Reached through qzref::Inspect.
#pragma once

#include "qzk/Operation.h"

#include <cstddef>

namespace qzref {

class OperationInspector {
public:
    explicit OperationInspector(qzk::Operation& operation) noexcept : operation_(operation) {}

    std::size_t GetStepCount() const { return operation_.GetStepCount(); }

private:
    qzk::Operation& operation_;
};

} // namespace qzref
