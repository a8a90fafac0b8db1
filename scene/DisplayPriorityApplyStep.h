// Undo step of applying a stored display priority: holds the order and inversion from before,
// read from the scene when the step is built; undo swaps them with the present ones, and so
// does redo.
#pragma once

#include "du/SmartPtr.h"
#include "scene/BaseScene.h"
#include "scene/DrawOrderState.h"
#include "scene/SwapStep.h"

namespace qzkapp::ecad {

class DisplayPriorityApplyStep
    : public SwapStep<DisplayPriorityApplyStep, du::SmartPtr<BaseScene>, DrawOrderState> {
    using Frame = SwapStep<DisplayPriorityApplyStep, du::SmartPtr<BaseScene>, DrawOrderState>;

public:
    explicit DisplayPriorityApplyStep(BaseScene* scene);
    du::Symbol GetStepType() override;

private:
    friend Frame;
    void Read(DrawOrderState& present) const;
    void Apply(DrawOrderState const& held) const;
};

} // namespace qzkapp::ecad
