// The order in which a board compare lists its merged sublayers.
//
// A null entry comes first, then entries without a sublayer pair (equivalent among
// themselves), then sublayer entries by their shown sublayer: the first board's when the
// entry has one, otherwise the second's. Entries that show the same sublayer are ordered by
// the first pair, then the second; so a second-only row comes just ahead of the paired row of
// the same sublayer. The order is a strict weak order, fit for std::sort.
#pragma once

#include "du/SmartPtr.h"
#include "qzk/ecad/CompareColorVis.h"

namespace qzk::ecad {

class CompareColorVisPtrComparator {
public:
    bool operator()(du::SmartPtr<CompareColorVis> const& a,
                    du::SmartPtr<CompareColorVis> const& b) const;
};

} // namespace qzk::ecad
