// The undo step of a rotation: holds the rotation to go back to (read from the scene when the
// step is made) and swaps it with the present one through the scene's SetRotation, which turns
// the view too.
#pragma once

#include "du/SmartPtr.h"
#include "du/Symbol.h"
#include "qzk/Operation.h"
#include "scene/BaseScene.h"
#include "scene/SwapStep.h"

namespace qzkapp::ecad {

class RotationOperationStep
    : public SwapStep<RotationOperationStep, du::SmartPtr<BaseScene>, short> {
    using Frame = SwapStep<RotationOperationStep, du::SmartPtr<BaseScene>, short>;

public:
    explicit RotationOperationStep(BaseScene* scene)
        : Frame(du::SmartPtr<BaseScene>(scene), scene != nullptr ? scene->GetRotation() : 0) {}

    du::Symbol GetStepType() override {
        static du::Symbol const type("QzkappEcadRotationOperationStep");
        return type;
    }

private:
    friend Frame;
    void Read(short& present) const { present = target_->GetRotation(); }
    void Apply(short const& held) const {
        target_->SetRotation(held, du::SmartPtr<qzk::Operation>(), true);
    }
};

} // namespace qzkapp::ecad
