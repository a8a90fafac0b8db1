// Class-level pool allocation for kernel objects, scenes, steps and operations.
//
// The pool is the ordinary heap with a thread-safe count of the blocks it has handed out and not
// had back, so that a test can prove a closed scene left nothing behind.
#pragma once

#include <cstddef>

#include "du/Types.h"

namespace qzk {

class MemoryPoolAllocated {
public:
    static void* operator new(std::size_t size);
    static void operator delete(void* block, std::size_t size) noexcept;

    // Blocks handed out and not yet returned, over the whole process.
    static uint64 GetLiveBlockCount() noexcept;
};

} // namespace qzk
