// Undo step of a change of overlay colours: the list before the change, swapped with the present
// one through the helper's UpdateOverlayCVInfo. Only colours and visibilities come back: an
// overlay removed since stays removed.
//
// The helper is held by a plain pointer, with no reference: the operation that holds the step
// must not outlive the scene.
#pragma once

#include "board/PCBSceneHelper.h"
#include "qzk/ecad/AnnoCVInfo.h"
#include "scene/SwapStep.h"

#include <vector>

namespace qzkapp::ecad {

class ColorVisOverlayOperationStep : public SwapStep<ColorVisOverlayOperationStep, PCBSceneHelper*,
                                                     std::vector<qzk::ecad::AnnoCVInfo>> {
    using Frame =
        SwapStep<ColorVisOverlayOperationStep, PCBSceneHelper*, std::vector<qzk::ecad::AnnoCVInfo>>;

public:
    ColorVisOverlayOperationStep(PCBSceneHelper* helper,
                                 std::vector<qzk::ecad::AnnoCVInfo> const& list);
    du::Symbol GetStepType() override;

private:
    friend Frame;
    void Read(std::vector<qzk::ecad::AnnoCVInfo>& out) const;
    void Apply(std::vector<qzk::ecad::AnnoCVInfo> const& held) const;
};

} // namespace qzkapp::ecad
