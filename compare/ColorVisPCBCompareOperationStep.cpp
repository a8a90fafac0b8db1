#include "compare/ColorVisPCBCompareOperationStep.h"

#include "compare/PCBCompareScene.h"

namespace qzkapp::ecad {
namespace {

qzk::ecad::CompareColorVisPtrVec CloneOf(qzk::ecad::CompareColorVisPtrVec const& rows) {
    qzk::ecad::CompareColorVisPtrVec copy;
    rows.Clone(copy);
    return copy;
}

} // namespace

ColorVisPCBCompareOperationStep::ColorVisPCBCompareOperationStep(
    PCBCompareScene* scene, qzk::ecad::CompareColorVisPtrVec const& rows)
    : Frame(du::SmartPtr<PCBCompareScene>(scene), CloneOf(rows)) {}

du::Symbol ColorVisPCBCompareOperationStep::GetStepType() {
    static du::Symbol const type("QzkappEcadColorVisPCBCompareOperationStep");
    return type;
}

// GetColorVisInfo clones, so the step keeps rows of its own either way.
void ColorVisPCBCompareOperationStep::Read(qzk::ecad::CompareColorVisPtrVec& out) const {
    target_->GetColorVisInfo(out);
}

void ColorVisPCBCompareOperationStep::Apply(qzk::ecad::CompareColorVisPtrVec const& held) const {
    target_->SetColorVisInfo(held, du::SmartPtr<qzk::Operation>(), ChangeSourceUndo);
}

} // namespace qzkapp::ecad
