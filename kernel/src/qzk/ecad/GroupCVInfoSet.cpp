#include "qzk/ecad/GroupCVInfoSet.h"

namespace qzk::ecad {

GroupCVInfoSet::~GroupCVInfoSet() = default;

void GroupCVInfoSet::SetInfo(GroupCVInfoSet const& source) {
    if (this != &source) {
        std::set<GroupCVInfo>::operator=(source);
    }
}

bool GroupCVInfoSet::Update(GroupCVInfoSet const& source) {
    if (this == &source) {
        return false;
    }
    bool changed = false;
    for (GroupCVInfo const& entry : source) {
        auto found = find(entry);
        if (found == end()) {
            insert(entry);
            changed = true;
        } else if (!found->SameColorVis(entry)) {
            // Set elements are const; only the non-key fields change, so the order holds.
            auto node = extract(found);
            node.value().color = entry.color;
            node.value().visible = entry.visible;
            insert(std::move(node));
            changed = true;
        }
    }
    return changed;
}

bool GroupCVInfoSet::Update(GroupCVInfoSet& source, GroupCVInfoSet const& pending) {
    GroupCVInfoSet merged(schematic_);
    for (GroupCVInfo entry : source) {
        if (auto own = find(entry); own != end()) {
            entry.color = own->color;
            entry.visible = own->visible;
        } else if (auto saved = pending.find(entry); saved != pending.end()) {
            entry.color = saved->color;
            entry.visible = saved->visible;
        }
        merged.insert(merged.end(), entry);
    }
    bool const changed = GroupCVInfo::AreDifferent(*this, merged);
    SetInfo(merged);
    return changed;
}

void GroupCVInfoSet::ResetToDefault() {
    GroupCVInfoSet reset(schematic_);
    for (GroupCVInfo entry : *this) {
        entry.color = entry.defaultColor;
        entry.visible = entry.defaultVisible;
        reset.insert(reset.end(), entry);
    }
    SetInfo(reset);
}

} // namespace qzk::ecad
