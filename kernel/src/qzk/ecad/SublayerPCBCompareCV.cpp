#include "qzk/ecad/SublayerPCBCompareCV.h"

namespace qzk::ecad {

SublayerPCBCompareCV::SublayerPCBCompareCV(SublayerPCBBase const& first, unsigned int firstColor,
                                           SublayerPCBBase const& second, unsigned int secondColor,
                                           unsigned int commonColor, ShowMode mode, bool flag,
                                           bool visible)
    : CompareColorVis(firstColor, secondColor, commonColor, mode, flag, visible),
      SublayerPCBCompare(first, second) {}

SublayerPCBCompareCV::SublayerPCBCompareCV(short firstLayer, short firstSublayer,
                                           unsigned int firstColor, short secondLayer,
                                           short secondSublayer, unsigned int secondColor,
                                           unsigned int commonColor, ShowMode mode, bool flag,
                                           bool visible)
    : SublayerPCBCompareCV(SublayerPCBBase(firstLayer, firstSublayer), firstColor,
                           SublayerPCBBase(secondLayer, secondSublayer), secondColor, commonColor,
                           mode, flag, visible) {}

SublayerPCBCompareCV::~SublayerPCBCompareCV() = default;

du::SmartPtr<CompareColorVis> SublayerPCBCompareCV::Clone() const {
    return du::SmartPtr<CompareColorVis>(new SublayerPCBCompareCV(*this));
}

} // namespace qzk::ecad
