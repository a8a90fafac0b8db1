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
#include "dom/WireTag.h"
#include "du/CommonAllocated.h"
#include "du/RefCounted.h"
#include "du/Types.h"

#include <cstring>
#include <memory>
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

    // Begin and the fixed-width pushes are inline: an event pushes a few values per message, and
    // a call would cost more than the push.
    void Begin() {
        if (message_ == nullptr) {
            message_ = std::make_unique<MessageData>();
        }
        message_->bytes.clear();
        message_->objects.clear();
    }
    void End();
    void PushUInt8Value(unsigned char value) { Append(wire::UInt8, value); }
    void PushUInt16Value(unsigned short value) { Append(wire::UInt16, value); }
    void PushUInt32Value(unsigned int value) { Append(wire::UInt32, value); }
    void PushBooleanValue(bool value) {
        Append(wire::Boolean, static_cast<unsigned char>(value ? 1 : 0));
    }
    void PushStringValue(std::string const& value);
    // Kernel notifications only: attaches a counted object to the message.
    void PushObjectValue(du::SmartPtr<du::RefCounted> const& value);

    // 0 for an unbound proxy.
    uint64 GetObserverHandle() const noexcept { return handle_; }
    // An unbound proxy's last finished message; empty afterwards.
    MessageData TakeMessage();

private:
    template <class T> void Append(char tag, T value) {
        char buffer[1 + sizeof(T)];
        buffer[0] = tag;
        std::memcpy(buffer + 1, &value, sizeof(T));
        message_->bytes.append(buffer, sizeof buffer);
    }

    uint64 handle_ = 0;
    // Handed to the message loop by End, which gives an empty one back (or none, when Begin
    // makes one), so a message is never copied on its way.
    std::unique_ptr<MessageData> message_;
};

} // namespace dom
