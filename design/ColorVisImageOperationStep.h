// Undo step of a change of image colours: the rows before the change, swapped with the present
// ones through the scene's UpdateImageCVInfo (the rows and the kernel's overlays; the images
// keep what they were given).
#pragma once

#include "design/Scene.h"
#include "qzk/ecad/AnnoCVInfo.h"
#include "scene/SwapStep.h"

#include <vector>

namespace qzkapp::ecad {

class ColorVisImageOperationStep : public SwapStep<ColorVisImageOperationStep, du::SmartPtr<Scene>,
                                                   std::vector<qzk::ecad::AnnoCVInfo>> {
    using Frame = SwapStep<ColorVisImageOperationStep, du::SmartPtr<Scene>,
                           std::vector<qzk::ecad::AnnoCVInfo>>;

public:
    ColorVisImageOperationStep(Scene* scene, std::vector<qzk::ecad::AnnoCVInfo> const& rows);
    du::Symbol GetStepType() override;

private:
    friend Frame;
    void Read(std::vector<qzk::ecad::AnnoCVInfo>& out) const;
    void Apply(std::vector<qzk::ecad::AnnoCVInfo> const& held) const;
};

} // namespace qzkapp::ecad
