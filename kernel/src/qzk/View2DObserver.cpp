#include "qzk/View2DObserver.h"

#include "dom/MessageReader.h"

namespace qzk {

View2DObserver::View2DObserver() = default;

View2DObserver::~View2DObserver() = default;

void View2DObserver::HandleEvent(unsigned char id, dom::MessageReader& reader) {
    switch (id) {
    case ViewFocusEventId: {
        bool focused = false;
        if (reader.GetBooleanValue(focused)) {
            OnViewFocus(focused);
        }
        return;
    }
    case ViewActivateEventId:
        OnViewActivate();
        return;
    case StatusMessageEventId:
        OnStatusMessage();
        return;
    default:
        if (id < ViewFocusEventId) {
            Observer::HandleEvent(id, reader);
        }
        return;
    }
}

void View2DObserver::OnViewFocus(bool) {}

void View2DObserver::OnViewActivate() {}

void View2DObserver::OnStatusMessage() {}

} // namespace qzk
