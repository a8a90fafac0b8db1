#include "qzk/UndoList.h"

#include "qzk/Operation.h"
#include "qzk/OperationStep.h"

#include <utility>

namespace qzk {

UndoList::UndoList() = default;

UndoList::~UndoList() {
    Clear();
}

void UndoList::Record(du::SmartPtr<Operation> const& operation) {
    std::vector<du::SmartPtr<Operation>> dropped;
    {
        std::lock_guard lock(mutex_);
        undo_.push_back(operation);
        dropped.swap(redo_);
    }
    // Released outside the lock: a step's destructor releases its scene.
}

bool UndoList::Undo() {
    du::SmartPtr<Operation> operation;
    {
        std::lock_guard lock(mutex_);
        if (undo_.empty()) {
            return false;
        }
        operation = std::move(undo_.back());
        undo_.pop_back();
    }
    std::vector<du::SmartPtr<OperationStep>> steps = operation->GetSteps();
    for (auto step = steps.rbegin(); step != steps.rend(); ++step) {
        OperationStep::Locker lock(**step);
        (*step)->Undo();
    }
    std::lock_guard lock(mutex_);
    redo_.push_back(std::move(operation));
    return true;
}

bool UndoList::Redo() {
    du::SmartPtr<Operation> operation;
    {
        std::lock_guard lock(mutex_);
        if (redo_.empty()) {
            return false;
        }
        operation = std::move(redo_.back());
        redo_.pop_back();
    }
    for (du::SmartPtr<OperationStep> const& step : operation->GetSteps()) {
        OperationStep::Locker lock(*step);
        step->Redo();
    }
    std::lock_guard lock(mutex_);
    undo_.push_back(std::move(operation));
    return true;
}

std::size_t UndoList::GetUndoCount() const {
    std::lock_guard lock(mutex_);
    return undo_.size();
}

std::size_t UndoList::GetRedoCount() const {
    std::lock_guard lock(mutex_);
    return redo_.size();
}

std::vector<std::string> UndoList::Names(std::vector<du::SmartPtr<Operation>> const& list) {
    std::vector<std::string> names;
    names.reserve(list.size());
    for (auto const& operation : list) {
        names.push_back(operation->GetName());
    }
    return names;
}

std::vector<std::string> UndoList::GetUndoNames() const {
    std::lock_guard lock(mutex_);
    return Names(undo_);
}

std::vector<std::string> UndoList::GetRedoNames() const {
    std::lock_guard lock(mutex_);
    return Names(redo_);
}

void UndoList::Clear() {
    std::vector<du::SmartPtr<Operation>> undo;
    std::vector<du::SmartPtr<Operation>> redo;
    {
        std::lock_guard lock(mutex_);
        undo.swap(undo_);
        redo.swap(redo_);
    }
}

} // namespace qzk
