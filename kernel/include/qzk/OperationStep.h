// One undoable part of an operation. A step saves, when it is built, what it will put back.
//
// Undo and Redo run under the step's own lock (dp::ObjectLevelLockable), taken by the undo list,
// so a step is never undone and redone at once. Redo calls Undo by default: for a step whose Undo
// swaps the saved state with the present one, doing it again redoes.
#pragma once

#include "dp/ObjectLevelLockable.h"
#include "du/RefCounted.h"
#include "du/Symbol.h"
#include "qzk/MemoryPoolAllocated.h"

namespace qzk {

class OperationStep : public MemoryPoolAllocated,
                      public du::RefCounted,
                      public dp::ObjectLevelLockable<OperationStep*> {
public:
    ~OperationStep() override;
    virtual du::Symbol GetDebugClassName() const;
    // true: the step may enter the undo list.
    virtual bool Recordable() const;
    // true: Undo does something.
    virtual bool HasUndo() const;
    virtual du::Symbol GetStepType() = 0;
    virtual void Undo() = 0;
    virtual void Redo();

protected:
    // A step starts out attached to no operation.
    OperationStep();
};

} // namespace qzk
