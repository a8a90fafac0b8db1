// The kernel's common heap: small, short-lived messaging objects (observer proxies) come from
// here. It counts the blocks it has handed out and not had back, so a test can see that every
// proxy was freed.
#pragma once

#include "du/Types.h"

namespace du {

class CommonAllocatorImpl {
public:
    // Never returns null; throws std::bad_alloc. The hint is accepted for the platform's
    // signature and ignored.
    static void* Allocate(uint64 size, void* hint);
    // size must be the size given to Allocate.
    static void Free(void* block, uint64 size) noexcept;

    static uint64 GetLiveBlockCount() noexcept;
};

} // namespace du
