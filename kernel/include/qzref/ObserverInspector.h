// What a test reads back from a kernel observer: the observable it is registered with, or null.
// Reached through qzref::Inspect.
#pragma once

#include "qzk/Observer.h"

#include <cstddef>

namespace qzref {

class ObserverInspector {
public:
    explicit ObserverInspector(qzk::Observer& observer) noexcept : observer_(observer) {}

    qzk::Observable* GetObservable() const { return observer_.GetObservable(); }

private:
    qzk::Observer& observer_;
};

} // namespace qzref
