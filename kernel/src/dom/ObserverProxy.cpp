#include "dom/ObserverProxy.h"

#include "dom/Observer.h"
#include "dom/WireTag.h"
#include "qzk/MessageLoop.h"

#include <cstdint>
#include <cstring>
#include <utility>

namespace dom {

ObserverProxy::ObserverProxy(Observer const& observer) noexcept
    : handle_(observer.GetMessageHandle()) {}

ObserverProxy::~ObserverProxy() = default;

void ObserverProxy::End() {
    if (handle_ == 0) {
        return;
    }
    qzk::MessageLoop::Get().Queue(handle_, message_);
}

void ObserverProxy::PushStringValue(std::string const& value) {
    Append(wire::String, static_cast<std::uint32_t>(value.size()));
    message_->bytes.append(value);
}

void ObserverProxy::PushObjectValue(du::SmartPtr<du::RefCounted> const& value) {
    message_->bytes.push_back(wire::Object);
    message_->objects.push_back(value);
}

MessageData ObserverProxy::TakeMessage() {
    if (message_ == nullptr) {
        return {};
    }
    return std::exchange(*message_, MessageData{});
}

} // namespace dom
