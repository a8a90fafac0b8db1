// Undo step of inverting the display priority; an inversion is its own inverse.
#pragma once

#include "du/SmartPtr.h"
#include "scene/BaseScene.h"
#include "scene/SwapStep.h"

namespace qzkapp::ecad {

class InvertLayersOperationStep
    : public SwapStep<InvertLayersOperationStep, du::SmartPtr<BaseScene>, Toggle> {
    using Frame = SwapStep<InvertLayersOperationStep, du::SmartPtr<BaseScene>, Toggle>;

public:
    explicit InvertLayersOperationStep(BaseScene* scene);
    du::Symbol GetStepType() override;

private:
    friend Frame;
    void Read(Toggle& /*present*/) const {}
    void Apply(Toggle const& /*held*/) const;
};

} // namespace qzkapp::ecad
