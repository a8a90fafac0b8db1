// Undo step of inverting the board's list of a board-against-schematic compare: inverting again
// is its own inverse, so undo and redo both invert, without recording.
#pragma once

#include "scene/ToggleStep.h"

namespace qzkapp::ecad {

class PCBSchInvertLayersOperationStep : public InvertLayersOperationStep {
public:
    explicit PCBSchInvertLayersOperationStep(BaseScene* scene);
    du::Symbol GetStepType() override;
    void Undo() override;
};

} // namespace qzkapp::ecad
