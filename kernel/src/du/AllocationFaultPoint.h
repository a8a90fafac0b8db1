// The one place where the kernel's allocators count their allocations and, when a test has armed
// it, fail one of them. Shared by du::CommonAllocatorImpl and qzk::MemoryPoolAllocated; driven by
// qzref::AllocationFaults.
#pragma once

#include "du/Types.h"

namespace du::faults {

// Counts an allocation about to be made; throws std::bad_alloc if it is the one armed to fail.
void CountAllocation();

void Arm(uint64 nth) noexcept;
void Disarm() noexcept;
uint64 GetAllocationCount() noexcept;
uint64 GetFailureCount() noexcept;
bool IsArmed() noexcept;

} // namespace du::faults
