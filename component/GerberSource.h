// Whether a design source counts as a Gerber overlay for the board compare kind.
//
// Deliberately a substring search: the source's file extension, lower-cased byte by byte, is
// looked for anywhere in qzk::EcadDesign::GetGerberExts(). So a fragment of a longer entry passes,
// and a source with no extension always passes (the empty string is found at position 0). The
// list itself is not lower-cased. Internal to the layer; the factory is its one user.
#pragma once

#include "du/SmartPtr.h"

namespace qzk {
class ViewableSource;
}

namespace qzkapp::ecad {

bool IsGerberSource(du::SmartPtr<qzk::ViewableSource> const& source);

} // namespace qzkapp::ecad
