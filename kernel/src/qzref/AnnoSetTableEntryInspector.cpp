#include "qzref/AnnoSetTableEntryInspector.h"

#include "qzk/AsyncEvent.h"
#include "qzk/Instance.h"
#include "qzk/ViewableSource.h"

#include <mutex>

namespace qzref {

std::vector<unsigned int> AnnoSetTableEntryInspector::GetOpenRequirements() const {
    std::lock_guard lock(entry_.mutex_);
    std::vector<unsigned int> out;
    for (auto const& [ticket, event] : entry_.open_) {
        out.push_back(ticket);
    }
    return out;
}

std::vector<unsigned int> AnnoSetTableEntryInspector::GetCompletedRequirements() const {
    std::lock_guard lock(entry_.mutex_);
    return entry_.completed_;
}

void AnnoSetTableEntryInspector::SetFirst(du::SmartPtr<qzk::Instance> const& instance,
                                          du::SmartPtr<qzk::ViewableSource> const& source) {
    std::lock_guard lock(entry_.mutex_);
    entry_.firstInstance_ = instance;
    entry_.firstSource_ = source;
}

void AnnoSetTableEntryInspector::SetSecond(du::SmartPtr<qzk::Instance> const& instance,
                                           du::SmartPtr<qzk::ViewableSource> const& source) {
    std::lock_guard lock(entry_.mutex_);
    entry_.secondInstance_ = instance;
    entry_.secondSource_ = source;
}

void AnnoSetTableEntryInspector::Complete() {
    std::vector<du::SmartPtr<qzk::AsyncEvent>> waiting;
    {
        std::lock_guard lock(entry_.mutex_);
        if (entry_.complete.exchange(true, std::memory_order_acq_rel)) {
            return;
        }
        for (auto const& [ticket, event] : entry_.open_) {
            waiting.push_back(event);
        }
    }
    // Completions are posted outside the entry's lock.
    for (auto const& event : waiting) {
        event->Complete();
    }
}

} // namespace qzref
