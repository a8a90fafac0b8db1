#include "qzk/UndoList.h"

#include "qzk/Operation.h"
#include "qzk/OperationStep.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace qzk {
namespace {

bool OfEndedScene(Operation const& operation) {
    Scene const* scene = operation.GetScene().Get();
    return scene != nullptr && scene->IsDestroyed();
}

} // namespace

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
    // A scene that ended while its steps ran has already been forgotten: do not bring it back.
    if (OfEndedScene(*operation)) {
        return true;
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
    if (OfEndedScene(*operation)) {
        return true;
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

void UndoList::ForgetScene(Scene const* scene) {
    if (scene == nullptr) {
        return;
    }
    std::vector<du::SmartPtr<Operation>> dropped;
    auto const ofScene = [scene](du::SmartPtr<Operation> const& operation) {
        return operation->GetScene().Get() == scene;
    };
    {
        std::lock_guard lock(mutex_);
        for (auto* list : {&undo_, &redo_}) {
            auto const from = std::stable_partition(list->begin(), list->end(),
                                                    [&](auto const& op) { return !ofScene(op); });
            std::move(from, list->end(), std::back_inserter(dropped));
            list->erase(from, list->end());
        }
    }
    // Released outside the lock: a step's destructor may release its scene.
}

} // namespace qzk
