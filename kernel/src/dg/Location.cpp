#include "dg/Location.h"

namespace dg {

bool Location::IsSet() const noexcept {
    return width > 0.0;
}

bool Location::operator==(Location const& other) const noexcept {
    return center == other.center && width == other.width;
}

} // namespace dg
