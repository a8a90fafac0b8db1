#include "dg/DMat33.h"

#include <cmath>
#include <numbers>

namespace dg {
namespace {

// Exact values at the quarter turns keep rotated boards on their grid.
void SinCos(double degrees, double& s, double& c) noexcept {
    double turned = std::fmod(degrees, 360.0);
    if (turned < 0.0) {
        turned += 360.0;
    }
    if (turned == 0.0) {
        s = 0.0;
        c = 1.0;
    } else if (turned == 90.0) {
        s = 1.0;
        c = 0.0;
    } else if (turned == 180.0) {
        s = 0.0;
        c = -1.0;
    } else if (turned == 270.0) {
        s = -1.0;
        c = 0.0;
    } else {
        double const radians = turned * std::numbers::pi / 180.0;
        s = std::sin(radians);
        c = std::cos(radians);
    }
}

DMat33 About(DMat33 const& linear, DPoint2D const& center) noexcept {
    return DMat33::Translation(center.x, center.y) * linear *
           DMat33::Translation(-center.x, -center.y);
}

} // namespace

DMat33 const DMat33::IDENTITY;

DMat33::DMat33() noexcept : m{{1.0, 0.0, 0.0}, {0.0, 1.0, 0.0}, {0.0, 0.0, 1.0}} {}

DMat33::DMat33(double m00, double m01, double m02, double m10, double m11, double m12, double m20,
               double m21, double m22) noexcept
    : m{{m00, m01, m02}, {m10, m11, m12}, {m20, m21, m22}} {}

DMat33 DMat33::Rotation(double degrees, DPoint2D const& center) noexcept {
    double s = 0.0;
    double c = 1.0;
    SinCos(degrees, s, c);
    return About(DMat33(c, -s, 0.0, s, c, 0.0, 0.0, 0.0, 1.0), center);
}

DMat33 DMat33::FlipHorizontal(DPoint2D const& center) noexcept {
    return About(DMat33(-1.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0.0, 1.0), center);
}

DMat33 DMat33::FlipVertical(DPoint2D const& center) noexcept {
    return About(DMat33(1.0, 0.0, 0.0, 0.0, -1.0, 0.0, 0.0, 0.0, 1.0), center);
}

DMat33 DMat33::Translation(double dx, double dy) noexcept {
    return DMat33(1.0, 0.0, dx, 0.0, 1.0, dy, 0.0, 0.0, 1.0);
}

DMat33 DMat33::operator*(DMat33 const& other) const noexcept {
    DMat33 out(0, 0, 0, 0, 0, 0, 0, 0, 0);
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column) {
            for (int k = 0; k < 3; ++k) {
                out.m[row][column] += m[row][k] * other.m[k][column];
            }
        }
    }
    return out;
}

DMat33& DMat33::operator*=(DMat33 const& other) noexcept {
    *this = *this * other;
    return *this;
}

DPoint2D DMat33::Transform(DPoint2D const& point) const noexcept {
    double const x = m[0][0] * point.x + m[0][1] * point.y + m[0][2];
    double const y = m[1][0] * point.x + m[1][1] * point.y + m[1][2];
    double const w = m[2][0] * point.x + m[2][1] * point.y + m[2][2];
    if (w != 1.0 && w != 0.0) {
        return DPoint2D(x / w, y / w);
    }
    return DPoint2D(x, y);
}

bool DMat33::operator==(DMat33 const& other) const noexcept {
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column) {
            if (m[row][column] != other.m[row][column]) {
                return false;
            }
        }
    }
    return true;
}

} // namespace dg
