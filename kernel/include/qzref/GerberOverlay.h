// A Gerber film as overlay data: board data marked as an overlay, whose objects are the film's
// shapes, named after what the film's attributes say of them.
//
// The film is one layer (handle 2, named after the film's .FileFunction, or "Film"). Its shapes
// lie on sublayer 33 ("Film") unless their aperture, or for a region the attribute dictionary,
// gives an .AperFunction: each function is a sublayer of its own from 34 up, named and labelled
// with the function. Shapes that follow one another with the same names make one object, added
// in the order the film draws them:
// - with a pin (.P): the pin "<component>.<pin>" of the component, in its net when .N gives one;
// - with a component (.C) and no pin: a shape of the component's footprint;
// - with a net (.N) alone: a wire of the net;
// - with none: a shape of the footprint of the component "ARTWORK".
// A pin, footprint shape or wire object that the film comes back to later is a further shape
// object "<owner>:<n>" owned by the first. The extent (minX ... maxY) is what the shapes cover.
#pragma once

#include "du/SmartPtr.h"

#include <functional>
#include <string>
#include <string_view>

namespace qzk::ecad {
class EcadPCBData;
}

namespace qzref {

// Throws GerberReader::Error for a malformed film; progress as GerberReader::Read's.
du::SmartPtr<qzk::ecad::EcadPCBData>
ReadGerberOverlay(std::string_view text, std::string const& name,
                  std::function<void(int)> const& progress = {});

} // namespace qzref
