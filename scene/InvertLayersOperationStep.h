// Undo step of inverting the display priority; an inversion is its own inverse.
#pragma once

#include "du/SmartPtr.h"
#include "qzk/OperationStep.h"
#include "scene/BaseScene.h"

namespace qzkapp::ecad {

class InvertLayersOperationStep : public qzk::OperationStep {
public:
    explicit InvertLayersOperationStep(BaseScene* scene);
    du::Symbol GetStepType() override;
    void Undo() override;

private:
    du::SmartPtr<BaseScene> scene_;
};

} // namespace qzkapp::ecad
