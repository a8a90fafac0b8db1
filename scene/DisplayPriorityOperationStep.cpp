#include "scene/DisplayPriorityOperationStep.h"

namespace qzkapp::ecad {

DisplayPriorityOperationStep::DisplayPriorityOperationStep(BaseScene* scene, short layer,
                                                           uint64 oldIndex, uint64 newIndex)
    : Frame(du::SmartPtr<BaseScene>(scene), oldIndex), layer_(layer), newIndex_(newIndex) {}

du::Symbol DisplayPriorityOperationStep::GetStepType() {
    static du::Symbol const type("QzkappEcadDisplayPriorityOperationStep");
    return type;
}

void DisplayPriorityOperationStep::Apply(uint64 const& index) const {
    target_->DrawOrderMoveLayer(layer_, index, false);
}

void DisplayPriorityOperationStep::Redo() {
    if (target_) {
        Apply(newIndex_);
    }
}

} // namespace qzkapp::ecad
