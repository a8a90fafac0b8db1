// The one event class of the scenes: an id, then the payload values in order. Each value type
// has one wire form, so a scene names only the values, and observers decode them in that order.
#pragma once

#include "dom/ObservableEvent.h"
#include "dom/ObserverProxy.h"
#include "du/Symbol.h"
#include "scene/ChangeSource.h"

#include <string>
#include <tuple>
#include <utility>

namespace qzkapp::ecad {

namespace event_values {

inline void Push(dom::ObserverProxy& proxy, unsigned short value) {
    proxy.PushUInt16Value(value);
}
inline void Push(dom::ObserverProxy& proxy, unsigned int value) {
    proxy.PushUInt32Value(value);
}
// A change source travels as its number. A source handed in by a host may hold a number of its
// own outside the enumeration: pass it on as unsigned int, never through this overload.
inline void Push(dom::ObserverProxy& proxy, ChangeSource value) {
    proxy.PushUInt32Value(static_cast<unsigned int>(value));
}
inline void Push(dom::ObserverProxy& proxy, bool value) {
    proxy.PushBooleanValue(value);
}
inline void Push(dom::ObserverProxy& proxy, du::Symbol const& value) {
    proxy.PushStringValue(value.str());
}

} // namespace event_values

template <class... Values> class SceneEvent : public dom::ObservableEvent {
public:
    explicit SceneEvent(unsigned char id, Values... values)
        : id_(id), values_(std::move(values)...) {}

    void Post(dom::ObserverProxy* proxy) const override {
        proxy->PushUInt8Value(id_);
        if constexpr (sizeof...(Values) > 0) {
            std::apply(
                [proxy](Values const&... value) { (event_values::Push(*proxy, value), ...); },
                values_);
        }
    }

private:
    unsigned char id_;
    std::tuple<Values...> values_;
};

} // namespace qzkapp::ecad
