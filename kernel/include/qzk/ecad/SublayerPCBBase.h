// The key of a board sublayer: a (layer, sublayer) pair of handles.
#pragma once

namespace qzk::ecad {

class SublayerPCBBase {
public:
    SublayerPCBBase(short layer, short sublayer) noexcept : layer(layer), sublayer(sublayer) {}
    SublayerPCBBase(SublayerPCBBase const&) = default;
    SublayerPCBBase& operator=(SublayerPCBBase const&) = default;
    virtual ~SublayerPCBBase();

    short layer;
    short sublayer;
};

// Layer first, then sublayer; every ordered set of sublayers uses this order.
bool operator<(SublayerPCBBase const& a, SublayerPCBBase const& b) noexcept;
bool operator==(SublayerPCBBase const& a, SublayerPCBBase const& b) noexcept;

// Orders a set of pointers by what they point at.
template <class P> struct PointerIsLess {
    bool operator()(P a, P b) const noexcept { return *a < *b; }
};

} // namespace qzk::ecad
