// The wire form of the ECAD kernel scenes' and views' own notices, shared by the posting scenes
// and views and the decoding observers. Internal to the kernel.
//
// Values the message layer has no push for travel as bit patterns: a pointer or a double as two
// unsigned 32-bit values (high half first), a short as an unsigned 16-bit value. Counted objects
// (views, overlays, annotation sets) ride along as message objects. A read that fails throws
// std::runtime_error naming the observer class, and the message loop keeps the text.
#pragma once

#include "dom/MessageReader.h"
#include "dom/ObservableEvent.h"
#include "dom/ObserverProxy.h"
#include "du/SmartPtr.h"
#include "qzk/ecad/AppearanceItem.h"

#include <functional>
#include <string>
#include <vector>

namespace qzk::ecad::detail {

// An event whose payload is pushed by a function, after the id.
class PayloadEvent : public dom::ObservableEvent {
public:
    using Pusher = std::function<void(dom::ObserverProxy&)>;
    PayloadEvent(unsigned char id, Pusher pusher) : id_(id), pusher_(std::move(pusher)) {}
    void Post(dom::ObserverProxy* proxy) const override;

private:
    unsigned char id_;
    Pusher pusher_;
};

void PushPointer(dom::ObserverProxy& proxy, void const* pointer);
void PushDouble(dom::ObserverProxy& proxy, double value);
void PushShorts(dom::ObserverProxy& proxy, std::vector<short> const& values);
void PushItems(dom::ObserverProxy& proxy, std::vector<AppearanceItem> const& items);
void PushUInts(dom::ObserverProxy& proxy, std::vector<unsigned int> const& values);

// Each throws std::runtime_error("<who>: malformed message <id>") when the value is missing.
class Decoder {
public:
    Decoder(dom::MessageReader& reader, char const* who, unsigned char id)
        : reader_(reader), who_(who), id_(id) {}

    bool Bool();
    unsigned int UInt32();
    unsigned short UInt16();
    unsigned char UInt8();
    std::string String();
    void* Pointer();
    double Double();
    std::vector<short> Shorts();
    std::vector<AppearanceItem> Items();
    std::vector<unsigned int> UInts();
    du::SmartPtr<du::RefCounted> Object();
    // The next object cast to T; null when it is of another class.
    template <class T> du::SmartPtr<T> ObjectAs() {
        du::SmartPtr<du::RefCounted> object = Object();
        return du::SmartPtr<T>(dynamic_cast<T*>(object.Get()));
    }

private:
    [[noreturn]] void Fail() const;

    dom::MessageReader& reader_;
    char const* who_;
    unsigned char id_;
};

} // namespace qzk::ecad::detail
