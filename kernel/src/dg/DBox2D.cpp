#include "dg/DBox2D.h"

#include <algorithm>
#include <limits>

namespace dg {

DBox2D::DBox2D() noexcept
    : low(std::numeric_limits<double>::max(), std::numeric_limits<double>::max()),
      high(std::numeric_limits<double>::lowest(), std::numeric_limits<double>::lowest()) {}

DBox2D::DBox2D(DPoint2D const& a, DPoint2D const& b) noexcept
    : low(std::min(a.x, b.x), std::min(a.y, b.y)), high(std::max(a.x, b.x), std::max(a.y, b.y)) {}

bool DBox2D::IsEmpty() const noexcept {
    return low.x > high.x || low.y > high.y;
}

void DBox2D::Extend(DPoint2D const& point) noexcept {
    low.x = std::min(low.x, point.x);
    low.y = std::min(low.y, point.y);
    high.x = std::max(high.x, point.x);
    high.y = std::max(high.y, point.y);
}

void DBox2D::Extend(DBox2D const& box) noexcept {
    if (!box.IsEmpty()) {
        Extend(box.low);
        Extend(box.high);
    }
}

DPoint2D DBox2D::GetCenter() const noexcept {
    if (IsEmpty()) {
        return DPoint2D::BAD;
    }
    return DPoint2D((low.x + high.x) / 2.0, (low.y + high.y) / 2.0);
}

double DBox2D::Width() const noexcept {
    return IsEmpty() ? 0.0 : high.x - low.x;
}

double DBox2D::Height() const noexcept {
    return IsEmpty() ? 0.0 : high.y - low.y;
}

} // namespace dg
