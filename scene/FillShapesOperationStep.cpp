#include "scene/FillShapesOperationStep.h"

namespace qzkapp::ecad {

FillShapesOperationStep::FillShapesOperationStep(BaseScene* scene) : scene_(scene) {}

du::Symbol FillShapesOperationStep::GetStepType() {
    static du::Symbol const type("QzkappEcadFillShapesOperationStep");
    return type;
}

void FillShapesOperationStep::Undo() {
    if (scene_) {
        scene_->ToggleFillShapes(du::SmartPtr<qzk::Operation>());
    }
}

} // namespace qzkapp::ecad
