// The content types of ECAD selection items, and which of them can be highlighted or isolated.
#pragma once

#include "du/Symbol.h"

namespace qzk::ecad {

class selection_types {
public:
    // "QzkEcadObject": an object of a design (qzk::ecad::SelectionItem).
    static du::Symbol const& ECAD_OBJECT();
    // "QzkEcadGeometry": geometry inside a design object; its parent item is what counts.
    static du::Symbol const& ECAD_GEOMETRY();
    // "QzkEcadOverlay": an item of an overlay.
    static du::Symbol const& ECAD_OVERLAY();

    // True for ECAD_OBJECT only: geometry is highlighted through its parent, and overlays
    // select in their own manner.
    static bool Belongs(du::Symbol const& contentType);
};

} // namespace qzk::ecad
