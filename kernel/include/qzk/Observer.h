// An event target: decodes the messages of the observable it is registered with.
//
// EventHandler reads the event id and hands the rest of the message to HandleEvent. The kernel's
// own HandleEvent answers the ids below qzk::Observable::GetNextEventId(): 0 calls
// OnBeginUpdate, 1 OnEndUpdate, 2 OnUnregister (queued when the observer is unregistered); the
// others are ignored. A class deriving from this one handles its own ids and passes lower ones
// here.
#pragma once

#include "dom/Observer.h"

namespace dom {
class MessageReader;
}

namespace qzref {
class ObserverInspector;
}

namespace qzk {

class Observable;

class Observer : public dom::Observer {
public:
    enum : unsigned char { BeginUpdateEventId = 0, EndUpdateEventId = 1, UnregisterEventId = 2 };

    Observer();
    ~Observer() override;

    void EventHandler(dom::MessageReader& reader) override;
    virtual bool RequiresBeginEnd() const;
    // Ends the observer's tie to what it watches; called by the kernel when the observable ends.
    virtual void DetachObserver() = 0;
    virtual void OnBeginUpdate();
    virtual void OnEndUpdate();
    virtual void OnUnregister();
    virtual void HandleEvent(unsigned char id, dom::MessageReader& reader);

    // Detaches the observer from its observable; false if it is registered nowhere.
    bool Unregister();
    bool ZeroReferenceCountHook() const override;

private:
    friend class Observable;
    friend class qzref::ObserverInspector;

    // The observable this observer is registered with, or null.
    Observable* GetObservable() const;
    // Guarded by a kernel-wide mutex shared with qzk::Observable.
    Observable* observable_ = nullptr;
};

} // namespace qzk
