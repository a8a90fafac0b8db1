#include "scene/DisplayPriorityOperationStep.h"

namespace qzkapp::ecad {

DisplayPriorityOperationStep::DisplayPriorityOperationStep(BaseScene* scene, short layer,
                                                           uint64 oldIndex, uint64 newIndex)
    : scene_(scene), layer_(layer), oldIndex_(oldIndex), newIndex_(newIndex) {}

du::Symbol DisplayPriorityOperationStep::GetStepType() {
    static du::Symbol const type("QzkappEcadDisplayPriorityOperationStep");
    return type;
}

void DisplayPriorityOperationStep::Undo() {
    if (scene_) {
        scene_->DrawOrderMoveLayer(layer_, oldIndex_, false);
    }
}

void DisplayPriorityOperationStep::Redo() {
    if (scene_) {
        scene_->DrawOrderMoveLayer(layer_, newIndex_, false);
    }
}

} // namespace qzkapp::ecad
