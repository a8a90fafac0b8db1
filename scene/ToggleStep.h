// The undo step of a scene's switch: a toggle is its own inverse, so the step holds only the
// scene and, on undo and redo alike, toggles again without recording. Each switch is one
// instance, named by its toggle and its step type.
#pragma once

#include "du/SmartPtr.h"
#include "du/Symbol.h"
#include "qzk/Operation.h"
#include "scene/BaseScene.h"
#include "scene/SwapStep.h"

namespace qzkapp::ecad {

template <void (BaseScene::*Toggle)(du::SmartPtr<qzk::Operation> const&), char const* Type>
class ToggleStep : public SwapStep<ToggleStep<Toggle, Type>, du::SmartPtr<BaseScene>, Toggled> {
    using Frame = SwapStep<ToggleStep<Toggle, Type>, du::SmartPtr<BaseScene>, Toggled>;

public:
    explicit ToggleStep(BaseScene* scene) : Frame(du::SmartPtr<BaseScene>(scene), Toggled()) {}

    du::Symbol GetStepType() override {
        static du::Symbol const type(Type);
        return type;
    }

private:
    friend Frame;
    void Read(Toggled& /*present*/) const {}
    void Apply(Toggled const& /*held*/) const {
        ((*this->target_).*Toggle)(du::SmartPtr<qzk::Operation>());
    }
};

inline constexpr char kFillShapesStepType[] = "QzkappEcadFillShapesOperationStep";
inline constexpr char kInvertLayersStepType[] = "QzkappEcadInvertLayersStep";

// The fill switch.
using FillShapesOperationStep = ToggleStep<&BaseScene::ToggleFillShapes, kFillShapesStepType>;
// Inverting the display priority (through the virtual, as the scene's own call does).
using InvertLayersOperationStep =
    ToggleStep<&BaseScene::DrawOrderInvertLayers, kInvertLayersStepType>;

} // namespace qzkapp::ecad
