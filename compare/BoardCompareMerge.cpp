#include "compare/BoardCompareMerge.h"

#include "qzk/ecad/CompareColorVisPtrComparator.h"
#include "qzk/ecad/DefaultColorVisibility.h"
#include "qzk/ecad/EcadPCBData.h"
#include "qzk/ecad/SublayerPCB.h"
#include "qzk/ecad/SublayerPCBCompareCV.h"
#include "qzk/ecad/SublayerPCB_CV.h"
#include "qzk/ecad/SublayerPCB_CVSet.h"

#include <algorithm>

namespace qzkapp::ecad {
namespace {

using qzk::ecad::DefaultColorVisibility;
using qzk::ecad::EcadPCBData;
using qzk::ecad::SublayerPCB;
using qzk::ecad::SublayerPCBBase;

// Below this a sublayer handle means the same on every board; from it up it is the design's own
// and only the identity word says what the sublayer is.
short const kFirstOwnHandle = 33;
// On the board layer itself every handle is a fixed one, whatever its size.
short const kBoardLayer = 1;

SublayerPCB const* AsKernelSublayer(SublayerPCBBase const* sublayer) {
    return dynamic_cast<SublayerPCB const*>(sublayer);
}

template <class T> int ThreeWay(T a, T b) {
    return a < b ? -1 : (b < a ? 1 : 0);
}

// The order in which each board's sublayers are walked. Unlike the pairing below, region
// sublayers don't count here.
bool SublayerBefore(SublayerPCBBase const* a, SublayerPCBBase const* b) {
    if (a->layer != b->layer) {
        return a->layer < b->layer;
    }
    if (a->layer == kBoardLayer) {
        return a->sublayer < b->sublayer;
    }
    SublayerPCB const* ka = AsKernelSublayer(a);
    SublayerPCB const* kb = AsKernelSublayer(b);
    if (ka == nullptr || kb == nullptr) {
        return a->sublayer < b->sublayer;
    }
    if (a->layer == DefaultColorVisibility::s_miscLayer) {
        return ka->identity < kb->identity;
    }
    if (a->sublayer < kFirstOwnHandle || b->sublayer < kFirstOwnHandle) {
        return a->sublayer < b->sublayer;
    }
    return ka->identity < kb->identity;
}

// -1: a (of the first board) comes first, +1: b (of the second) comes first, 0: the same
// sublayer. Reads a's layer only: the caller has decided that the layers don't matter, or are
// equal.
int PairSublayers(SublayerPCBBase const* a, SublayerPCBBase const* b) {
    if (a->layer == kBoardLayer) {
        return ThreeWay(a->sublayer, b->sublayer);
    }
    SublayerPCB const* ka = AsKernelSublayer(a);
    SublayerPCB const* kb = AsKernelSublayer(b);
    if (ka == nullptr || kb == nullptr) {
        return ThreeWay(a->sublayer, b->sublayer);
    }
    if (a->layer == DefaultColorVisibility::s_miscLayer) {
        return ThreeWay(ka->identity, kb->identity);
    }
    // Both by a's layer: b's own layer may be another one from the bottom layer on.
    bool const ra = DefaultColorVisibility::IsRegionSublayer(a->layer, a->sublayer);
    bool const rb = DefaultColorVisibility::IsRegionSublayer(a->layer, b->sublayer);
    if (a->sublayer < kFirstOwnHandle || b->sublayer < kFirstOwnHandle) {
        return ThreeWay(a->sublayer, b->sublayer);
    }
    if (ra != rb) {
        return ra ? -1 : 1;
    }
    if (ra) {
        return ThreeWay(a->sublayer, b->sublayer);
    }
    return ThreeWay(ka->identity, kb->identity);
}

enum class Verdict { FirstOnly, SecondOnly, Paired };

Verdict Decide(SublayerPCBBase const* a, short bottom1, SublayerPCBBase const* b, short bottom2) {
    bool const aAbove = a->layer < bottom1;
    bool const bAbove = b->layer < bottom2;
    if (aAbove != bAbove) {
        return aAbove ? Verdict::FirstOnly : Verdict::SecondOnly;
    }
    if (aAbove && a->layer != b->layer) {
        return a->layer < b->layer ? Verdict::FirstOnly : Verdict::SecondOnly;
    }
    int const order = PairSublayers(a, b);
    if (order == 0) {
        return Verdict::Paired;
    }
    return order < 0 ? Verdict::FirstOnly : Verdict::SecondOnly;
}

std::vector<SublayerPCBBase*> WalkOrder(EcadPCBData const& board) {
    std::vector<SublayerPCBBase*> out(board.sublayers.begin(), board.sublayers.end());
    std::sort(out.begin(), out.end(), SublayerBefore);
    out.erase(std::unique(out.begin(), out.end()), out.end());
    return out;
}

class RowMaker {
public:
    RowMaker(du::SmartPtr<EcadPCBData> first, du::SmartPtr<EcadPCBData> second,
             CompareRowLook const& look, qzk::ecad::CompareColorVisPtrVec& out)
        : first_(std::move(first)), second_(std::move(second)), look_(look), out_(out) {
        qzk::ecad::SublayerPCB_CV::GetPrefs(prefs_);
    }

    void FirstOnly(SublayerPCBBase const& a) {
        Look const row = Defaults(first_, a);
        out_.push_back(du::MakeCounted<qzk::ecad::SublayerPCBCompareCV>(
            a.layer, a.sublayer, row.first, 0, 0, row.second, row.common, look_.mode, look_.flag,
            row.visible));
    }

    void SecondOnly(SublayerPCBBase const& b) {
        Look const row = Defaults(second_, b);
        out_.push_back(du::MakeCounted<qzk::ecad::SublayerPCBCompareCV>(
            0, 0, row.first, b.layer, b.sublayer, row.second, row.common, look_.mode, look_.flag,
            row.visible));
    }

    void Paired(SublayerPCBBase const& a, SublayerPCBBase const& b) {
        Look const row = Defaults(first_, a);
        out_.push_back(du::MakeCounted<qzk::ecad::SublayerPCBCompareCV>(
            a, row.first, b, row.second, row.common, look_.mode, look_.flag, row.visible));
    }

private:
    struct Look {
        unsigned int first;
        unsigned int second;
        unsigned int common;
        bool visible;
    };

    Look Defaults(du::SmartPtr<EcadPCBData> const& board, SublayerPCBBase const& key) const {
        qzk::ecad::SublayerPCB_CV cv(SublayerPCBBase(key.layer, key.sublayer));
        qzk::ecad::SublayerPCB_CV::GetDefaultColorVis(board, prefs_, cv, false, false);
        auto own = [&cv](unsigned int color) {
            return color == CompareRowLook::kOwnColor ? cv.color : color;
        };
        return Look{own(look_.firstColor), own(look_.secondColor), own(look_.commonColor),
                    cv.visible};
    }

    du::SmartPtr<EcadPCBData> const first_;
    du::SmartPtr<EcadPCBData> const second_;
    CompareRowLook const look_;
    qzk::ecad::CompareColorVisPtrVec& out_;
    qzk::ecad::SublayerPCB_CVSet prefs_;
};

bool DrawsBefore(short a, short b) {
    if ((a < 0) != (b < 0)) {
        return a >= 0;
    }
    return a < b;
}

} // namespace

void MergeBoardSublayers(du::SmartPtr<qzk::ecad::EcadDesignData> const& first,
                         du::SmartPtr<qzk::ecad::EcadDesignData> const& second,
                         CompareRowLook const& look, qzk::ecad::CompareColorVisPtrVec& out) {
    auto firstBoard = du::DynamicCast<EcadPCBData>(first);
    auto secondBoard = du::DynamicCast<EcadPCBData>(second);
    if (!firstBoard || !secondBoard) {
        return;
    }
    std::vector<SublayerPCBBase*> const a = WalkOrder(*firstBoard);
    std::vector<SublayerPCBBase*> const b = WalkOrder(*secondBoard);
    short const bottom1 = firstBoard->GetBottom();
    short const bottom2 = secondBoard->GetBottom();
    RowMaker rows(firstBoard, secondBoard, look, out);

    std::size_t i = 0;
    std::size_t j = 0;
    while (i < a.size() && j < b.size()) {
        switch (Decide(a[i], bottom1, b[j], bottom2)) {
        case Verdict::FirstOnly:
            rows.FirstOnly(*a[i++]);
            break;
        case Verdict::SecondOnly:
            rows.SecondOnly(*b[j++]);
            break;
        case Verdict::Paired:
            rows.Paired(*a[i++], *b[j++]);
            break;
        }
    }
    for (; i < a.size(); ++i) {
        rows.FirstOnly(*a[i]);
    }
    for (; j < b.size(); ++j) {
        rows.SecondOnly(*b[j]);
    }
    std::sort(out.begin(), out.end(), qzk::ecad::CompareColorVisPtrComparator());
}

void MergedDrawOrder(du::SmartPtr<qzk::ecad::EcadDesignData> const& first,
                     du::SmartPtr<qzk::ecad::EcadDesignData> const& second,
                     std::vector<short>& out) {
    out.clear();
    auto firstBoard = du::DynamicCast<EcadPCBData>(first);
    auto secondBoard = du::DynamicCast<EcadPCBData>(second);
    if (!firstBoard || !secondBoard) {
        return;
    }
    for (EcadPCBData const* board : {firstBoard.Get(), secondBoard.Get()}) {
        for (SublayerPCBBase const* key : board->sublayers) {
            out.push_back(key->layer);
        }
    }
    // Negative handles too are ordered among themselves, so that a handle both boards have
    // ends up beside its twin, and appears once.
    std::sort(out.begin(), out.end(), DrawsBefore);
    out.erase(std::unique(out.begin(), out.end()), out.end());
}

} // namespace qzkapp::ecad
