#include "dom/ObserverProxy.h"

#include "dom/Observer.h"
#include "dom/WireTag.h"
#include "qzk/MessageLoop.h"

#include <cstdint>
#include <cstring>
#include <utility>

namespace dom {
namespace {

template <class T> void Append(std::string& bytes, char tag, T value) {
    char buffer[1 + sizeof(T)];
    buffer[0] = tag;
    std::memcpy(buffer + 1, &value, sizeof(T));
    bytes.append(buffer, sizeof buffer);
}

} // namespace

ObserverProxy::ObserverProxy(Observer const& observer) noexcept
    : handle_(observer.GetMessageHandle()) {}

ObserverProxy::~ObserverProxy() = default;

void ObserverProxy::Begin() {
    message_.bytes.clear();
    message_.objects.clear();
}

void ObserverProxy::End() {
    if (handle_ == 0) {
        return;
    }
    qzk::MessageLoop::Get().Queue(handle_, std::move(message_));
    message_.bytes.clear();
    message_.objects.clear();
}

void ObserverProxy::PushUInt8Value(unsigned char value) {
    Append(message_.bytes, wire::UInt8, value);
}

void ObserverProxy::PushUInt16Value(unsigned short value) {
    Append(message_.bytes, wire::UInt16, value);
}

void ObserverProxy::PushUInt32Value(unsigned int value) {
    Append(message_.bytes, wire::UInt32, value);
}

void ObserverProxy::PushBooleanValue(bool value) {
    Append(message_.bytes, wire::Boolean, static_cast<unsigned char>(value ? 1 : 0));
}

void ObserverProxy::PushStringValue(std::string const& value) {
    Append(message_.bytes, wire::String, static_cast<std::uint32_t>(value.size()));
    message_.bytes.append(value);
}

void ObserverProxy::PushObjectValue(du::SmartPtr<du::RefCounted> const& value) {
    message_.bytes.push_back(wire::Object);
    message_.objects.push_back(value);
}

MessageData ObserverProxy::TakeMessage() {
    return std::exchange(message_, MessageData{});
}

} // namespace dom
