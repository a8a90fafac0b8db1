#include "scene/DisplayPriorityApplyStep.h"

namespace qzkapp::ecad {

DisplayPriorityApplyStep::DisplayPriorityApplyStep(BaseScene* scene)
    : Frame(du::SmartPtr<BaseScene>(scene), DrawOrderState()) {
    if (target_) {
        target_->GetDrawOrder(state_.order);
        state_.invert = target_->GetInvertLayers();
    }
}

du::Symbol DisplayPriorityApplyStep::GetStepType() {
    static du::Symbol const type("QzkappEcadDisplayPriorityApplyStep");
    return type;
}

void DisplayPriorityApplyStep::Read(DrawOrderState& present) const {
    present.invert = target_->GetInvertLayers();
    target_->GetDrawOrder(present.order);
}

void DisplayPriorityApplyStep::Apply(DrawOrderState const& held) const {
    target_->SetDrawOrder(held.order, true, held.invert);
}

} // namespace qzkapp::ecad
