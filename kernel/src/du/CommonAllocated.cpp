#include "du/CommonAllocated.h"

#include "du/CommonAllocatorImpl.h"

namespace du {

void* CommonAllocated::operator new(std::size_t size) {
    return CommonAllocatorImpl::Allocate(size, nullptr);
}

void* CommonAllocated::operator new(std::size_t /*size*/, void* place) noexcept {
    return place;
}

void CommonAllocated::operator delete(void* block, uint64 size) noexcept {
    CommonAllocatorImpl::Free(block, size);
}

void CommonAllocated::operator delete(void* /*block*/, void* /*place*/) noexcept {}

} // namespace du
