#include "qzref/AnnoSetTableInspector.h"

#include <algorithm>
#include <mutex>

namespace qzref {

du::SmartPtr<qzk::AnnoSetTableEntry> AnnoSetTableInspector::AddEntry(du::Symbol const& name) {
    du::SmartPtr<qzk::AnnoSetTableEntry> entry = qzk::AnnoSetTableEntry::Create(name);
    std::lock_guard lock(table_.mutex_);
    table_.entries_.push_back(entry);
    return entry;
}

bool AnnoSetTableInspector::RemoveEntry(du::SmartPtr<qzk::AnnoSetTableEntry> const& entry) {
    // The entry goes after the lock.
    du::SmartPtr<qzk::AnnoSetTableEntry> gone;
    std::lock_guard lock(table_.mutex_);
    auto found = std::find(table_.entries_.begin(), table_.entries_.end(), entry);
    if (found == table_.entries_.end()) {
        return false;
    }
    gone = *found;
    table_.entries_.erase(found);
    return true;
}

} // namespace qzref
