#include "qzk/ecad/SublayerPCBBase.h"

namespace qzk::ecad {

SublayerPCBBase::~SublayerPCBBase() = default;

bool operator<(SublayerPCBBase const& a, SublayerPCBBase const& b) noexcept {
    return a.layer != b.layer ? a.layer < b.layer : a.sublayer < b.sublayer;
}

bool operator==(SublayerPCBBase const& a, SublayerPCBBase const& b) noexcept {
    return a.layer == b.layer && a.sublayer == b.sublayer;
}

} // namespace qzk::ecad
