// The world's table of saved annotation sets: its entries in the order they were added.
#pragma once

#include "du/SmartPtr.h"
#include "du/Symbol.h"
#include "qzk/Object.h"

#include <mutex>
#include <vector>

namespace qzref {
class AnnoSetTableInspector;
}

namespace qzk {

class AnnoSetTableEntry;

class AnnoSetTable : public Object {
    friend class qzref::AnnoSetTableInspector;

public:
    static du::SmartPtr<AnnoSetTable> Create();
    ~AnnoSetTable() override;

    ClassType const& GetClassType() const override;
    du::Symbol GetDebugClassName() const override;

    unsigned int GetNumEntries() const;
    // Null past the end.
    du::SmartPtr<AnnoSetTableEntry> GetEntry(unsigned int index) const;
    // Null when no entry has that name.
    du::SmartPtr<AnnoSetTableEntry> FindEntry(du::Symbol const& name) const;

protected:
    AnnoSetTable();
    void _OnDestroy() override;

private:
    mutable std::mutex mutex_;
    std::vector<du::SmartPtr<AnnoSetTableEntry>> entries_;
};

} // namespace qzk
