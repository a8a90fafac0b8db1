// An event that an observable posts: it knows how to write itself into a message.
//
// The kernel hands the event to each registered observer's proxy in turn, calling Begin, then
// Post, then End; Post pushes the event id as an unsigned 8-bit value and then the payload.
#pragma once

namespace dom {

class ObserverProxy;

class ObservableEvent {
public:
    ObservableEvent() = default;
    virtual ~ObservableEvent();
    virtual void Post(ObserverProxy* proxy) const = 0;
};

} // namespace dom
