// The kernel's undo and redo lists of recorded operations (qzref::UndoControl drives them).
//
// The lists' lock is held only to move operations between them; steps run outside it, each under
// its own object-level lock, so a step may record an operation of its own while it runs.
#pragma once

#include "du/SmartPtr.h"

#include <cstddef>
#include <mutex>
#include <string>
#include <vector>

namespace qzk {

class Operation;
class Scene;

class UndoList {
public:
    UndoList();
    UndoList(UndoList const&) = delete;
    UndoList& operator=(UndoList const&) = delete;
    ~UndoList();

    // Appends and empties the redo list.
    void Record(du::SmartPtr<Operation> const& operation);
    bool Undo();
    bool Redo();
    std::size_t GetUndoCount() const;
    std::size_t GetRedoCount() const;
    std::vector<std::string> GetUndoNames() const;
    std::vector<std::string> GetRedoNames() const;
    void Clear();
    // Drops every operation recorded for scene from both lists; run when the scene ends, so that
    // no step outlives the scene it acts on.
    void ForgetScene(Scene const* scene);

private:
    static std::vector<std::string> Names(std::vector<du::SmartPtr<Operation>> const& list);

    mutable std::mutex mutex_;
    std::vector<du::SmartPtr<Operation>> undo_;
    std::vector<du::SmartPtr<Operation>> redo_;
};

} // namespace qzk
