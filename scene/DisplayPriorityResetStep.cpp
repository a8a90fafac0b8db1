#include "scene/DisplayPriorityResetStep.h"

namespace qzkapp::ecad {

DisplayPriorityResetStep::DisplayPriorityResetStep(BaseScene* scene,
                                                   std::vector<short> const& order)
    : Frame(du::SmartPtr<BaseScene>(scene),
            DrawOrderState{order, scene != nullptr && scene->GetInvertLayers()}) {}

du::Symbol DisplayPriorityResetStep::GetStepType() {
    static du::Symbol const type("QzkappEcadDisplayPriorityResetStep");
    return type;
}

void DisplayPriorityResetStep::Apply(DrawOrderState const& held) const {
    target_->SetDrawOrder(held.order, true, held.invert);
}

void DisplayPriorityResetStep::Redo() {
    if (target_) {
        target_->ResetDrawOrder(false);
    }
}

} // namespace qzkapp::ecad
