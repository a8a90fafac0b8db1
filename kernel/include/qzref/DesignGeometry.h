// What a design object draws: optional geometry in millimetres, read from the design file's
// "geometry" lists (docs/design-format.md). Only the reference renderer looks at it.
#pragma once

#include <vector>

namespace qzref {

struct DesignShape {
    enum Kind { Line, Arc, Circle, Rectangle, Polygon, Pad };
    Kind kind = Line;
    // Line: x1 y1 x2 y2; Arc: cx cy r start end (degrees, counter-clockwise); Circle: cx cy r;
    // Rectangle: x1 y1 x2 y2; Polygon: x y pairs; Pad: cx cy width height.
    std::vector<double> points;
    double width = 0.2; // stroke width of lines and arcs
};

} // namespace qzref
