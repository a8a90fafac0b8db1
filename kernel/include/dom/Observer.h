// A message target: the kernel's message loop delivers the messages queued for it.
//
// Every observer gets a process-wide message handle when it is built; messages name their target
// by handle, and the loop finds the observer through a table the observer leaves when it ends.
// So a message for an observer that has gone is dropped. An observer may live on the stack: its
// destructor waits for a delivery to it that is running on another thread. A class whose handlers
// use its own members should call DetachFromMessageLoop first in its destructor, since by the
// time this base's destructor runs the derived parts are gone.
//
// A counted observer whose last reference goes while a message is being delivered to it stays
// alive to the end of that delivery (see ZeroReferenceCountHook), then goes.
#pragma once

#include "dom/ManagedObject.h"
#include "du/Types.h"

namespace dom {

class Observer : public ManagedObject {
public:
    Observer();
    ~Observer() override;

    // Passes the message to EventHandler.
    void HandleMessage(MessageReader& reader) override;
    // Decodes one message: the event id first, then the payload.
    virtual void EventHandler(MessageReader& reader) = 0;

    // false while a message is being delivered to this observer: the loop lets it go afterwards.
    bool ZeroReferenceCountHook() const override;

    uint64 GetMessageHandle() const noexcept { return handle_; }
    // Ends delivery to this observer; idempotent. Waits for a delivery running on another thread;
    // a delivery on the calling thread (the observer ends inside its own handler) is not waited
    // for.
    void DetachFromMessageLoop() noexcept;

private:
    uint64 const handle_;
};

} // namespace dom
