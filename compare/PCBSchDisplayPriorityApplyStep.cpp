#include "compare/PCBSchDisplayPriorityApplyStep.h"

#include "compare/PCBSchCompareScene.h"

#include <utility>

namespace qzkapp::ecad {

PCBSchDisplayPriorityApplyStep::PCBSchDisplayPriorityApplyStep(BaseScene* scene, bool pcb)
    : DisplayPriorityApplyStep(scene), pcb_(pcb) {
    // The base read the scene's single list, which this scene doesn't use.
    if (auto* compare = dynamic_cast<PCBSchCompareScene*>(target_.Get())) {
        if (pcb_) {
            compare->GetPCBDrawOrder(state_.order);
        } else {
            compare->GetSchDrawOrder(state_.order);
        }
    }
}

du::Symbol PCBSchDisplayPriorityApplyStep::GetStepType() {
    static du::Symbol const type("QzkappEcadPCBSchDisplayPriorityApplyStep");
    return type;
}

void PCBSchDisplayPriorityApplyStep::Undo() {
    auto* scene = dynamic_cast<PCBSchCompareScene*>(target_.Get());
    if (scene == nullptr) {
        return;
    }
    DrawOrderState present;
    present.invert = scene->GetInvertLayers();
    if (pcb_) {
        scene->GetPCBDrawOrder(present.order);
        scene->SetPCBDrawOrder(state_.order, true, state_.invert);
    } else {
        scene->GetSchDrawOrder(present.order);
        scene->SetSchDrawOrder(state_.order);
    }
    state_ = std::move(present);
}

} // namespace qzkapp::ecad
