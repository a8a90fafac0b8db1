// The recording pattern every mutator shares: when the caller wants undo (op is set), build the
// step before anything changes, so that it saves the old state, and add it to op. Steps come from
// the kernel's pool (qzk::OperationStep is pool allocated).
#pragma once

#include "du/SmartPtr.h"
#include "qzk/Operation.h"
#include "qzk/OperationStep.h"

#include <utility>

namespace qzkapp::ecad {

// Adds a new StepT built from args to op; nothing when op is null. Returns whether it added.
template <class StepT, class... Args>
bool AddStep(du::SmartPtr<qzk::Operation> const& op, Args&&... args) {
    if (!op) {
        return false;
    }
    op->AddStep(du::MakeCounted<StepT>(std::forward<Args>(args)...));
    return true;
}

// The same, and then hands op to the kernel's undo list.
template <class StepT, class... Args>
void AddStepAndRecord(du::SmartPtr<qzk::Operation> const& op, Args&&... args) {
    if (AddStep<StepT>(op, std::forward<Args>(args)...)) {
        qzk::RecordOperation(op);
    }
}

} // namespace qzkapp::ecad
