// Fixed-width names the platform's interfaces are written in.
#pragma once

#include <cstdint>

// Image and overlay ids; 0 means none.
using uint64 = std::uint64_t;
