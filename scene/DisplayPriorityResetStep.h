// Undo step of a reset of the display priority: undo puts back the order and the inversion from
// before the reset; redo resets again. The inversion is read from the scene when the step is
// built.
#pragma once

#include "du/SmartPtr.h"
#include "qzk/OperationStep.h"
#include "scene/BaseScene.h"

#include <vector>

namespace qzkapp::ecad {

class DisplayPriorityResetStep : public qzk::OperationStep {
public:
    DisplayPriorityResetStep(BaseScene* scene, std::vector<short> const& order);
    du::Symbol GetStepType() override;
    void Undo() override;
    void Redo() override;

private:
    du::SmartPtr<BaseScene> scene_;
    std::vector<short> order_;
    bool invert_;
};

} // namespace qzkapp::ecad
