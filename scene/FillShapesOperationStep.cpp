#include "scene/FillShapesOperationStep.h"

namespace qzkapp::ecad {

FillShapesOperationStep::FillShapesOperationStep(BaseScene* scene)
    : Frame(du::SmartPtr<BaseScene>(scene), Toggle()) {}

du::Symbol FillShapesOperationStep::GetStepType() {
    static du::Symbol const type("QzkappEcadFillShapesOperationStep");
    return type;
}

void FillShapesOperationStep::Apply(Toggle const& /*held*/) const {
    target_->ToggleFillShapes(du::SmartPtr<qzk::Operation>());
}

} // namespace qzkapp::ecad
