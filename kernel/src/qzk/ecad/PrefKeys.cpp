#include "qzk/ecad/PrefKeys.h"

namespace qzk::ecad {

du::Symbol const& PrefKeys::OVERLAYS() {
    static du::Symbol const key("Ecad/Overlays");
    return key;
}

du::Symbol const& PrefKeys::IMAGES() {
    static du::Symbol const key("Ecad/Images");
    return key;
}

} // namespace qzk::ecad
