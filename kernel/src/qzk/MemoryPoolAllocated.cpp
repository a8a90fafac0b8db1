#include "qzk/MemoryPoolAllocated.h"

#include "du/AllocationFaultPoint.h"

#include <atomic>
#include <new>

namespace qzk {
namespace {
std::atomic<uint64> g_liveBlocks{0};
}

void* MemoryPoolAllocated::operator new(std::size_t size) {
    du::faults::CountAllocation();
    void* block = ::operator new(size);
    g_liveBlocks.fetch_add(1, std::memory_order_relaxed);
    return block;
}

void MemoryPoolAllocated::operator delete(void* block, std::size_t size) noexcept {
    if (block == nullptr) {
        return;
    }
    g_liveBlocks.fetch_sub(1, std::memory_order_relaxed);
    ::operator delete(block, size);
}

uint64 MemoryPoolAllocated::GetLiveBlockCount() noexcept {
    return g_liveBlocks.load(std::memory_order_relaxed);
}

} // namespace qzk
