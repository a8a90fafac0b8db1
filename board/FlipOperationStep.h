// The undo step of a flip: flipping again is its own inverse, so undo and redo toggle the flip
// through the scene, which also turns the view and inverts the layer order.
#pragma once

#include "scene/ToggleStep.h"

namespace qzkapp::ecad {

inline constexpr char kFlipStepType[] = "QzkappEcadFlipOperationStep";

using FlipOperationStep = ToggleStep<&BaseScene::ToggleFlip, kFlipStepType>;

} // namespace qzkapp::ecad
