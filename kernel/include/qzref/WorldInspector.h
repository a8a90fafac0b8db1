// What a test reads back from the world, and the language change it tells in the user's place.
// Reached through qzref::Inspect.
#pragma once

#include "qzk/World.h"

#include <cstddef>

namespace qzref {

class WorldInspector {
public:
    explicit WorldInspector(qzk::World& world) noexcept : world_(world) {}

    std::size_t GetObserverCount() const { return world_.GetObserverCount(); }
    void NotifyLanguageChanged() { world_.NotifyLanguageChanged(); }

private:
    qzk::World& world_;
};

} // namespace qzref
