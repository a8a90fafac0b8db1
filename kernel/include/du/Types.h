// Fixed-width names the platform's interfaces are written in.
#pragma once

#include <cstdint>

// Image and overlay ids; 0 means none.
using uint64 = std::uint64_t;
// Positions in ordered kernel lists; negative values name places from the end.
using int64 = std::int64_t;
