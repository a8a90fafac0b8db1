#include "qzk/ecad/CompareColorVisPtrComparator.h"

#include "qzk/ecad/SublayerPCBCompare.h"

#include <tuple>

namespace qzk::ecad {
namespace {

using Key = std::tuple<short, short, short, short, short, short>;

Key SortKey(SublayerPCBCompare const& entry) {
    SublayerPCBBase const& shown = entry.HasFirst() ? entry.firstSublayer : entry.secondSublayer;
    return Key(shown.layer, shown.sublayer, entry.firstSublayer.layer, entry.firstSublayer.sublayer,
               entry.secondSublayer.layer, entry.secondSublayer.sublayer);
}

// 0 null, 1 no sublayer pair, 2 sublayer entry.
int Rank(CompareColorVis const* entry, SublayerPCBCompare const*& pair) {
    if (entry == nullptr) {
        return 0;
    }
    pair = dynamic_cast<SublayerPCBCompare const*>(entry);
    return pair == nullptr ? 1 : 2;
}

} // namespace

bool CompareColorVisPtrComparator::operator()(du::SmartPtr<CompareColorVis> const& a,
                                              du::SmartPtr<CompareColorVis> const& b) const {
    SublayerPCBCompare const* pa = nullptr;
    SublayerPCBCompare const* pb = nullptr;
    int const ra = Rank(a.Get(), pa);
    int const rb = Rank(b.Get(), pb);
    if (ra != rb || ra != 2) {
        return ra < rb;
    }
    return SortKey(*pa) < SortKey(*pb);
}

} // namespace qzk::ecad
