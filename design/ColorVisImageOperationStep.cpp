#include "design/ColorVisImageOperationStep.h"

namespace qzkapp::ecad {

ColorVisImageOperationStep::ColorVisImageOperationStep(
    Scene* scene, std::vector<qzk::ecad::AnnoCVInfo> const& rows)
    : Frame(du::SmartPtr<Scene>(scene), rows) {}

du::Symbol ColorVisImageOperationStep::GetStepType() {
    static du::Symbol const type("QzkappEcadColorVisImageOperationStep");
    return type;
}

void ColorVisImageOperationStep::Read(std::vector<qzk::ecad::AnnoCVInfo>& out) const {
    target_->GetImageColorVisInfo(out);
}

void ColorVisImageOperationStep::Apply(std::vector<qzk::ecad::AnnoCVInfo> const& held) const {
    target_->UpdateImageCVInfo(held, ChangeSourceUndo);
}

} // namespace qzkapp::ecad
