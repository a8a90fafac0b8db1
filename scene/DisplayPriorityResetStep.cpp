#include "scene/DisplayPriorityResetStep.h"

namespace qzkapp::ecad {

DisplayPriorityResetStep::DisplayPriorityResetStep(BaseScene* scene,
                                                   std::vector<short> const& order)
    : scene_(scene), order_(order), invert_(scene != nullptr && scene->GetInvertLayers()) {}

du::Symbol DisplayPriorityResetStep::GetStepType() {
    static du::Symbol const type("QzkappEcadDisplayPriorityResetStep");
    return type;
}

void DisplayPriorityResetStep::Undo() {
    if (scene_) {
        scene_->SetDrawOrder(order_, true, invert_);
    }
}

void DisplayPriorityResetStep::Redo() {
    if (scene_) {
        scene_->ResetDrawOrder(false);
    }
}

} // namespace qzkapp::ecad
