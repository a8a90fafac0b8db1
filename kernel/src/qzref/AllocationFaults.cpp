#include "qzref/AllocationFaults.h"

#include "du/AllocationFaultPoint.h"
#include "du/CommonAllocatorImpl.h"
#include "qzk/MemoryPoolAllocated.h"

namespace qzref {

void AllocationFaults::FailNth(uint64 n) noexcept {
    du::faults::Arm(n);
}

void AllocationFaults::Disarm() noexcept {
    du::faults::Disarm();
}

bool AllocationFaults::IsArmed() noexcept {
    return du::faults::IsArmed();
}

uint64 AllocationFaults::AllocationCount() noexcept {
    return du::faults::GetAllocationCount();
}

uint64 AllocationFaults::FailureCount() noexcept {
    return du::faults::GetFailureCount();
}

uint64 AllocationFaults::LiveBlockCount() noexcept {
    return qzk::MemoryPoolAllocated::GetLiveBlockCount() +
           du::CommonAllocatorImpl::GetLiveBlockCount();
}

} // namespace qzref
