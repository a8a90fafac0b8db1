// The colours and mode of one merged board sublayer of a board compare.
#pragma once

#include "qzk/ecad/CompareColorVis.h"
#include "qzk/ecad/SublayerPCBCompare.h"

namespace qzk::ecad {

struct SublayerPCBCompareCV : CompareColorVis, SublayerPCBCompare {
    SublayerPCBCompareCV(SublayerPCBBase const& first, unsigned int firstColor,
                         SublayerPCBBase const& second, unsigned int secondColor,
                         unsigned int commonColor, ShowMode mode, bool flag, bool visible);
    SublayerPCBCompareCV(short firstLayer, short firstSublayer, unsigned int firstColor,
                         short secondLayer, short secondSublayer, unsigned int secondColor,
                         unsigned int commonColor, ShowMode mode, bool flag, bool visible);
    SublayerPCBCompareCV(SublayerPCBCompareCV const&) = default;
    ~SublayerPCBCompareCV() override;

    du::SmartPtr<CompareColorVis> Clone() const override;
};

} // namespace qzk::ecad
