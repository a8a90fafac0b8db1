// One undoable user action: a name and the steps that undo it, in the order they were added.
//
// An operation holds its steps and its scene by counted references. RecordOperation hands a
// finished operation to the kernel's undo list; undoing it runs the steps' Undo last step first,
// redoing runs their Redo first step first (qzref::UndoControl drives both).
#pragma once

#include "du/RefCounted.h"
#include "du/SmartPtr.h"
#include "qzk/MemoryPoolAllocated.h"
// Complete, so that callers can pass a temporary (null) scene pointer.
#include "qzk/Scene.h"

#include <cstddef>
#include <mutex>
#include <string>
#include <vector>

namespace qzref {
class OperationInspector;
}

namespace qzk {

class OperationStep;

class Operation : public MemoryPoolAllocated, public du::RefCounted {
public:
    // transient true: the operation is for the caller alone and RecordOperation passes it by.
    Operation(std::string const& name, du::SmartPtr<Scene> const& scene, bool transient);
    Operation(Operation const&) = delete;
    Operation& operator=(Operation const&) = delete;
    ~Operation() override;

    // Appends; a null step is ignored.
    void AddStep(du::SmartPtr<OperationStep> const& step);

    // Kernel side.
    std::string const& GetName() const noexcept { return name_; }
    bool IsTransient() const noexcept { return transient_; }
    std::vector<du::SmartPtr<OperationStep>> GetSteps() const;
    du::SmartPtr<Scene> const& GetScene() const noexcept { return scene_; }
    // How the journal names the operation in an argument: Operation("<name>").
    std::string GetJournalName() const;

private:
    friend class qzref::OperationInspector;
    std::size_t GetStepCount() const;

    std::string const name_;
    du::SmartPtr<Scene> const scene_;
    bool const transient_;
    mutable std::mutex mutex_;
    std::vector<du::SmartPtr<OperationStep>> steps_;
};

// Appends operation to the kernel's undo list and empties the redo list. Null, a transient
// operation, or no kernel: nothing is recorded (the call is still journalled).
void RecordOperation(du::SmartPtr<Operation> const& operation);

} // namespace qzk
