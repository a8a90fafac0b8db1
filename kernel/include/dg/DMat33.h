// A 3x3 matrix of the plane's affine transforms (rotation, flip, translation), acting on
// column vectors (x, y, 1). a * b applies b first, then a.
#pragma once

#include "dg/DPoint2D.h"

namespace dg {

class DMat33 {
public:
    static DMat33 const IDENTITY;

    // The identity.
    DMat33() noexcept;
    DMat33(double m00, double m01, double m02, double m10, double m11, double m12, double m20,
           double m21, double m22) noexcept;

    // Counter-clockwise by degrees about center. Multiples of 90 degrees are exact.
    static DMat33 Rotation(double degrees, DPoint2D const& center = DPoint2D()) noexcept;
    // Mirror left to right (x about center.x) and top to bottom (y about center.y).
    static DMat33 FlipHorizontal(DPoint2D const& center = DPoint2D()) noexcept;
    static DMat33 FlipVertical(DPoint2D const& center = DPoint2D()) noexcept;
    static DMat33 Translation(double dx, double dy) noexcept;

    DMat33 operator*(DMat33 const& other) const noexcept;
    DMat33& operator*=(DMat33 const& other) noexcept;
    DPoint2D Transform(DPoint2D const& point) const noexcept;

    double operator()(int row, int column) const noexcept { return m[row][column]; }
    double& operator()(int row, int column) noexcept { return m[row][column]; }

    bool operator==(DMat33 const& other) const noexcept;
    bool operator!=(DMat33 const& other) const noexcept { return !(*this == other); }

    double m[3][3];
};

} // namespace dg
