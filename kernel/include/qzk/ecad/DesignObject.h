// One object of a loaded design (a component, net, pin, wire, footprint, shape or image), and
// what it draws.
//
// Design objects are plain records owned by their design data (EcadDesignData); the scene layer
// sees them only as the opaque void * of selection and appearance items, and asks the design's
// IcmApiEcad session about them. Every object is known by its name for as long as it lives, so
// that the kernel's call record can print items by name.
#pragma once

#include "dg/DBox2D.h"

#include <string>
#include <vector>

namespace qzk::ecad {

// Optional geometry in millimetres, read from the design file's "geometry" lists or from a Gerber
// film.
struct DesignShape {
    enum Kind { Line, Arc, Circle, Rectangle, Polygon, Pad };
    Kind kind = Line;
    // Line: x1 y1 x2 y2; Arc: cx cy r start end (degrees, counter-clockwise); Circle: cx cy r;
    // Rectangle: x1 y1 x2 y2; Polygon: x y pairs; Pad: cx cy width height.
    std::vector<double> points;
    double width = 0.2; // stroke width of lines and arcs
    // A film's clear object: it erases what the film drew before it instead of drawing.
    bool clear = false;
    // Polygon only, when not empty: the points hold several contours, one after the other; each
    // entry is the number of x y pairs of one contour, negative for a contour that erases what
    // the contours before it in this shape cover (and nothing else). Without entries the points
    // are one contour. Contours are filled by the non-zero winding rule.
    std::vector<int> contours;

    // What the shape covers, strokes included; empty for a shape without enough points.
    dg::DBox2D GetRange() const;
};

struct DesignObject {
    DesignObject(int type, std::string name);
    DesignObject(DesignObject const&) = delete;
    DesignObject& operator=(DesignObject const&) = delete;
    virtual ~DesignObject();

    int const type;         // IcmApiEcad::ObjectType
    std::string const name; // UTF-8; pins are "<component>.<pin>"
    short layer = 0;        // board: layer handle; schematic: 0
    short sublayer = -1;    // board: sublayer handle, -1 for a component; schematic: layer handle
    unsigned int sheet = 0xFFFFFFFF; // schematic sheet from 0; 0xFFFFFFFF on a board
    // For a pin its component, for a shape its footprint, for a footprint its component.
    DesignObject* owner = nullptr;
    // Not owned; in the order of the design file.
    std::vector<DesignObject*> children;
    // What the object draws, on its own layer and sublayer; empty when the file gives none.
    std::vector<DesignShape> geometry;
};

} // namespace qzk::ecad
