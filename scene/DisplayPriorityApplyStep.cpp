#include "scene/DisplayPriorityApplyStep.h"

namespace qzkapp::ecad {

DisplayPriorityApplyStep::DisplayPriorityApplyStep(BaseScene* scene)
    : scene_(scene), invert_(false) {
    if (scene_) {
        scene_->GetDrawOrder(order_);
        invert_ = scene_->GetInvertLayers();
    }
}

du::Symbol DisplayPriorityApplyStep::GetStepType() {
    static du::Symbol const type("QzkappEcadDisplayPriorityApplyStep");
    return type;
}

void DisplayPriorityApplyStep::Undo() {
    if (!scene_) {
        return;
    }
    bool const presentInvert = scene_->GetInvertLayers();
    std::vector<short> present;
    scene_->GetDrawOrder(present);
    scene_->SetDrawOrder(order_, true, invert_);
    order_ = std::move(present);
    invert_ = presentInvert;
}

} // namespace qzkapp::ecad
