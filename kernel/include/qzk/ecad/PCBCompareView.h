// The view of a board compare scene and of a board-to-overlay compare scene.
#pragma once

#include "du/SmartPtr.h"
#include "qzk/ecad/CompareView.h"

namespace qzk::ecad {

class PCBCompareViewObserver;

class PCBCompareView : public CompareView {
public:
    // Control: a new view of scene with pages pages (0 is taken as 1), added to the scene.
    static du::SmartPtr<PCBCompareView> Create(qzk::Scene& scene, unsigned int pages = 1);
    ~PCBCompareView() override;

    ClassType const& GetClassType() const override;
    du::Symbol GetDebugClassName() const override;

    // false for an observer registered anywhere already.
    bool RegisterObserver(PCBCompareViewObserver& observer);
    bool UnregisterObserver(PCBCompareViewObserver& observer);

    // Control: the dimming level of what is not highlighted changed; told to the observers.
    void NotifyDimmingLevel(unsigned char level);

protected:
    PCBCompareView(qzk::Scene& scene, unsigned int pages);
};

} // namespace qzk::ecad
