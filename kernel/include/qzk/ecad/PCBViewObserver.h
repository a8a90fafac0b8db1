// Observer of a board view: adds the dimming level.
#pragma once

#include "qzk/ecad/ViewObserver.h"

namespace qzk::ecad {

class PCBViewObserver : public ViewObserver {
public:
    PCBViewObserver();
    ~PCBViewObserver() override;

    void HandleEvent(unsigned char id, dom::MessageReader& reader) override;

    virtual void OnDimmingLevel(unsigned char level);
};

} // namespace qzk::ecad
