// Colour and visibility of an annotation (a board overlay or an image), with its id, name and
// type.
//
// Lists of these are matched by id, not by position: AssignCVAttrs gives each entry of the
// target the colour and visibility of the first source entry with its id, and leaves target
// entries that the source lacks, and source entries that the target lacks, alone. AreDifferent
// asks exactly whether AssignCVAttrs(a, b) would change a; lengths, order, names and types do
// not count, since the user cannot change them through a colour panel.
//
// Preference keys of GetDefaultColorVis: "<key>/color" (a colour word) and "<key>/visible"
// (a boolean), key being PrefKeys::OVERLAYS() or PrefKeys::IMAGES(). Each half is read on its
// own: a missing one leaves the caller's preset.
#pragma once

#include "du/Symbol.h"
#include "du/Types.h"
#include "qzk/ecad/ColorVisInfo.h"

#include <string>
#include <vector>

namespace qzk::ecad {

struct AnnoCVInfo : ColorVisInfo {
    enum Type : unsigned int {
        eNone = 0,
        eOverlay = 1,
        // An image or a compare area.
        eImage = 2,
    };

    // A null name is an empty one.
    AnnoCVInfo(uint64 id, wchar_t const* name, unsigned int color, bool visible, Type type);
    AnnoCVInfo(AnnoCVInfo const&) = default;
    AnnoCVInfo& operator=(AnnoCVInfo const&) = default;
    ~AnnoCVInfo() override;

    static bool AreDifferent(std::vector<AnnoCVInfo> const& a, std::vector<AnnoCVInfo> const& b);
    static void AssignCVAttrs(std::vector<AnnoCVInfo>& target,
                              std::vector<AnnoCVInfo> const& source);
    static void GetDefaultColorVis(du::Symbol const& key, unsigned int& color, bool& visible);

    uint64 id;
    std::wstring name;
    Type type;
};

} // namespace qzk::ecad
