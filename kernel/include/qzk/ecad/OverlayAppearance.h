// One aspect of an overlay's look that a scene's observers hear about when it changes: the
// aspects that came on and those that went off travel as two sets.
#pragma once

namespace qzk::ecad {

enum OverlayAppearance : unsigned int {
    eOverlayVisible = 0,
    eOverlaySelected = 1,
    eOverlayPreselected = 2,
};

} // namespace qzk::ecad
