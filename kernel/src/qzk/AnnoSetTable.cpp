#include "qzk/AnnoSetTable.h"

#include "qzk/AnnoSetTableEntry.h"

namespace qzk {
namespace {
bool const registered = ClassType::RegisterClass(classid::AnnoSetTable, {classid::Object});
} // namespace

du::SmartPtr<AnnoSetTable> AnnoSetTable::Create() {
    return du::SmartPtr<AnnoSetTable>(new AnnoSetTable());
}

AnnoSetTable::AnnoSetTable() = default;

AnnoSetTable::~AnnoSetTable() = default;

ClassType const& AnnoSetTable::GetClassType() const {
    static ClassType const type(classid::AnnoSetTable);
    return type;
}

du::Symbol AnnoSetTable::GetDebugClassName() const {
    return du::Symbol("qzk::AnnoSetTable");
}

unsigned int AnnoSetTable::GetNumEntries() const {
    std::lock_guard lock(mutex_);
    return static_cast<unsigned int>(entries_.size());
}

du::SmartPtr<AnnoSetTableEntry> AnnoSetTable::GetEntry(unsigned int index) const {
    std::lock_guard lock(mutex_);
    return index < entries_.size() ? entries_[index] : du::SmartPtr<AnnoSetTableEntry>();
}

du::SmartPtr<AnnoSetTableEntry> AnnoSetTable::FindEntry(du::Symbol const& name) const {
    std::lock_guard lock(mutex_);
    for (auto const& entry : entries_) {
        if (entry->GetName() == name) {
            return entry;
        }
    }
    return nullptr;
}

void AnnoSetTable::_OnDestroy() {
    std::vector<du::SmartPtr<AnnoSetTableEntry>> gone;
    std::lock_guard lock(mutex_);
    gone.swap(entries_);
}

} // namespace qzk
