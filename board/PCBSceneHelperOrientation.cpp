// The board's orientation: seen from the back (flip) and turned in its plane (rotation), carried
// out in the view by its workflow manager.
#include "board/PCBSceneHelper.h"

#include "board/FlipOperationStep.h"
#include "board/RotationOperationStep.h"
#include "du/Symbol.h"
#include "qzk/View.h"
#include "qzk/WorkflowManager.h"
#include "qzk/ecad/RotateData.h"
#include "scene/StepRecording.h"

namespace qzkapp::ecad {
namespace {

void RunRotate(du::SmartPtr<qzk::View> const& view, char const* axis,
               du::SmartPtr<du::RefCounted> const& data) {
    du::SmartPtr<qzk::WorkflowManager> manager;
    view->GetWorkflowManager(manager);
    if (manager) {
        static du::Symbol const rotate("rotate");
        manager->RunWorkflowAction(rotate, du::Symbol(axis), 0, data);
    }
}

} // namespace

bool PCBSceneHelper::_SetFlip(du::SmartPtr<BaseScene> const& scene,
                              du::SmartPtr<qzk::View> const& view, bool flip,
                              du::SmartPtr<qzk::Operation> const& op, bool applyToView) {
    if (flip == this->flip) {
        return false;
    }
    AddStep<FlipOperationStep>(op, scene.Get());
    if (applyToView && view) {
        RunRotate(view, "Y", du::SmartPtr<du::RefCounted>());
    }
    this->flip = flip;
    return true;
}

bool PCBSceneHelper::_SetRotation(du::SmartPtr<BaseScene> const& scene,
                                  du::SmartPtr<qzk::View> const& view, short rotation,
                                  du::SmartPtr<qzk::Operation> const& op, bool /*applyToView*/) {
    short const reduced = ReduceRotation(rotation);
    if (reduced == this->rotation) {
        return false;
    }
    AddStep<RotationOperationStep>(op, scene.Get());
    if (view) {
        // The view turns by what was asked, not by what is stored: 450 from 0 turns it by 450.
        // Seen from the back, the board turns the other way.
        auto const angle =
            static_cast<short>(flip ? this->rotation - rotation : rotation - this->rotation);
        RunRotate(view, "Z",
                  du::SmartPtr<du::RefCounted>(
                      du::SmartPtr<qzk::ecad::RotateData>(new qzk::ecad::RotateData(angle))));
    }
    this->rotation = reduced;
    return true;
}

} // namespace qzkapp::ecad
