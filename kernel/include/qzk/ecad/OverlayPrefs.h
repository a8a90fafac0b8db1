// How a newly loaded overlay is placed: turned by quarter turns and flipped, about its centre.
//
// Init reads the boolean preferences "Ecad/Overlay/rotate_90", "Ecad/Overlay/rotate_180",
// "Ecad/Overlay/rotate_270" (the first one set wins), "Ecad/Overlay/flip_horizontal" and
// "Ecad/Overlay/flip_vertical"; what is missing stays at no transform. Without a world Init
// leaves the start values.
#pragma once

#include "dg/DMat33.h"
#include "dg/DPoint2D.h"

namespace qzk::ecad {

class OverlayPrefs {
public:
    OverlayPrefs() = default;
    OverlayPrefs(OverlayPrefs const&) = default;
    OverlayPrefs& operator=(OverlayPrefs const&) = default;
    ~OverlayPrefs() = default;

    void Init();
    // matrix becomes matrix * flips(center) * rotation(center): the overlay is turned first,
    // then flipped, both about center, and the transform already in matrix applies last.
    void ApplyTransform(dg::DMat33& matrix, dg::DPoint2D const& center) const;

    bool operator==(OverlayPrefs const& other) const noexcept;

    // Degrees, counter-clockwise: 0, 90, 180 or 270.
    int rotation = 0;
    bool flipHorizontal = false;
    bool flipVertical = false;
};

} // namespace qzk::ecad
