#include "qzk/ecad/GroupCVInfo.h"

#include "qzk/ecad/GroupCVInfoSet.h"

namespace qzk::ecad {

GroupCVInfo::GroupCVInfo(char const* name)
    : name(name != nullptr ? name : ""), defaultColor(color), defaultVisible(visible) {}

GroupCVInfo::GroupCVInfo(char const* name, unsigned int color, bool visible)
    : ColorVisInfo(color, visible), name(name != nullptr ? name : ""), defaultColor(color),
      defaultVisible(visible) {}

GroupCVInfo::~GroupCVInfo() = default;

bool GroupCVInfo::operator<(GroupCVInfo const& other) const noexcept {
    std::string const& a = name.str();
    std::string const& b = other.name.str();
    std::size_t const common = a.size() < b.size() ? a.size() : b.size();
    for (std::size_t i = 0; i < common; ++i) {
        auto const x = static_cast<signed char>(a[i]);
        auto const y = static_cast<signed char>(b[i]);
        if (x != y) {
            return x < y;
        }
    }
    return a.size() < b.size();
}

bool GroupCVInfo::AreDifferent(GroupCVInfoSet const& a, GroupCVInfoSet const& b) {
    if (a.size() != b.size()) {
        return true;
    }
    for (auto x = a.begin(), y = b.begin(); x != a.end(); ++x, ++y) {
        if (x->name != y->name || !x->SameColorVis(*y) || x->groupFlag != y->groupFlag) {
            return true;
        }
    }
    return false;
}

} // namespace qzk::ecad
