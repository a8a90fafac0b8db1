// Making the kernel's allocations fail on purpose, so a test can walk a session through every
// allocation it makes and see that each failure leaves the platform whole.
//
// The kernel's two heaps (qzk::MemoryPoolAllocated for kernel objects, scenes, steps and
// operations; du::CommonAllocatorImpl for observer proxies) count every allocation they are asked
// for. FailNth(n) makes the n-th of them from now throw std::bad_alloc, once; allocations on any
// thread count. Everything here is safe to call from any thread.
#pragma once

#include "du/Types.h"

namespace qzref {

class AllocationFaults {
public:
    // The n-th allocation from now fails (1: the next one); 0 disarms. Replaces an earlier arming.
    static void FailNth(uint64 n) noexcept;
    static void Disarm() noexcept;
    // True while an armed failure has not fired yet.
    static bool IsArmed() noexcept;

    // Allocations asked of either heap since the process began, the failed ones included.
    static uint64 AllocationCount() noexcept;
    // Allocations made to fail since the process began.
    static uint64 FailureCount() noexcept;
    // Blocks handed out by either heap and not yet given back.
    static uint64 LiveBlockCount() noexcept;
};

// Disarms when it ends, so a test that stops early leaves no fault armed for the next.
class ScopedAllocationFault {
public:
    explicit ScopedAllocationFault(uint64 n) noexcept { AllocationFaults::FailNth(n); }
    ~ScopedAllocationFault() { AllocationFaults::Disarm(); }
    ScopedAllocationFault(ScopedAllocationFault const&) = delete;
    ScopedAllocationFault& operator=(ScopedAllocationFault const&) = delete;
};

} // namespace qzref
