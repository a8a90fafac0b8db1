// Where a 2D view stands: the point at its centre and the width of design it shows.
// A default location (centre at the origin, width 0) means the view has not been placed.
#pragma once

#include "dg/DPoint2D.h"

namespace dg {

class Location {
public:
    Location() noexcept = default;
    Location(DPoint2D const& center, double width) noexcept : center(center), width(width) {}

    bool IsSet() const noexcept;
    bool operator==(Location const& other) const noexcept;
    bool operator!=(Location const& other) const noexcept { return !(*this == other); }

    DPoint2D center;
    double width = 0.0;
};

} // namespace dg
