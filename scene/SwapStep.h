// The frame every undo step of a scene shares: hold a state, and on Undo swap it with the
// present one.
//
// A step holds where to apply (a counted scene or a raw mix-in pointer) and a state from before
// the change. Undo reads the present state into a scratch value, applies the held state with no
// operation, and keeps the scratch value; Redo, the default, runs the same swap again. A null
// target makes the step do nothing.
//
// Derived supplies Read(State&) and Apply(State const&), and may replace MakeScratch() and
// Keep(State&&) where its state needs more than a default value and an assignment. A step whose
// undo and redo differ (it goes back to a held state, and forward by doing the change again)
// keeps nothing and supplies its own Redo. A toggle holds the empty Toggled state: applying it
// again is its own inverse (ToggleStep).
#pragma once

#include "qzk/OperationStep.h"

#include <utility>

namespace qzkapp::ecad {

// The state of a step whose change is its own inverse.
struct Toggled {};

template <class Derived, class Target, class State> class SwapStep : public qzk::OperationStep {
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
    SwapStep(Target target, State state) : target_(std::move(target)), state_(std::move(state)) {}

    State MakeScratch() const { return State(); }
    void Keep(State&& present) { state_ = std::move(present); }

    Target target_;
    State state_;
};

} // namespace qzkapp::ecad
