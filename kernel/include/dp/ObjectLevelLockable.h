// Gives each object of a class a lock of its own, for work that must not run twice at once on
// the same object (an undo step is undone or redone by one thread at a time).
//
// T names the class that uses it, so that each user gets a distinct base. The lock is
// re-entrant: a step may call another operation of itself under it. Hold it through Locker only.
#pragma once

#include <mutex>

namespace dp {

template <class T> class ObjectLevelLockable {
public:
    class Locker {
    public:
        explicit Locker(ObjectLevelLockable const& object) : lock_(object.objectMutex_) {}
        Locker(Locker const&) = delete;
        Locker& operator=(Locker const&) = delete;

    private:
        std::lock_guard<std::recursive_mutex> lock_;
    };

    ObjectLevelLockable() = default;
    // Each object has its own lock; a copy starts with a fresh one.
    ObjectLevelLockable(ObjectLevelLockable const&) noexcept {}
    ObjectLevelLockable& operator=(ObjectLevelLockable const&) noexcept { return *this; }

private:
    mutable std::recursive_mutex objectMutex_;
};

} // namespace dp
