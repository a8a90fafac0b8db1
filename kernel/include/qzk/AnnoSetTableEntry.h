// One entry of the annotation set table: a saved comparison, naming the two designs it compares
// (instance and source each) and holding its annotation set.
//
// An entry starts incomplete; while it is, a scene made from it waits by adding a load
// requirement (an event and a ticket). Complete() marks the entry complete and completes every
// open requirement's event; the waiting scene then finishes its load and gives its ticket back
// with CompleteLoadRequirement. A requirement added to an entry that is complete already has its
// event completed at once, so no one waits for something that has happened. Tickets count from
// 1 and are never reused within an entry. Events are completed outside the entry's mutex.
#pragma once

#include "du/SmartPtr.h"
#include "du/Symbol.h"
#include "qzk/AnnoSet.h"
#include "qzk/Object.h"

#include <atomic>
#include <map>
#include <mutex>
#include <vector>

namespace qzref {
class AnnoSetTableEntryInspector;
}

namespace qzk {

class AsyncEvent;
class Instance;
class ViewableSource;

class AnnoSetTableEntry : public Object {
    friend class qzref::AnnoSetTableEntryInspector;

public:
    static du::SmartPtr<AnnoSetTableEntry> Create(du::Symbol const& name);
    ~AnnoSetTableEntry() override;

    ClassType const& GetClassType() const override;
    du::Symbol GetDebugClassName() const override;

    // Journalled. The entry holds the event by counted reference until its ticket comes back.
    // A null event gets ticket 0, which is not a ticket.
    unsigned int AddLoadRequirement(AsyncEvent* event);
    // Journalled. false for a ticket that is not open.
    bool CompleteLoadRequirement(unsigned int ticket);

    bool IsComplete() const noexcept { return complete.load(std::memory_order_acquire); }

    du::Symbol GetName() const { return name_; }
    du::SmartPtr<AnnoSet> GetAnnoSet() const;
    // Either may be null until the entry is filled.
    void GetFirst(du::SmartPtr<Instance>& instance, du::SmartPtr<ViewableSource>& source) const;
    void GetSecond(du::SmartPtr<Instance>& instance, du::SmartPtr<ViewableSource>& source) const;

    // The completion flag, readable directly; set only by the inspector's Complete().
    std::atomic<bool> complete{false};

protected:
    explicit AnnoSetTableEntry(du::Symbol name);
    void _OnDestroy() override;

private:
    du::Symbol const name_;
    du::SmartPtr<AnnoSet> const annoSet_;
    mutable std::mutex mutex_;
    du::SmartPtr<Instance> firstInstance_;
    du::SmartPtr<ViewableSource> firstSource_;
    du::SmartPtr<Instance> secondInstance_;
    du::SmartPtr<ViewableSource> secondSource_;
    unsigned int nextTicket_ = 1;
    std::map<unsigned int, du::SmartPtr<AsyncEvent>> open_;
    std::vector<unsigned int> completed_;
};

} // namespace qzk
