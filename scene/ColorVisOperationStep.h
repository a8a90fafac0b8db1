// The frame every colour and visibility step shares.
//
// A step holds where to apply (a counted scene or a raw mix-in pointer) and a copy of the state
// before the change. Undo reads the present state into a scratch value, applies the held state
// with ChangeSourceUndo and no operation, and keeps the scratch value; Redo, the default, runs
// the same swap again. A null target makes the step do nothing.
//
// Derived supplies Read(State&) and Apply(State const&), and may replace MakeScratch() and
// Keep(State&&) where its state needs more than a default value and an assignment.
#pragma once

#include "qzk/OperationStep.h"

#include <utility>

namespace qzkapp::ecad {

template <class Derived, class Target, class State>
class ColorVisOperationStep : public qzk::OperationStep {
public:
    void Undo() override {
        if (!target_) {
            return;
        }
        auto& self = static_cast<Derived&>(*this);
        State present = self.MakeScratch();
        self.Read(present);
        self.Apply(state_);
        self.Keep(std::move(present));
    }

protected:
    ColorVisOperationStep(Target target, State state)
        : target_(std::move(target)), state_(std::move(state)) {}

    State MakeScratch() const { return State(); }
    void Keep(State&& present) { state_ = std::move(present); }

    Target target_;
    State state_;
};

} // namespace qzkapp::ecad
