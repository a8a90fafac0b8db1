// Preference nodes of the annotation defaults (see AnnoCVInfo::GetDefaultColorVis).
#pragma once

#include "du/Symbol.h"

namespace qzk::ecad {

class PrefKeys {
public:
    // "Ecad/Overlays"
    static du::Symbol const& OVERLAYS();
    // "Ecad/Images"
    static du::Symbol const& IMAGES();
};

} // namespace qzk::ecad
