// Undo step of a change of a board compare's rows: the rows before the change, a list of its
// own, swapped with the present ones through the scene's SetColorVisInfo.
#pragma once

#include "du/SmartPtr.h"
#include "qzk/ecad/CompareColorVisPtrVec.h"
#include "scene/SwapStep.h"

namespace qzkapp::ecad {

class PCBCompareScene;

class ColorVisPCBCompareOperationStep
    : public SwapStep<ColorVisPCBCompareOperationStep, du::SmartPtr<PCBCompareScene>,
                      qzk::ecad::CompareColorVisPtrVec> {
    using Frame = SwapStep<ColorVisPCBCompareOperationStep, du::SmartPtr<PCBCompareScene>,
                           qzk::ecad::CompareColorVisPtrVec>;

public:
    // The rows are cloned: later changes to the scene's records don't reach the step.
    ColorVisPCBCompareOperationStep(PCBCompareScene* scene,
                                    qzk::ecad::CompareColorVisPtrVec const& rows);
    du::Symbol GetStepType() override;

private:
    friend Frame;
    void Read(qzk::ecad::CompareColorVisPtrVec& out) const;
    void Apply(qzk::ecad::CompareColorVisPtrVec const& held) const;
};

} // namespace qzkapp::ecad
