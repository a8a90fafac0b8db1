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
    return dom::Observer::ZeroReferenceCountHook();
}

Observable* Observer::GetObservable() const {
    return Observable::TieOf(*this);
}

} // namespace qzk
