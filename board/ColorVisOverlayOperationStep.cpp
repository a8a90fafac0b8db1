#include "board/ColorVisOverlayOperationStep.h"

namespace qzkapp::ecad {

ColorVisOverlayOperationStep::ColorVisOverlayOperationStep(
    PCBSceneHelper* helper, std::vector<qzk::ecad::AnnoCVInfo> const& list)
    : Frame(helper, list) {}

du::Symbol ColorVisOverlayOperationStep::GetStepType() {
    static du::Symbol const type("QzkappEcadColorVisOverlayOperationStep");
    return type;
}

void ColorVisOverlayOperationStep::Read(std::vector<qzk::ecad::AnnoCVInfo>& out) const {
    target_->GetOverlayColorVisInfo(out);
}

void ColorVisOverlayOperationStep::Apply(std::vector<qzk::ecad::AnnoCVInfo> const& held) const {
    target_->UpdateOverlayCVInfo(held, ChangeSourceUndo);
}

} // namespace qzkapp::ecad
