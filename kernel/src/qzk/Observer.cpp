#include "qzk/Observer.h"

#include "dom/MessageReader.h"
#include "dom/ObserverProxy.h"
#include "qzk/Observable.h"
#include "qzref/Journal.h"

namespace qzk {

Observer::Observer() = default;

Observer::~Observer() {
    // Stop deliveries before the tie goes: this object is already half destroyed.
    DetachFromMessageLoop();
    Observable::Unlink(*this, nullptr);
}

void Observer::EventHandler(dom::MessageReader& reader) {
    unsigned char id = 0;
    if (!reader.GetUInt8Value(id)) {
        return;
    }
    HandleEvent(id, reader);
}

bool Observer::RequiresBeginEnd() const {
    return false;
}

void Observer::OnBeginUpdate() {}

void Observer::OnEndUpdate() {}

void Observer::OnUnregister() {}

void Observer::HandleEvent(unsigned char id, dom::MessageReader& /*reader*/) {
    switch (id) {
    case BeginUpdateEventId:
        OnBeginUpdate();
        break;
    case EndUpdateEventId:
        OnEndUpdate();
        break;
    case UnregisterEventId:
        OnUnregister();
        break;
    default:
        break;
    }
}

bool Observer::Unregister() {
    qzref::Journal::Record(GetObjectClass(), "Unregister");
    du::SmartPtr<dom::ObserverProxy> proxy = Observable::Unlink(*this, nullptr);
    if (!proxy) {
        return false;
    }
    Observable::AfterUnregister(*this, proxy);
    return true;
}

bool Observer::ZeroReferenceCountHook() const {
    if (!dom::Observer::ZeroReferenceCountHook()) {
        return false;
    }
    // Leave the observable's list before the count can read 0: an observable that ends now
    // either finds this observer still counted (and holds it while detaching it) or not at all.
    Observable::Unlink(const_cast<Observer&>(*this), nullptr);
    return true;
}

Observable* Observer::GetObservable() const {
    return Observable::TieOf(*this);
}

} // namespace qzk
