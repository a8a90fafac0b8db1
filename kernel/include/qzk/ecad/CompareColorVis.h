// The colours and mode of one compare entry: what only the first design has, what only the
// second has, and what both have. Reference counted; lists of them share entries until cloned.
//
// A colour word of 0xFFFFFFFF stands for the sublayer's own default colour. The kernel stores
// the mode and the flag and reports them in its scene state; the names of the modes are the
// kernel's vocabulary.
#pragma once

#include "du/RefCounted.h"
#include "du/SmartPtr.h"

namespace qzk::ecad {

struct CompareColorVis : du::RefCounted {
    enum ShowMode : unsigned int {
        eShowAll = 0,
        eShowFirstOnly = 1,
        eShowSecondOnly = 2,
        eShowCommonOnly = 3,
        eShowDifferences = 4,
        eShowDimmedCommon = 5,
        eShowColoredDifferences = 6,
    };

    CompareColorVis(unsigned int firstColor, unsigned int secondColor, unsigned int commonColor,
                    ShowMode showMode, bool flag, bool visible) noexcept
        : firstColor(firstColor), secondColor(secondColor), commonColor(commonColor),
          showMode(showMode), flag(flag), visible(visible) {}
    CompareColorVis(CompareColorVis const&) = default;
    CompareColorVis& operator=(CompareColorVis const&) = default;
    ~CompareColorVis() override;

    // A new object of the same dynamic type and content; the returned pointer holds the only
    // reference.
    virtual du::SmartPtr<CompareColorVis> Clone() const;

    // Same colours, mode, flag and visibility; what a derived record adds is not looked at.
    bool SameColorVis(CompareColorVis const& other) const noexcept;

    unsigned int firstColor;
    unsigned int secondColor;
    unsigned int commonColor;
    ShowMode showMode;
    bool flag;
    bool visible;
};

} // namespace qzk::ecad
