// One aspect of how a board is drawn that a board scene's observers hear about when it changes.
// The kernel reports the aspects that came on and those that went off as two sets.
#pragma once

namespace qzk::ecad {

enum PCBAppearance : unsigned int {
    ePCBFillShapes = 0,
    ePCBShowLogicalConnection = 1,
    ePCBHighlightOnlyVisible = 2,
    ePCBIsolateOnlyVisible = 3,
    ePCBOverlapColor = 4,
};

} // namespace qzk::ecad
