// Undo step of a reset of the display priority: undo puts back the order and the inversion from
// before the reset and keeps them; redo resets again. The inversion is read from the scene when
// the step is built.
#pragma once

#include "du/SmartPtr.h"
#include "scene/BaseScene.h"
#include "scene/DrawOrderState.h"
#include "scene/SwapStep.h"

#include <vector>

namespace qzkapp::ecad {

class DisplayPriorityResetStep
    : public SwapStep<DisplayPriorityResetStep, du::SmartPtr<BaseScene>, DrawOrderState> {
    using Frame = SwapStep<DisplayPriorityResetStep, du::SmartPtr<BaseScene>, DrawOrderState>;

public:
    DisplayPriorityResetStep(BaseScene* scene, std::vector<short> const& order);
    du::Symbol GetStepType() override;
    void Redo() override;

private:
    friend Frame;
    void Read(DrawOrderState& /*present*/) const {}
    void Apply(DrawOrderState const& held) const;
    void Keep(DrawOrderState&& /*present*/) {}
};

} // namespace qzkapp::ecad
