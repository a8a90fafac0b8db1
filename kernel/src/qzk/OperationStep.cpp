#include "qzk/OperationStep.h"

namespace qzk {

OperationStep::OperationStep() = default;

OperationStep::~OperationStep() = default;

du::Symbol OperationStep::GetDebugClassName() const {
    return du::Symbol("qzk::OperationStep");
}

bool OperationStep::Recordable() const {
    return true;
}

bool OperationStep::HasUndo() const {
    return true;
}

void OperationStep::Redo() {
    Undo();
}

} // namespace qzk
