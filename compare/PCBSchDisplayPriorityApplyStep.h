// Undo step of applying a stored order to either list of a board-against-schematic compare:
// holds that list and the inversion from before, and swaps them with the present ones on undo
// and on redo alike.
#pragma once

#include "scene/DisplayPriorityApplyStep.h"

namespace qzkapp::ecad {

class PCBSchDisplayPriorityApplyStep : public DisplayPriorityApplyStep {
public:
    // pcb: the board's list, otherwise the schematic's.
    PCBSchDisplayPriorityApplyStep(BaseScene* scene, bool pcb);
    du::Symbol GetStepType() override;
    void Undo() override;

private:
    bool pcb_;
};

} // namespace qzkapp::ecad
