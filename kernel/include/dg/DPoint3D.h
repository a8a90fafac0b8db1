// A point in space; the ECAD kernel keeps pick points in this form.
#pragma once

namespace dg {

class DPoint3D {
public:
    static DPoint3D const ORIGIN;

    DPoint3D() noexcept = default;
    DPoint3D(double x, double y, double z) noexcept : x(x), y(y), z(z) {}

    bool operator==(DPoint3D const& other) const noexcept {
        return x == other.x && y == other.y && z == other.z;
    }
    bool operator!=(DPoint3D const& other) const noexcept { return !(*this == other); }

    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

} // namespace dg
