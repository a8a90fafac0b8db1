// Undo step of moving one layer in the display priority: undo moves it back to where it was,
// redo to where it went. Neither records anything.
#pragma once

#include "du/SmartPtr.h"
#include "qzk/OperationStep.h"
#include "scene/BaseScene.h"

namespace qzkapp::ecad {

class DisplayPriorityOperationStep : public qzk::OperationStep {
public:
    DisplayPriorityOperationStep(BaseScene* scene, short layer, uint64 oldIndex, uint64 newIndex);
    du::Symbol GetStepType() override;
    void Undo() override;
    void Redo() override;

private:
    du::SmartPtr<BaseScene> scene_;
    short layer_;
    uint64 oldIndex_;
    uint64 newIndex_;
};

} // namespace qzkapp::ecad
