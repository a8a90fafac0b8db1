#include "board/ColorVisPCBOperationStep.h"

namespace qzkapp::ecad {

ColorVisPCBOperationStep::ColorVisPCBOperationStep(PCBSceneHelper* helper,
                                                   qzk::ecad::SublayerPCB_CVSet const& set)
    : Frame(helper, set) {}

du::Symbol ColorVisPCBOperationStep::GetStepType() {
    static du::Symbol const type("QzkappEcadColorVisPCBOperationStep");
    return type;
}

void ColorVisPCBOperationStep::Read(qzk::ecad::SublayerPCB_CVSet& out) const {
    target_->GetColorVisInfo(out);
}

void ColorVisPCBOperationStep::Apply(qzk::ecad::SublayerPCB_CVSet const& held) const {
    target_->SetColorVisInfo(held, du::SmartPtr<qzk::Operation>(), ChangeSourceUndo);
}

} // namespace qzkapp::ecad
