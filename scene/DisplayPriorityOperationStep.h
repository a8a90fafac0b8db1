// Undo step of moving one layer in the display priority: undo moves it back to where it was,
// redo to where it went. Neither records anything.
#pragma once

#include "du/SmartPtr.h"
#include "du/Types.h"
#include "scene/BaseScene.h"
#include "scene/SwapStep.h"

namespace qzkapp::ecad {

class DisplayPriorityOperationStep
    : public SwapStep<DisplayPriorityOperationStep, du::SmartPtr<BaseScene>, uint64> {
    using Frame = SwapStep<DisplayPriorityOperationStep, du::SmartPtr<BaseScene>, uint64>;

public:
    DisplayPriorityOperationStep(BaseScene* scene, short layer, uint64 oldIndex, uint64 newIndex);
    du::Symbol GetStepType() override;
    void Redo() override;

private:
    friend Frame;
    void Read(uint64& /*present*/) const {}
    void Apply(uint64 const& index) const;
    void Keep(uint64&& /*present*/) {}

protected:
    // A scene with more than one list moves the layer in its own (the held state is the old
    // index).
    short layer_;
    uint64 newIndex_;
};

} // namespace qzkapp::ecad
