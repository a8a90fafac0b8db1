#include "scene/ColorVisGroupOperationStep.h"

namespace qzkapp::ecad {
namespace {

// Steps keep a scratch copy with the schematic flag off; only the entries matter to an undo.
qzk::ecad::GroupCVInfoSet CopyOf(qzk::ecad::GroupCVInfoSet const& groups) {
    qzk::ecad::GroupCVInfoSet copy(false);
    copy.SetInfo(groups);
    return copy;
}

} // namespace

ColorVisGroupOperationStep::ColorVisGroupOperationStep(BaseScene* scene,
                                                       qzk::ecad::GroupCVInfoSet const& groups)
    : Frame(du::SmartPtr<BaseScene>(scene), CopyOf(groups)) {}

du::Symbol ColorVisGroupOperationStep::GetStepType() {
    static du::Symbol const type("QzkappEcadColorVisGroupOperationStep");
    return type;
}

void ColorVisGroupOperationStep::Read(qzk::ecad::GroupCVInfoSet& out) const {
    target_->GetGroupColorVisInfo(out);
}

void ColorVisGroupOperationStep::Apply(qzk::ecad::GroupCVInfoSet const& held) const {
    target_->UpdateGroupCV(held, ChangeSourceUndo);
}

void ColorVisGroupOperationStep::Keep(qzk::ecad::GroupCVInfoSet&& present) {
    state_.SetInfo(present);
}

} // namespace qzkapp::ecad
