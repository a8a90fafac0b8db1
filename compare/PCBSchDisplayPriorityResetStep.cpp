#include "compare/PCBSchDisplayPriorityResetStep.h"

#include "compare/PCBSchCompareScene.h"

namespace qzkapp::ecad {

PCBSchDisplayPriorityResetStep::PCBSchDisplayPriorityResetStep(BaseScene* scene,
                                                               std::vector<short> const& order,
                                                               bool pcb)
    : DisplayPriorityResetStep(scene, order), pcb_(pcb) {}

du::Symbol PCBSchDisplayPriorityResetStep::GetStepType() {
    static du::Symbol const type("QzkappEcadPCBSchDisplayPriorityResetStep");
    return type;
}

void PCBSchDisplayPriorityResetStep::Undo() {
    auto* scene = dynamic_cast<PCBSchCompareScene*>(target_.Get());
    if (scene == nullptr) {
        return;
    }
    if (pcb_) {
        scene->SetPCBDrawOrder(state_.order, true, state_.invert);
    } else {
        scene->SetSchDrawOrder(state_.order);
    }
}

void PCBSchDisplayPriorityResetStep::Redo() {
    if (auto* scene = dynamic_cast<PCBSchCompareScene*>(target_.Get())) {
        scene->ResetPCBSchDrawOrder(pcb_);
    }
}

} // namespace qzkapp::ecad
