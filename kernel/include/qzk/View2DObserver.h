// An observer of a 2D view: focus, activation and status-message notices, decoded from the
// view's messages.
//
// Ids: 3 focus (bool), 4 activate, 5 status message (the text is read from the view, not sent).
// Lower ids go to qzk::Observer. Derived view observers number their own events from
// NextViewEventId and hand lower ids here; ids this class does not know are ignored.
#pragma once

#include "qzk/Observer.h"

namespace qzk {

class View2DObserver : public Observer {
public:
    enum : unsigned char {
        ViewFocusEventId = 3,
        ViewActivateEventId = 4,
        StatusMessageEventId = 5,
        NextViewEventId = 6,
    };

    View2DObserver();
    ~View2DObserver() override;

    void HandleEvent(unsigned char id, dom::MessageReader& reader) override;
    virtual void OnViewFocus(bool focused);
    virtual void OnViewActivate();
    virtual void OnStatusMessage();
};

} // namespace qzk
