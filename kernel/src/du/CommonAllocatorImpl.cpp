#include "du/CommonAllocatorImpl.h"

#include "du/AllocationFaultPoint.h"

#include <atomic>
#include <new>

namespace du {
namespace {
std::atomic<uint64> g_liveBlocks{0};
}

void* CommonAllocatorImpl::Allocate(uint64 size, void* /*hint*/) {
    faults::CountAllocation();
    void* block = ::operator new(size);
    g_liveBlocks.fetch_add(1, std::memory_order_relaxed);
    return block;
}

void CommonAllocatorImpl::Free(void* block, uint64 size) noexcept {
    if (block == nullptr) {
        return;
    }
    g_liveBlocks.fetch_sub(1, std::memory_order_relaxed);
    ::operator delete(block, size);
}

uint64 CommonAllocatorImpl::GetLiveBlockCount() noexcept {
    return g_liveBlocks.load(std::memory_order_relaxed);
}

} // namespace du
