// Undo step of a change of schematic sublayer colours: the map before the change, swapped with
// the present one through the helper's SetSublayerColorVisInfo.
//
// The helper is held by a plain pointer, with no reference: the operation that holds the step
// leaves the undo list when the scene ends.
#pragma once

#include "scene/SwapStep.h"
#include "schematic/SchSceneHelper.h"

namespace qzkapp::ecad {

class ColorVisSublayerOperationStep
    : public SwapStep<ColorVisSublayerOperationStep, SchSceneHelper*, SchSceneHelper::SublayerMap> {
    using Frame =
        SwapStep<ColorVisSublayerOperationStep, SchSceneHelper*, SchSceneHelper::SublayerMap>;

public:
    ColorVisSublayerOperationStep(SchSceneHelper* helper, SchSceneHelper::SublayerMap const& map);
    du::Symbol GetStepType() override;

private:
    friend Frame;
    void Read(SchSceneHelper::SublayerMap& out) const;
    void Apply(SchSceneHelper::SublayerMap const& held) const;
};

} // namespace qzkapp::ecad
