// The message side of an observable: its registered observers, each with its proxy, and the
// posting of an event to all of them.
//
// A post writes one message per registered observer, in registration order, and queues it; no
// handler runs inside the post. Posts are serialised per observable, so two threads posting at
// once queue whole messages in some order, never interleaved values.
#pragma once

#include "dom/ObserverProxy.h"
#include "du/SmartPtr.h"
#include "du/SpinLock.h"

#include <cstddef>
#include <vector>

namespace dom {

class ObservableEvent;
class Observer;

class Observable {
public:
    Observable() = default;
    Observable(Observable const&) = delete;
    Observable& operator=(Observable const&) = delete;
    virtual ~Observable();

    // false for a null proxy or an observer already registered.
    bool AddObserver(Observer const& observer, du::SmartPtr<ObserverProxy> const& proxy);
    // The observer's proxy, or null if it was not registered.
    du::SmartPtr<ObserverProxy> RemoveObserver(Observer const& observer);
    // Empties the list and returns who was on it, in registration order.
    std::vector<Observer const*> RemoveAllObservers();
    bool HasObserver(Observer const& observer) const;
    std::size_t GetObserverCount() const;

    // Queues event for every registered observer.
    void PostEvent(ObservableEvent const& event);
    // Queues event for one registered observer only; false if it is not registered.
    bool PostEventTo(Observer const& observer, ObservableEvent const& event);
    // The id the event writes first, found by writing it into an unbound proxy; 0 if it writes
    // none. Used for the journal.
    static unsigned char PeekEventId(ObservableEvent const& event);

private:
    struct Entry {
        Observer const* observer;
        du::SmartPtr<ObserverProxy> proxy;
    };
    // Guards the list and is held across a whole post, so messages from concurrent posters are
    // not interleaved. A post runs only the event's own pushes under it, never a handler, so a
    // spin lock does, and saves a post an atomic operation.
    mutable du::SpinLock lock_;
    std::vector<Entry> entries_;
};

} // namespace dom
