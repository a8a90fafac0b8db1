// Undo step of the fill switch; a toggle is its own inverse, so the step holds only the scene.
#pragma once

#include "du/SmartPtr.h"
#include "qzk/OperationStep.h"
#include "scene/BaseScene.h"

namespace qzkapp::ecad {

class FillShapesOperationStep : public qzk::OperationStep {
public:
    explicit FillShapesOperationStep(BaseScene* scene);
    du::Symbol GetStepType() override;
    void Undo() override;

private:
    du::SmartPtr<BaseScene> scene_;
};

} // namespace qzkapp::ecad
