#include "compare/BoardCompareMerge.h"

#include "qzk/ecad/DefaultColorVisibility.h"
#include "qzk/ecad/EcadPCBData.h"
#include "qzk/ecad/SublayerPCB.h"
#include "qzk/ecad/SublayerPCBCompare.h"
#include "qzk/ecad/SublayerPCBCompareCV.h"
#include "qzk/ecad/SublayerPCB_CV.h"
#include "qzk/ecad/SublayerPCB_CVSet.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <tuple>

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

// A board's sublayer with its kernel object, cast once: the walk and the pairing read the
// identity word at every step, and a cast across the library boundary costs more than the rest
// of a step together.
struct Walked {
    SublayerPCBBase* key;
    SublayerPCB const* own;
};

// The order in which each board's sublayers are walked, as a key computed once per sublayer:
// by layer, then fixed handles by number ahead of the design's own handles by identity word
// (every handle by identity on the miscellaneous layer, by number on the board layer). Unlike
// the pairing below, region sublayers don't count here.
struct WalkKey {
    short layer;
    bool byIdentity;
    uint64 value;
    std::size_t index;

    friend bool operator<(WalkKey const& a, WalkKey const& b) {
        return std::tie(a.layer, a.byIdentity, a.value) < std::tie(b.layer, b.byIdentity, b.value);
    }
};

WalkKey MakeWalkKey(Walked const& walked, std::size_t index) {
    SublayerPCBBase const& key = *walked.key;
    bool const byIdentity =
        key.layer != kBoardLayer &&
        (key.layer == DefaultColorVisibility::s_miscLayer || key.sublayer >= kFirstOwnHandle);
    return WalkKey{key.layer, byIdentity,
                   byIdentity ? walked.own->identity : static_cast<uint64>(key.sublayer), index};
}

// The same order for a board that holds a sublayer of another class, which has no identity
// word: such a sublayer goes by its number against any other.
bool SublayerBefore(Walked const& a, Walked const& b) {
    if (a.key->layer != b.key->layer) {
        return a.key->layer < b.key->layer;
    }
    if (a.key->layer == kBoardLayer || a.own == nullptr || b.own == nullptr) {
        return a.key->sublayer < b.key->sublayer;
    }
    if (a.key->layer == DefaultColorVisibility::s_miscLayer) {
        return a.own->identity < b.own->identity;
    }
    if (a.key->sublayer < kFirstOwnHandle || b.key->sublayer < kFirstOwnHandle) {
        return a.key->sublayer < b.key->sublayer;
    }
    return a.own->identity < b.own->identity;
}

// -1: a (of the first board) comes first, +1: b (of the second) comes first, 0: the same
// sublayer. Reads a's layer only: the caller has decided that the layers don't matter, or are
// equal.
int PairSublayers(Walked const& wa, Walked const& wb) {
    SublayerPCBBase const* a = wa.key;
    SublayerPCBBase const* b = wb.key;
    if (a->layer == kBoardLayer) {
        return ThreeWay(a->sublayer, b->sublayer);
    }
    SublayerPCB const* ka = wa.own;
    SublayerPCB const* kb = wb.own;
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

Verdict Decide(Walked const& a, short bottom1, Walked const& b, short bottom2) {
    bool const aAbove = a.key->layer < bottom1;
    bool const bAbove = b.key->layer < bottom2;
    if (aAbove != bAbove) {
        return aAbove ? Verdict::FirstOnly : Verdict::SecondOnly;
    }
    if (aAbove && a.key->layer != b.key->layer) {
        return a.key->layer < b.key->layer ? Verdict::FirstOnly : Verdict::SecondOnly;
    }
    int const order = PairSublayers(a, b);
    if (order == 0) {
        return Verdict::Paired;
    }
    return order < 0 ? Verdict::FirstOnly : Verdict::SecondOnly;
}

std::vector<Walked> WalkOrder(EcadPCBData const& board) {
    // The set holds each sublayer once, so the walk needs no de-duplication.
    std::vector<Walked> walked;
    walked.reserve(board.sublayers.size());
    bool allOwn = true;
    for (SublayerPCBBase* key : board.sublayers) {
        walked.push_back(Walked{key, AsKernelSublayer(key)});
        allOwn = allOwn && walked.back().own != nullptr;
    }
    if (!allOwn) {
        std::sort(walked.begin(), walked.end(), SublayerBefore);
        return walked;
    }
    std::vector<WalkKey> keys;
    keys.reserve(walked.size());
    for (std::size_t i = 0; i < walked.size(); ++i) {
        keys.push_back(MakeWalkKey(walked[i], i));
    }
    std::sort(keys.begin(), keys.end());
    std::vector<Walked> ordered;
    ordered.reserve(walked.size());
    for (WalkKey const& key : keys) {
        ordered.push_back(walked[key.index]);
    }
    return ordered;
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

// The order of CompareColorVisPtrComparator, as a key computed once per row: that comparator
// finds each row's class anew at every comparison, which costs more than the merge itself on a
// large board. The merge tests hold the result to the comparator.
struct RowKey {
    // 0 null, 1 a row without a sublayer pair, 2 a sublayer pair row.
    int rank;
    std::array<short, 6> shownFirstSecond;
    std::uint32_t index;

    friend bool operator<(RowKey const& a, RowKey const& b) {
        if (a.rank != b.rank || a.rank != 2) {
            return a.rank < b.rank;
        }
        return a.shownFirstSecond < b.shownFirstSecond;
    }
};

// known: the row is one the merge made, a sublayer pair row.
RowKey MakeRowKey(qzk::ecad::CompareColorVis const* row, std::uint32_t index, bool known) {
    RowKey key{0, {}, index};
    if (row == nullptr) {
        return key;
    }
    auto const* pair = known ? static_cast<qzk::ecad::SublayerPCBCompareCV const*>(row)
                             : dynamic_cast<qzk::ecad::SublayerPCBCompare const*>(row);
    if (pair == nullptr) {
        key.rank = 1;
        return key;
    }
    key.rank = 2;
    SublayerPCBBase const& shown = pair->HasFirst() ? pair->firstSublayer : pair->secondSublayer;
    key.shownFirstSecond = {shown.layer,
                            shown.sublayer,
                            pair->firstSublayer.layer,
                            pair->firstSublayer.sublayer,
                            pair->secondSublayer.layer,
                            pair->secondSublayer.sublayer};
    return key;
}

// Rows from firstMerged on are the merge's own.
void SortRows(qzk::ecad::CompareColorVisPtrVec& rows, std::size_t firstMerged) {
    std::vector<RowKey> keys;
    keys.reserve(rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        keys.push_back(MakeRowKey(rows[i].Get(), static_cast<std::uint32_t>(i), i >= firstMerged));
    }
    std::sort(keys.begin(), keys.end());
    qzk::ecad::CompareColorVisPtrVec sorted;
    sorted.reserve(rows.size());
    for (RowKey const& key : keys) {
        sorted.push_back(std::move(rows[key.index]));
    }
    rows.swap(sorted);
}

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
    std::vector<Walked> const a = WalkOrder(*firstBoard);
    std::vector<Walked> const b = WalkOrder(*secondBoard);
    short const bottom1 = firstBoard->GetBottom();
    short const bottom2 = secondBoard->GetBottom();
    std::size_t const firstMerged = out.size();
    RowMaker rows(firstBoard, secondBoard, look, out);

    std::size_t i = 0;
    std::size_t j = 0;
    while (i < a.size() && j < b.size()) {
        switch (Decide(a[i], bottom1, b[j], bottom2)) {
        case Verdict::FirstOnly:
            rows.FirstOnly(*a[i++].key);
            break;
        case Verdict::SecondOnly:
            rows.SecondOnly(*b[j++].key);
            break;
        case Verdict::Paired:
            rows.Paired(*a[i++].key, *b[j++].key);
            break;
        }
    }
    for (; i < a.size(); ++i) {
        rows.FirstOnly(*a[i].key);
    }
    for (; j < b.size(); ++j) {
        rows.SecondOnly(*b[j].key);
    }
    SortRows(out, firstMerged);
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
