// Driving the kernel's undo list: what the host's Undo and Redo commands do.
//
// Undo takes the newest operation off the undo list, runs its steps' Undo last step first and
// puts it on the redo list; Redo takes the newest off the redo list, runs its steps' Redo first
// step first and puts it back on the undo list. Steps run outside the list's lock, so they may
// record operations of their own. Names are kept for display.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace qzref {

class UndoControl {
public:
    // false when there is nothing to undo (or no kernel).
    static bool Undo();
    static bool Redo();
    static std::size_t GetUndoCount();
    static std::size_t GetRedoCount();
    // Oldest first.
    static std::vector<std::string> GetUndoNames();
    static std::vector<std::string> GetRedoNames();
    static void Clear();
};

} // namespace qzref
