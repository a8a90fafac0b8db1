#include "qzk/ecad/CompareColorVisPtrVec.h"

#include "qzk/ecad/SublayerPCBCompareCV.h"

namespace qzk::ecad {
namespace {

bool SameEntry(CompareColorVis const& a, CompareColorVis const& b) {
    if (!a.SameColorVis(b)) {
        return false;
    }
    auto const* pa = dynamic_cast<SublayerPCBCompare const*>(&a);
    auto const* pb = dynamic_cast<SublayerPCBCompare const*>(&b);
    if (pa == nullptr || pb == nullptr) {
        return pa == pb;
    }
    return pa->firstSublayer == pb->firstSublayer && pa->secondSublayer == pb->secondSublayer;
}

} // namespace

CompareColorVisPtrVec::~CompareColorVisPtrVec() = default;

void CompareColorVisPtrVec::Clone(CompareColorVisPtrVec& target) const {
    if (this == &target) {
        CompareColorVisPtrVec copy;
        Clone(copy);
        target.swap(copy);
        return;
    }
    target.clear();
    target.reserve(size());
    for (auto const& entry : *this) {
        target.push_back(entry ? entry->Clone() : du::SmartPtr<CompareColorVis>());
    }
}

bool CompareColorVisPtrVec::AreDifferent(CompareColorVisPtrVec const& a,
                                         CompareColorVisPtrVec const& b) {
    if (a.size() != b.size()) {
        return true;
    }
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (a[i].Get() == b[i].Get()) {
            continue;
        }
        if (!a[i] || !b[i] || !SameEntry(*a[i], *b[i])) {
            return true;
        }
    }
    return false;
}

} // namespace qzk::ecad
