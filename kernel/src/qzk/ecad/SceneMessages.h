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
#include "qzk/ecad/BaseSceneObserver.h"

#include <functional>
#include <set>
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
    // The next list of values as aspects of a look (PCBAppearance or SchematicAppearance).
    template <class Look> std::set<Look> Looks() {
        std::set<Look> out;
        for (unsigned int value : UInts()) {
            out.insert(static_cast<Look>(value));
        }
        return out;
    }
    du::SmartPtr<du::RefCounted> Object();
    // The next object cast to T; null when it is of another class.
    template <class T> du::SmartPtr<T> ObjectAs() {
        du::SmartPtr<du::RefCounted> object = Object();
        return du::SmartPtr<T>(dynamic_cast<T*>(object.Get()));
    }

private:
    [[noreturn]] void Fail() const;
    // A list's count, failing when the bytes left cannot hold that many elements.
    std::size_t Count(std::size_t elementBytes);

    dom::MessageReader& reader_;
    char const* who_;
    unsigned char id_;
};

// The view and look notices of an observer that knows one view class and one kind of look
// (schematic or not); a look notice of the other kind is read and dropped. false for other ids.
template <class View, class Look, class Observer>
bool DecodeViewAndLook(Observer& observer, Decoder& in, unsigned char id, bool schematic) {
    switch (id) {
    case BaseSceneObserver::ViewCreateEventId:
        observer.OnViewCreate(in.ObjectAs<View>());
        return true;
    case BaseSceneObserver::ViewRemoveEventId:
        observer.OnViewRemove(in.ObjectAs<View>());
        return true;
    case BaseSceneObserver::AppearanceChangedEventId: {
        bool ofSchematic = in.Bool();
        std::set<Look> on = in.Looks<Look>();
        std::set<Look> off = in.Looks<Look>();
        if (ofSchematic == schematic) {
            observer.OnAppearanceChanged(on, off);
        }
        return true;
    }
    default:
        return false;
    }
}

// The fill, isolation and excluded-type notices every board scene observer decodes alike; false
// for other ids.
template <class Observer>
bool DecodeBoardNotice(Observer& observer, Decoder& in, unsigned char id) {
    switch (id) {
    case BaseSceneObserver::FillShapesChangedEventId:
        observer.OnFillShapesChanged(in.Bool());
        return true;
    case BaseSceneObserver::IsolateEventId: {
        std::vector<AppearanceItem> items = in.Items();
        observer.OnIsolate(items, in.Bool());
        return true;
    }
    case BaseSceneObserver::IsolateLayersEventId: {
        std::vector<short> layers = in.Shorts();
        observer.OnIsolateLayers(layers, in.Bool());
        return true;
    }
    case BaseSceneObserver::IsolateOnlyVisibleChangedEventId:
        observer.OnIsolateOnlyVisibleChanged(in.Bool());
        return true;
    case BaseSceneObserver::SlExcludedObjTypesChangedEventId:
        observer.OnSlExcludedObjTypesChanged();
        return true;
    default:
        return false;
    }
}

} // namespace qzk::ecad::detail
