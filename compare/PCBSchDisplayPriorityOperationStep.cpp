#include "compare/PCBSchDisplayPriorityOperationStep.h"

#include "compare/PCBSchCompareScene.h"

namespace qzkapp::ecad {

PCBSchDisplayPriorityOperationStep::PCBSchDisplayPriorityOperationStep(BaseScene* scene,
                                                                       short layer, uint64 oldIndex,
                                                                       uint64 newIndex, bool pcb)
    : DisplayPriorityOperationStep(scene, layer, oldIndex, newIndex), pcb_(pcb) {}

du::Symbol PCBSchDisplayPriorityOperationStep::GetStepType() {
    static du::Symbol const type("QzkappEcadPCBSchDisplayPriorityOperationStep");
    return type;
}

void PCBSchDisplayPriorityOperationStep::Undo() {
    MoveTo(state_);
}

void PCBSchDisplayPriorityOperationStep::Redo() {
    MoveTo(newIndex_);
}

void PCBSchDisplayPriorityOperationStep::MoveTo(uint64 index) const {
    if (auto* scene = dynamic_cast<PCBSchCompareScene*>(target_.Get())) {
        scene->DrawOrderMoveLayer(pcb_, layer_, index, false);
    }
}

} // namespace qzkapp::ecad
