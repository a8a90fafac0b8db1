// One object of a loaded design: a component, net, pin, wire, footprint, shape or image.
//
// Design objects are plain records owned by their design data (qzk::ecad::EcadDesignData); the
// scene layer sees them only as the opaque void * of selection and appearance items, and asks
// the design's IcmApiEcad session about them. Every object is entered in qzref::DesignObjects
// under its name for as long as it lives, so that the journal can print items by name.
#pragma once

#include "qzref/DesignGeometry.h"

#include <string>
#include <vector>

namespace qzref {

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

} // namespace qzref
