// The colour and visibility of every group of a scene, ordered by name.
//
// Merge rules (kept plain so a test can state them):
// - Update(source): union; an entry of source replaces the colour and visibility of the entry
//   of the same name, and an entry of a new name is added whole. Default colours and groupFlag
//   of existing entries stay.
// - Update(fresh, pending): the names become exactly those of fresh (the host's current group
//   list). For each name the colour and visibility come from this set if it already holds the
//   name (the user's latest choice), else from pending (colours that came before the groups),
//   else from fresh. groupFlag and the defaults always come from fresh. fresh and pending are
//   not changed.
// - Both report true when the content changed in any way that AreDifferent sees.
// - ResetToDefault: every entry takes its default colour and visibility.
// The flag given to the constructor tells that the set belongs to a schematic scene (class
// type 73). The reference kernel draws groups alike on both kinds, so it changes no result.
#pragma once

#include "qzk/ecad/GroupCVInfo.h"

#include <set>

namespace qzk::ecad {

class GroupCVInfoSet : public std::set<GroupCVInfo> {
public:
    explicit GroupCVInfoSet(bool schematic) : schematic_(schematic) {}
    // Copy and assignment take the entries and the flag.
    GroupCVInfoSet(GroupCVInfoSet const&) = default;
    GroupCVInfoSet& operator=(GroupCVInfoSet const&) = default;
    ~GroupCVInfoSet();

    // Takes over the entries of source; this set keeps its own flag.
    void SetInfo(GroupCVInfoSet const& source);
    bool Update(GroupCVInfoSet const& source);
    // source is non-const for the platform's signature only; it is left as it is.
    bool Update(GroupCVInfoSet& source, GroupCVInfoSet const& pending);
    void ResetToDefault();

    bool IsSchematic() const noexcept { return schematic_; }

private:
    bool schematic_;
};

} // namespace qzk::ecad
