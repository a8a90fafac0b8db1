// Base of classes whose objects live on du::CommonAllocatorImpl's heap.
//
// Objects are made by allocating with du::CommonAllocatorImpl::Allocate(sizeof(T), nullptr) and
// constructing in place; the virtual deleting destructor then returns the block through this
// class's sized operator delete. A plain "new T" takes the same heap.
#pragma once

#include "du/Types.h"

#include <cstddef>

namespace du {

class CommonAllocated {
public:
    static void* operator new(std::size_t size);
    // Declared because any class-level operator new hides the global placement form.
    static void* operator new(std::size_t size, void* place) noexcept;
    static void operator delete(void* block, uint64 size) noexcept;
    // Runs only if a constructor throws after placement new; the caller still owns the block.
    static void operator delete(void* block, void* place) noexcept;
};

} // namespace du
