// Undo step of the fill switch; a toggle is its own inverse, so the step holds only the scene.
#pragma once

#include "du/SmartPtr.h"
#include "scene/BaseScene.h"
#include "scene/SwapStep.h"

namespace qzkapp::ecad {

class FillShapesOperationStep
    : public SwapStep<FillShapesOperationStep, du::SmartPtr<BaseScene>, Toggle> {
    using Frame = SwapStep<FillShapesOperationStep, du::SmartPtr<BaseScene>, Toggle>;

public:
    explicit FillShapesOperationStep(BaseScene* scene);
    du::Symbol GetStepType() override;

private:
    friend Frame;
    void Read(Toggle& /*present*/) const {}
    void Apply(Toggle const& /*held*/) const;
};

} // namespace qzkapp::ecad
