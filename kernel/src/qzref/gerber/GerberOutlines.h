// The outlines a film's flashes and regions are made of: flat lists of x y pairs, in millimetres.
#pragma once

#include <vector>

namespace qzref::gerber {

using Points = std::vector<double>;

// How far a chord may stray from the arc it stands for; well below a pixel at 2400 dpi.
constexpr double kChordTolerance = 0.002;

// Appends the arc about (cx, cy) from angle a0 to a1 (radians; a1 < a0 runs clockwise) without its
// first point, as chords.
void AppendArc(Points& out, double cx, double cy, double r, double a0, double a1);
// A circle about (cx, cy), counter-clockwise.
Points Circle(double cx, double cy, double r);
// An axis-parallel rectangle of w by h centred on (cx, cy), counter-clockwise.
Points Rectangle(double cx, double cy, double w, double h);
// A rectangle with half-circle ends along its longer side, counter-clockwise.
Points Obround(double cx, double cy, double w, double h);
// A regular polygon of n corners on a circle of diameter d, the first at angle degrees.
Points RegularPolygon(double cx, double cy, double d, int n, double degrees);
// Turns the points about the origin by degrees, counter-clockwise.
void Rotate(Points& points, double degrees);
void Translate(Points& points, double dx, double dy);
// The outline with a round hole of diameter d at (cx, cy) cut out, as one contour: the outline
// counter-clockwise, a cut to the hole, the hole clockwise and back, so that the non-zero rule
// leaves the hole empty.
Points WithHole(Points outline, double cx, double cy, double d);
// The convex hull of the points, counter-clockwise.
Points Hull(Points const& points);
// True when the contour runs counter-clockwise (its signed area is positive).
bool CounterClockwise(Points const& points);
void Reverse(Points& points);

} // namespace qzref::gerber
