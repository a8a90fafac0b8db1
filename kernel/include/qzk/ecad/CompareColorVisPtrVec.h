// A list of compare entries. Copies share the entries; Clone makes a list of its own.
#pragma once

#include "du/SmartPtr.h"
#include "qzk/ecad/CompareColorVis.h"

#include <vector>

namespace qzk::ecad {

class CompareColorVisPtrVec : public std::vector<du::SmartPtr<CompareColorVis>> {
public:
    CompareColorVisPtrVec() = default;
    CompareColorVisPtrVec(CompareColorVisPtrVec const&) = default;
    CompareColorVisPtrVec& operator=(CompareColorVisPtrVec const&) = default;
    ~CompareColorVisPtrVec();

    // Empties target, then appends a clone of each entry in order; a null entry stays null.
    void Clone(CompareColorVisPtrVec& target) const;
    // Position by position: a different length, a null against an entry, other colours, mode,
    // flag or visibility, or (for sublayer entries) another sublayer pair or another class.
    static bool AreDifferent(CompareColorVisPtrVec const& a, CompareColorVisPtrVec const& b);
};

} // namespace qzk::ecad
