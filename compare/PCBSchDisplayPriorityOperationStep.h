// Undo step of moving one layer in either list of a board-against-schematic compare: undo moves
// it back to where it was, redo to where it went, in the list it was moved in. Neither records.
#pragma once

#include "du/Types.h"
#include "scene/DisplayPriorityOperationStep.h"

namespace qzkapp::ecad {

class PCBSchDisplayPriorityOperationStep : public DisplayPriorityOperationStep {
public:
    // pcb: the board's list, otherwise the schematic's.
    PCBSchDisplayPriorityOperationStep(BaseScene* scene, short layer, uint64 oldIndex,
                                       uint64 newIndex, bool pcb);
    du::Symbol GetStepType() override;
    void Undo() override;
    void Redo() override;

private:
    void MoveTo(uint64 index) const;

    bool pcb_;
};

} // namespace qzkapp::ecad
