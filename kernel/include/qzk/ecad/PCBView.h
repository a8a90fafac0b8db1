// The view of a board scene (and of the board side of a board-to-schematic compare scene).
#pragma once

#include "du/SmartPtr.h"
#include "qzk/ecad/View.h"

namespace qzk::ecad {

class PCBViewObserver;

class PCBView : public View {
public:
    // Control: a new view of scene with pages pages (0 is taken as 1), added to the scene.
    static du::SmartPtr<PCBView> Create(qzk::Scene& scene, unsigned int pages = 1);
    ~PCBView() override;

    ClassType const& GetClassType() const override;
    du::Symbol GetDebugClassName() const override;

    // false for an observer registered anywhere already.
    bool RegisterObserver(PCBViewObserver& observer);
    bool UnregisterObserver(PCBViewObserver& observer);

    // Control: the dimming level of what is not highlighted changed; told to the observers.
    void NotifyDimmingLevel(unsigned char level);

protected:
    PCBView(qzk::Scene& scene, unsigned int pages);
};

} // namespace qzk::ecad
