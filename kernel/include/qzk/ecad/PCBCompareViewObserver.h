// Observer of a board compare view (also of the board-to-overlay compare scene's view).
#pragma once

#include "qzk/ecad/CompareViewObserver.h"

namespace qzk::ecad {

class PCBCompareViewObserver : public CompareViewObserver {
public:
    PCBCompareViewObserver();
    ~PCBCompareViewObserver() override;

    void HandleEvent(unsigned char id, dom::MessageReader& reader) override;

    virtual void OnDimmingLevel(unsigned char level);
};

} // namespace qzk::ecad
