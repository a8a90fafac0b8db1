#include "scene/InvertLayersOperationStep.h"

namespace qzkapp::ecad {

InvertLayersOperationStep::InvertLayersOperationStep(BaseScene* scene)
    : Frame(du::SmartPtr<BaseScene>(scene), Toggle()) {}

du::Symbol InvertLayersOperationStep::GetStepType() {
    static du::Symbol const type("QzkappEcadInvertLayersStep");
    return type;
}

void InvertLayersOperationStep::Apply(Toggle const& /*held*/) const {
    target_->DrawOrderInvertLayers(du::SmartPtr<qzk::Operation>());
}

} // namespace qzkapp::ecad
