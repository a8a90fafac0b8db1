// The pair of board sublayers a compare entry stands for. A side without a sublayer holds the
// handles (0, 0).
#pragma once

#include "qzk/ecad/SublayerPCBBase.h"

namespace qzk::ecad {

class SublayerPCBCompare {
public:
    SublayerPCBCompare(SublayerPCBBase const& first, SublayerPCBBase const& second)
        : firstSublayer(first), secondSublayer(second) {}
    SublayerPCBCompare(SublayerPCBCompare const&) = default;
    SublayerPCBCompare& operator=(SublayerPCBCompare const&) = default;
    virtual ~SublayerPCBCompare();

    bool HasFirst() const noexcept {
        return firstSublayer.layer != 0 || firstSublayer.sublayer != 0;
    }
    bool HasSecond() const noexcept {
        return secondSublayer.layer != 0 || secondSublayer.sublayer != 0;
    }

    SublayerPCBBase firstSublayer;
    SublayerPCBBase secondSublayer;
};

} // namespace qzk::ecad
