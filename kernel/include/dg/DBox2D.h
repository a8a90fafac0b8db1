// An axis-aligned box of the plane. A default box is empty and grows with Extend.
#pragma once

#include "dg/DPoint2D.h"

namespace dg {

class DBox2D {
public:
    DBox2D() noexcept;
    // The corners may come in any order.
    DBox2D(DPoint2D const& a, DPoint2D const& b) noexcept;

    bool IsEmpty() const noexcept;
    void Extend(DPoint2D const& point) noexcept;
    void Extend(DBox2D const& box) noexcept;
    // DPoint2D::BAD for an empty box, so that a caller placing something on an empty design
    // sees it rather than a made-up origin.
    DPoint2D GetCenter() const noexcept;
    double Width() const noexcept;
    double Height() const noexcept;

    DPoint2D low;
    DPoint2D high;
};

} // namespace dg
