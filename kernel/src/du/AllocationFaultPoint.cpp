#include "du/AllocationFaultPoint.h"

#include <atomic>
#include <new>

namespace du::faults {
namespace {
std::atomic<uint64> g_count{0};
// The count at which an allocation fails; 0 when disarmed (no allocation ever has count 0).
std::atomic<uint64> g_failAt{0};
std::atomic<uint64> g_failures{0};
} // namespace

void CountAllocation() {
    uint64 const count = g_count.fetch_add(1, std::memory_order_relaxed) + 1;
    uint64 failAt = g_failAt.load(std::memory_order_relaxed);
    // The exchange makes the fault fire once even if a concurrent Arm moves the target.
    if (failAt == count && g_failAt.compare_exchange_strong(failAt, 0)) {
        g_failures.fetch_add(1, std::memory_order_relaxed);
        throw std::bad_alloc();
    }
}

void Arm(uint64 nth) noexcept {
    g_failAt.store(nth == 0 ? 0 : g_count.load() + nth);
}

void Disarm() noexcept {
    g_failAt.store(0);
}

uint64 GetAllocationCount() noexcept {
    return g_count.load();
}

uint64 GetFailureCount() noexcept {
    return g_failures.load();
}

bool IsArmed() noexcept {
    return g_failAt.load() != 0;
}

} // namespace du::faults
