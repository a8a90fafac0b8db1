// Undo step of applying a stored display priority: holds the order and inversion from before,
// read from the scene when the step is built; undo swaps them with the present ones, and so
// does redo.
#pragma once

#include "du/SmartPtr.h"
#include "qzk/OperationStep.h"
#include "scene/BaseScene.h"

#include <vector>

namespace qzkapp::ecad {

class DisplayPriorityApplyStep : public qzk::OperationStep {
public:
    explicit DisplayPriorityApplyStep(BaseScene* scene);
    du::Symbol GetStepType() override;
    void Undo() override;

private:
    du::SmartPtr<BaseScene> scene_;
    std::vector<short> order_;
    bool invert_;
};

} // namespace qzkapp::ecad
