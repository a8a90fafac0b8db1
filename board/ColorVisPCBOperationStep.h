// Undo step of a change of board sublayer colours: the set before the change, swapped with the
// present one through the helper's SetColorVisInfo.
//
// The helper is held by a plain pointer, with no reference: the operation that holds the step
// must not outlive the scene.
#pragma once

#include "board/PCBSceneHelper.h"
#include "qzk/ecad/SublayerPCB_CVSet.h"
#include "scene/SwapStep.h"

namespace qzkapp::ecad {

class ColorVisPCBOperationStep
    : public SwapStep<ColorVisPCBOperationStep, PCBSceneHelper*, qzk::ecad::SublayerPCB_CVSet> {
    using Frame = SwapStep<ColorVisPCBOperationStep, PCBSceneHelper*, qzk::ecad::SublayerPCB_CVSet>;

public:
    ColorVisPCBOperationStep(PCBSceneHelper* helper, qzk::ecad::SublayerPCB_CVSet const& set);
    du::Symbol GetStepType() override;

private:
    friend Frame;
    void Read(qzk::ecad::SublayerPCB_CVSet& out) const;
    void Apply(qzk::ecad::SublayerPCB_CVSet const& held) const;
};

} // namespace qzkapp::ecad
