// What a test reads back from an annotation set table entry, and how it fills and completes one;
// reached through qzref::Inspect.
#pragma once

#include "du/SmartPtr.h"
#include "qzk/AnnoSetTableEntry.h"

#include <vector>

namespace qzk {
class Instance;
class ViewableSource;
} // namespace qzk

namespace qzref {

class AnnoSetTableEntryInspector {
public:
    explicit AnnoSetTableEntryInspector(qzk::AnnoSetTableEntry& entry) noexcept : entry_(entry) {}

    // Open tickets in ascending order, and the tickets given back, in order.
    std::vector<unsigned int> GetOpenRequirements() const;
    std::vector<unsigned int> GetCompletedRequirements() const;

    void SetFirst(du::SmartPtr<qzk::Instance> const& instance,
                  du::SmartPtr<qzk::ViewableSource> const& source);
    void SetSecond(du::SmartPtr<qzk::Instance> const& instance,
                   du::SmartPtr<qzk::ViewableSource> const& source);
    // Marks the entry complete and completes the events of the open requirements (their
    // tickets stay open until given back). Nothing happens the second time.
    void Complete();

private:
    qzk::AnnoSetTableEntry& entry_;
};

} // namespace qzref
