#include "schematic/ColorVisSublayerOperationStep.h"

namespace qzkapp::ecad {

ColorVisSublayerOperationStep::ColorVisSublayerOperationStep(SchSceneHelper* helper,
                                                             SchSceneHelper::SublayerMap const& map)
    : Frame(helper, map) {}

du::Symbol ColorVisSublayerOperationStep::GetStepType() {
    static du::Symbol const type("QzkappEcadColorVisSublayerOperationStep");
    return type;
}

void ColorVisSublayerOperationStep::Read(SchSceneHelper::SublayerMap& out) const {
    target_->GetSublayerColorVisInfo(out);
}

void ColorVisSublayerOperationStep::Apply(SchSceneHelper::SublayerMap const& held) const {
    target_->SetSublayerColorVisInfo(held, du::SmartPtr<qzk::Operation>(), ChangeSourceUndo);
}

} // namespace qzkapp::ecad
