// The merge of two boards' layer stacks into one list of compare rows: each row a sublayer of
// the first board only, of the second only, or one that the two have in common.
//
// Above each board's bottom layer the rows line up by layer handle; from the bottom layer on,
// the layer handles are no longer compared and the sublayers pair by function alone (fixed
// handles below 33 by number, the design's own handles by identity word, region sublayers only
// with region sublayers of the same handle), however many inner layers each board has.
#pragma once

#include "du/SmartPtr.h"
#include "qzk/ecad/CompareColorVis.h"
#include "qzk/ecad/CompareColorVisPtrVec.h"

#include <vector>

namespace qzk::ecad {
class EcadDesignData;
}

namespace qzkapp::ecad {

// The colours and mode every merged row gets. A colour of kOwnColor is replaced, row by row, by
// the colour of the row's own sublayer.
struct CompareRowLook {
    static constexpr unsigned int kOwnColor = 0xFFFFFFFFu;

    unsigned int firstColor;
    unsigned int secondColor;
    unsigned int commonColor;
    qzk::ecad::CompareColorVis::ShowMode mode;
    bool flag;
};

// Appends the merged rows of two boards to out and sorts out as a whole, rows that were there
// already included. Nothing is appended unless both are boards. Each row's visibility, and each
// own colour, are the defaults of its sublayer: of the first board for a paired row.
void MergeBoardSublayers(du::SmartPtr<qzk::ecad::EcadDesignData> const& first,
                         du::SmartPtr<qzk::ecad::EcadDesignData> const& second,
                         CompareRowLook const& look, qzk::ecad::CompareColorVisPtrVec& out);

// The union of the two boards' layer handles: those that aren't negative ascending, the
// negative ones behind them. Empty unless both are boards.
void MergedDrawOrder(du::SmartPtr<qzk::ecad::EcadDesignData> const& first,
                     du::SmartPtr<qzk::ecad::EcadDesignData> const& second,
                     std::vector<short>& out);

} // namespace qzkapp::ecad
