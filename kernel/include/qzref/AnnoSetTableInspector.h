// How a test adds and removes entries of an annotation set table; reached through qzref::Inspect.
#pragma once

#include "du/SmartPtr.h"
#include "du/Symbol.h"
#include "qzk/AnnoSetTable.h"
#include "qzk/AnnoSetTableEntry.h"

namespace qzref {

class AnnoSetTableInspector {
public:
    explicit AnnoSetTableInspector(qzk::AnnoSetTable& table) noexcept : table_(table) {}

    // A new, incomplete entry at the end.
    du::SmartPtr<qzk::AnnoSetTableEntry> AddEntry(du::Symbol const& name);
    bool RemoveEntry(du::SmartPtr<qzk::AnnoSetTableEntry> const& entry);

private:
    qzk::AnnoSetTable& table_;
};

} // namespace qzref
