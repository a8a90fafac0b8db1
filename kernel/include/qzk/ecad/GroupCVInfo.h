// Colour and visibility of a named group of objects; the element of a GroupCVInfoSet.
//
// Besides what the user sees, an entry remembers its default colour and visibility, the ones
// it was made with (for a group from the host's list: the host's colour). GroupCVInfoSet's
// ResetToDefault returns to them; copies carry them along.
#pragma once

#include "du/Symbol.h"
#include "qzk/ecad/ColorVisInfo.h"

namespace qzk::ecad {

class GroupCVInfoSet;

struct GroupCVInfo : ColorVisInfo {
    // A search key: only the name counts in a look-up.
    explicit GroupCVInfo(char const* name);
    GroupCVInfo(char const* name, unsigned int color, bool visible);
    GroupCVInfo(GroupCVInfo const&) = default;
    GroupCVInfo& operator=(GroupCVInfo const&) = default;
    ~GroupCVInfo() override;

    // True when the sets differ in their names, or an entry of the same name differs in colour,
    // visibility or groupFlag. The defaults and the sets' own flags are not compared.
    static bool AreDifferent(GroupCVInfoSet const& a, GroupCVInfoSet const& b);

    // Byte by byte as signed characters, a proper prefix first: a name with a byte of 0x80 or
    // above sorts ahead of plain ASCII names.
    bool operator<(GroupCVInfo const& other) const noexcept;

    du::Symbol name;
    bool groupFlag = false;
    unsigned int defaultColor;
    bool defaultVisible;
};

} // namespace qzk::ecad
