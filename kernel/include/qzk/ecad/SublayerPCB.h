// The kernel's own sublayer object of a loaded board, an element of the board's sublayer set.
// It carries what the design file says of the sublayer; the layer tells it from other
// SublayerPCBBase objects by a dynamic cast.
#pragma once

#include "du/Types.h"
#include "qzk/ecad/SublayerPCBBase.h"

#include <string>

namespace qzk::ecad {

class SublayerPCB : public SublayerPCBBase {
public:
    SublayerPCB(short layer, short sublayer, std::string label, unsigned int color, bool visible,
                uint64 identity = 0)
        : SublayerPCBBase(layer, sublayer), label(std::move(label)), color(color), visible(visible),
          identity(identity) {}
    ~SublayerPCB() override;

    std::string label;  // UTF-8
    unsigned int color; // the design's own colour word for the sublayer
    bool visible;       // the design's own visibility
    // Names the sublayer's function across boards: two boards' sublayers with the same word are
    // the same sublayer. Only compared, as an unsigned number.
    uint64 identity;
};

} // namespace qzk::ecad
