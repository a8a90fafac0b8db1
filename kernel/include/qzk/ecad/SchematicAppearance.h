// One aspect of how a schematic is drawn that a schematic scene's observers hear about when it
// changes. The kernel reports the aspects that came on and those that went off as two sets.
#pragma once

namespace qzk::ecad {

enum SchematicAppearance : unsigned int {
    eSchFillShapes = 0,
    eSchHighlightOnlyVisible = 1,
    eSchOverlapColor = 2,
};

} // namespace qzk::ecad
