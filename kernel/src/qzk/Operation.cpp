#include "qzk/Operation.h"

#include "qzk/Kernel.h"
#include "qzk/OperationStep.h"
#include "qzk/Scene.h"
#include "qzk/UndoList.h"
#include "qzref/Journal.h"

namespace qzk {

Operation::Operation(std::string const& name, du::SmartPtr<Scene> const& scene, bool transient)
    : name_(name), scene_(scene), transient_(transient) {}

Operation::~Operation() = default;

void Operation::AddStep(du::SmartPtr<OperationStep> const& step) {
    qzref::Journal::Record("Operation", "AddStep",
                           {qzref::Fmt(name_), step ? step->GetStepType().str() : "null"});
    if (!step) {
        return;
    }
    std::lock_guard lock(mutex_);
    steps_.push_back(step);
}

std::size_t Operation::GetStepCount() const {
    std::lock_guard lock(mutex_);
    return steps_.size();
}

std::vector<du::SmartPtr<OperationStep>> Operation::GetSteps() const {
    std::lock_guard lock(mutex_);
    return steps_;
}

std::string Operation::GetJournalName() const {
    return "Operation(" + qzref::Fmt(name_) + ")";
}

void RecordOperation(du::SmartPtr<Operation> const& operation) {
    qzref::Journal::Record("Kernel", "RecordOperation",
                           {operation ? qzref::Fmt(operation->GetName()) : std::string("null")});
    if (!operation || operation->IsTransient()) {
        return;
    }
    if (du::SmartPtr<Kernel> kernel = Kernel::GetKernel()) {
        kernel->GetUndoList().Record(operation);
    }
}

} // namespace qzk
