// Owning pointer over du::RefCounted; du::MakeCounted makes the objects it holds. Copying adds a
// reference; assignment adds the new reference before it releases the old one, so self-assignment
// and assignment from a pointer the old target owns are safe. A null pointer is legal everywhere.
#pragma once

#include "du/RefCounted.h"

#include <cstddef>
#include <functional>
#include <type_traits>
#include <utility>

namespace du {

template <class T> class SmartPtr {
public:
    using element_type = T;

    SmartPtr() noexcept = default;
    SmartPtr(std::nullptr_t) noexcept {}
    // Takes a new reference to p (which may already be held elsewhere). Explicit, so that a
    // freshly made object reaches a pointer only through MakeCounted or by name.
    explicit SmartPtr(T* p) : ptr_(p) { Acquire(); }
    SmartPtr(SmartPtr const& other) : ptr_(other.ptr_) { Acquire(); }
    SmartPtr(SmartPtr&& other) noexcept : ptr_(std::exchange(other.ptr_, nullptr)) {}
    template <class U, class = std::enable_if_t<std::is_convertible_v<U*, T*>>>
    SmartPtr(SmartPtr<U> const& other) : ptr_(other.Get()) {
        Acquire();
    }
    ~SmartPtr() { Release(); }

    SmartPtr& operator=(SmartPtr const& other) { return Assign(other.ptr_); }
    SmartPtr& operator=(SmartPtr&& other) noexcept {
        if (this != &other) {
            T* old = std::exchange(ptr_, std::exchange(other.ptr_, nullptr));
            ReleasePtr(old);
        }
        return *this;
    }
    // Adopts an object someone else already holds; a new object comes through MakeCounted.
    SmartPtr& operator=(T* p) { return Assign(p); }
    SmartPtr& operator=(std::nullptr_t) { return Assign(nullptr); }
    template <class U, class = std::enable_if_t<std::is_convertible_v<U*, T*>>>
    SmartPtr& operator=(SmartPtr<U> const& other) {
        return Assign(other.Get());
    }

    T* Get() const noexcept { return ptr_; }
    T* operator->() const noexcept { return ptr_; }
    T& operator*() const noexcept { return *ptr_; }
    explicit operator bool() const noexcept { return ptr_ != nullptr; }
    bool IsNull() const noexcept { return ptr_ == nullptr; }
    void Reset() { Assign(nullptr); }

    friend bool operator==(SmartPtr const& a, SmartPtr const& b) noexcept {
        return a.ptr_ == b.ptr_;
    }
    friend bool operator==(SmartPtr const& a, std::nullptr_t) noexcept { return a.ptr_ == nullptr; }
    friend bool operator<(SmartPtr const& a, SmartPtr const& b) noexcept {
        return std::less<T*>()(a.ptr_, b.ptr_);
    }

private:
    SmartPtr& Assign(T* p) {
        if (p != nullptr) {
            static_cast<RefCounted const*>(p)->AddReference(this);
        }
        T* old = std::exchange(ptr_, p);
        ReleasePtr(old);
        return *this;
    }
    void Acquire() {
        if (ptr_ != nullptr) {
            static_cast<RefCounted const*>(ptr_)->AddReference(this);
        }
    }
    void Release() { ReleasePtr(std::exchange(ptr_, nullptr)); }
    void ReleasePtr(T* p) {
        if (p != nullptr) {
            ReleaseReference(static_cast<RefCounted const*>(p), this);
        }
    }

    T* ptr_ = nullptr;
};

// The one way to make a counted object: built with new (the class's own operator new where it
// has one, such as the kernel's pool) and held from the start, so no raw owner is ever in sight.
template <class T, class... Args> SmartPtr<T> MakeCounted(Args&&... args) {
    return SmartPtr<T>(
        new T(std::forward<Args>(args)...)); // NOLINT(cppcoreguidelines-owning-memory)
}

// dynamic_cast between counted pointers; null when the object is not a U.
template <class U, class T> SmartPtr<U> DynamicCast(SmartPtr<T> const& p) {
    return SmartPtr<U>(dynamic_cast<U*>(p.Get()));
}

} // namespace du

template <class T> struct std::hash<du::SmartPtr<T>> {
    std::size_t operator()(du::SmartPtr<T> const& p) const noexcept {
        return std::hash<T*>()(p.Get());
    }
};
