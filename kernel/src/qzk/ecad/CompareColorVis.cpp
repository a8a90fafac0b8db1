#include "qzk/ecad/CompareColorVis.h"

namespace qzk::ecad {

CompareColorVis::~CompareColorVis() = default;

du::SmartPtr<CompareColorVis> CompareColorVis::Clone() const {
    return du::SmartPtr<CompareColorVis>(new CompareColorVis(*this));
}

bool CompareColorVis::SameColorVis(CompareColorVis const& other) const noexcept {
    return firstColor == other.firstColor && secondColor == other.secondColor &&
           commonColor == other.commonColor && showMode == other.showMode && flag == other.flag &&
           visible == other.visible;
}

} // namespace qzk::ecad
