#include "dg/DPoint2D.h"

#include "dg/DMat33.h"

#include <limits>

namespace dg {

DPoint2D const DPoint2D::BAD(std::numeric_limits<double>::max(),
                             std::numeric_limits<double>::max());

DPoint2D& DPoint2D::operator*=(DMat33 const& matrix) noexcept {
    *this = matrix.Transform(*this);
    return *this;
}

bool DPoint2D::IsBad() const noexcept {
    return *this == BAD;
}

} // namespace dg
