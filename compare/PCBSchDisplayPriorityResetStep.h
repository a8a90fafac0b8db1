// Undo step of a reset of either list of a board-against-schematic compare: undo puts back the
// list from before the reset (and, for the board's, the inversion), redo resets again, which
// makes a fresh undo entry as every reset of these lists does.
#pragma once

#include "scene/DisplayPriorityResetStep.h"

#include <vector>

namespace qzkapp::ecad {

class PCBSchDisplayPriorityResetStep : public DisplayPriorityResetStep {
public:
    // pcb: the board's list, otherwise the schematic's.
    PCBSchDisplayPriorityResetStep(BaseScene* scene, std::vector<short> const& order, bool pcb);
    du::Symbol GetStepType() override;
    void Undo() override;
    void Redo() override;

private:
    bool pcb_;
};

} // namespace qzkapp::ecad
