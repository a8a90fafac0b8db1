// Colour and visibility of one thing on screen: the root of the colour records.
#pragma once

#include "dg/Color.h"

namespace qzk::ecad {

struct ColorVisInfo {
    // Opaque black (the blank colour), shown.
    ColorVisInfo() noexcept = default;
    ColorVisInfo(unsigned int color, bool visible) noexcept : visible(visible), color(color) {}
    ColorVisInfo(ColorVisInfo const&) = default;
    ColorVisInfo& operator=(ColorVisInfo const&) = default;
    virtual ~ColorVisInfo();

    dg::Color GetColor() const noexcept { return dg::Color(color, true); }
    // Same colour word and visibility; what a derived record adds is not looked at.
    bool SameColorVis(ColorVisInfo const& other) const noexcept {
        return visible == other.visible && color == other.color;
    }

    bool visible = true;
    unsigned int color = 0x01000000u;
};

} // namespace qzk::ecad
