#include "dom/Observable.h"

#include "dom/MessageReader.h"
#include "dom/ObservableEvent.h"
#include "dom/Observer.h"

#include <algorithm>
#include <utility>

namespace dom {

Observable::~Observable() = default;

bool Observable::AddObserver(Observer const& observer, du::SmartPtr<ObserverProxy> const& proxy) {
    if (!proxy) {
        return false;
    }
    std::lock_guard lock(lock_);
    auto same = [&observer](Entry const& entry) { return entry.observer == &observer; };
    if (std::any_of(entries_.begin(), entries_.end(), same)) {
        return false;
    }
    entries_.push_back(Entry{&observer, proxy});
    return true;
}

du::SmartPtr<ObserverProxy> Observable::RemoveObserver(Observer const& observer) {
    std::lock_guard lock(lock_);
    auto found = std::find_if(entries_.begin(), entries_.end(), [&observer](Entry const& entry) {
        return entry.observer == &observer;
    });
    if (found == entries_.end()) {
        return nullptr;
    }
    du::SmartPtr<ObserverProxy> proxy = std::move(found->proxy);
    entries_.erase(found);
    return proxy;
}

std::vector<Observer const*> Observable::RemoveAllObservers() {
    std::vector<Entry> removed;
    {
        std::lock_guard lock(lock_);
        removed.swap(entries_);
    }
    std::vector<Observer const*> observers;
    observers.reserve(removed.size());
    for (Entry const& entry : removed) {
        observers.push_back(entry.observer);
    }
    return observers;
}

bool Observable::HasObserver(Observer const& observer) const {
    std::lock_guard lock(lock_);
    return std::any_of(entries_.begin(), entries_.end(),
                       [&observer](Entry const& entry) { return entry.observer == &observer; });
}

std::size_t Observable::GetObserverCount() const {
    std::lock_guard lock(lock_);
    return entries_.size();
}

void Observable::PostEvent(ObservableEvent const& event) {
    std::lock_guard lock(lock_);
    for (Entry const& entry : entries_) {
        entry.proxy->Begin();
        event.Post(entry.proxy.Get());
        entry.proxy->End();
    }
}

bool Observable::PostEventTo(Observer const& observer, ObservableEvent const& event) {
    std::lock_guard lock(lock_);
    for (Entry const& entry : entries_) {
        if (entry.observer == &observer) {
            entry.proxy->Begin();
            event.Post(entry.proxy.Get());
            entry.proxy->End();
            return true;
        }
    }
    return false;
}

unsigned char Observable::PeekEventId(ObservableEvent const& event) {
    ObserverProxy scratch;
    scratch.Begin();
    event.Post(&scratch);
    scratch.End();
    MessageData message = scratch.TakeMessage();
    MessageReader reader(message);
    unsigned char id = 0;
    reader.GetUInt8Value(id);
    return id;
}

} // namespace dom
