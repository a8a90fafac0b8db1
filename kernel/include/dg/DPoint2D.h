// A point of the drawing plane, in design units.
#pragma once

namespace dg {

class DMat33;

class DPoint2D {
public:
    // BAD: both coordinates at the largest double, a place no design reaches. Unlike a NaN
    // it compares equal to itself, so callers can test for it with == or IsBad.
    static DPoint2D const BAD;

    DPoint2D() noexcept = default;
    DPoint2D(double x, double y) noexcept : x(x), y(y) {}

    // Transforms the point by the matrix (the point is a column vector (x, y, 1)).
    DPoint2D& operator*=(DMat33 const& matrix) noexcept;

    bool IsBad() const noexcept;
    bool operator==(DPoint2D const& other) const noexcept { return x == other.x && y == other.y; }
    bool operator!=(DPoint2D const& other) const noexcept { return !(*this == other); }

    double x = 0.0;
    double y = 0.0;
};

} // namespace dg
