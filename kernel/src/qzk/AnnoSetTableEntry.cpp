#include "qzk/AnnoSetTableEntry.h"

#include "qzk/AnnoSet.h"
#include "qzk/AsyncEvent.h"
#include "qzk/Instance.h"
#include "qzk/ViewableSource.h"
#include "qzref/Journal.h"

namespace qzk {
namespace {
bool const registered = ClassType::RegisterClass(classid::AnnoSetTableEntry, {classid::Object});
} // namespace

du::SmartPtr<AnnoSetTableEntry> AnnoSetTableEntry::Create(du::Symbol const& name) {
    return du::SmartPtr<AnnoSetTableEntry>(new AnnoSetTableEntry(name));
}

AnnoSetTableEntry::AnnoSetTableEntry(du::Symbol name)
    : name_(std::move(name)), annoSet_(AnnoSet::Create()) {}

AnnoSetTableEntry::~AnnoSetTableEntry() = default;

ClassType const& AnnoSetTableEntry::GetClassType() const {
    static ClassType const type(classid::AnnoSetTableEntry);
    return type;
}

du::Symbol AnnoSetTableEntry::GetDebugClassName() const {
    return du::Symbol("qzk::AnnoSetTableEntry");
}

unsigned int AnnoSetTableEntry::AddLoadRequirement(AsyncEvent* event) {
    qzref::Journal::Record(GetObjectName().str(), "AddLoadRequirement",
                           {event != nullptr ? std::string("event") : std::string("null")});
    if (event == nullptr) {
        return 0;
    }
    du::SmartPtr<AsyncEvent> held(event);
    unsigned int ticket;
    bool completeNow;
    {
        std::lock_guard lock(mutex_);
        ticket = nextTicket_++;
        open_.emplace(ticket, held);
        completeNow = IsComplete();
    }
    if (completeNow) {
        held->Complete();
    }
    return ticket;
}

bool AnnoSetTableEntry::CompleteLoadRequirement(unsigned int ticket) {
    qzref::Journal::Record(GetObjectName().str(), "CompleteLoadRequirement", {qzref::Fmt(ticket)});
    du::SmartPtr<AsyncEvent> released;
    std::lock_guard lock(mutex_);
    auto found = open_.find(ticket);
    if (found == open_.end()) {
        return false;
    }
    released = found->second;
    open_.erase(found);
    completed_.push_back(ticket);
    return true;
}

du::SmartPtr<AnnoSet> AnnoSetTableEntry::GetAnnoSet() const {
    return annoSet_;
}

void AnnoSetTableEntry::GetFirst(du::SmartPtr<Instance>& instance,
                                 du::SmartPtr<ViewableSource>& source) const {
    std::lock_guard lock(mutex_);
    instance = firstInstance_;
    source = firstSource_;
}

void AnnoSetTableEntry::GetSecond(du::SmartPtr<Instance>& instance,
                                  du::SmartPtr<ViewableSource>& source) const {
    std::lock_guard lock(mutex_);
    instance = secondInstance_;
    source = secondSource_;
}

void AnnoSetTableEntry::_OnDestroy() {
    std::map<unsigned int, du::SmartPtr<AsyncEvent>> gone;
    std::lock_guard lock(mutex_);
    gone.swap(open_);
}

} // namespace qzk
