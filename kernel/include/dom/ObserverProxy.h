// The posting side of one observer: writes messages for it and queues them in the kernel's
// message loop.
//
// A proxy knows its observer only by the observer's message handle, never by address, so a
// message queued for an observer that has gone is dropped instead of reaching freed memory.
// One message is written at a time: Begin, the pushes, End; End queues it. Posters serialise
// their use of a proxy (dom::Observable does). A proxy made with the default constructor is bound
// to no observer: End keeps the message, and TakeMessage hands it out (tests build messages so).
//
// Proxies live on du::CommonAllocatorImpl's heap: allocate sizeof(ObserverProxy), construct in
// place, and hold the result in a du::SmartPtr.
#pragma once

#include "dom/MessageReader.h"
#include "du/CommonAllocated.h"
#include "du/RefCounted.h"
#include "du/Types.h"

#include <string>

namespace dom {

class Observer;

class ObserverProxy : public du::CommonAllocated, public du::RefCounted {
public:
    ObserverProxy() noexcept = default;
    explicit ObserverProxy(Observer const& observer) noexcept;
    ObserverProxy(ObserverProxy const&) = delete;
    ObserverProxy& operator=(ObserverProxy const&) = delete;
    ~ObserverProxy() override;

    void Begin();
    void End();
    void PushUInt8Value(unsigned char value);
    void PushUInt16Value(unsigned short value);
    void PushUInt32Value(unsigned int value);
    void PushBooleanValue(bool value);
    void PushStringValue(std::string const& value);
    // Kernel notifications only: attaches a counted object to the message.
    void PushObjectValue(du::SmartPtr<du::RefCounted> const& value);

    // 0 for an unbound proxy.
    uint64 GetObserverHandle() const noexcept { return handle_; }
    // An unbound proxy's last finished message; empty afterwards.
    MessageData TakeMessage();

private:
    uint64 handle_ = 0;
    MessageData message_;
};

} // namespace dom
