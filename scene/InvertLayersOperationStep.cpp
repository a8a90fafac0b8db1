#include "scene/InvertLayersOperationStep.h"

namespace qzkapp::ecad {

InvertLayersOperationStep::InvertLayersOperationStep(BaseScene* scene) : scene_(scene) {}

du::Symbol InvertLayersOperationStep::GetStepType() {
    static du::Symbol const type("QzkappEcadInvertLayersStep");
    return type;
}

void InvertLayersOperationStep::Undo() {
    if (scene_) {
        scene_->DrawOrderInvertLayers(du::SmartPtr<qzk::Operation>());
    }
}

} // namespace qzkapp::ecad
