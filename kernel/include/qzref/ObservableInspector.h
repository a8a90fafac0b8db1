// What a test reads back from any kernel observable: its observers.
// Reached through qzref::Inspect.
#pragma once

#include "qzk/Observable.h"

#include <cstddef>

namespace qzref {

class ObservableInspector {
public:
    explicit ObservableInspector(qzk::Observable& observable) noexcept : observable_(observable) {}

    std::size_t GetObserverCount() const { return observable_.GetObserverCount(); }
    bool IsRegistered(qzk::Observer const& observer) const {
        return observable_.IsRegistered(observer);
    }

private:
    qzk::Observable& observable_;
};

} // namespace qzref
