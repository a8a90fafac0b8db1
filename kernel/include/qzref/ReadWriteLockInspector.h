// Whether a reader-writer lock is free: nobody holds it, for reading or writing, on any thread.
// A test asks it after a failure, to see that no guard was skipped on the way out.
// Reached through qzref::Inspect.
#pragma once

#include "dp/ReadWriteLock.h"

namespace qzref {

class ReadWriteLockInspector {
public:
    explicit ReadWriteLockInspector(dp::ReadWriteLock& lock) noexcept : lock_(lock) {}

    // Takes the lock for writing without waiting and gives it back at once. The owner is checked
    // first: a write lock left held by the calling thread would let a re-entrant take succeed.
    bool IsFree() const {
        if (lock_.owner_.load() != std::thread::id()) {
            return false;
        }
        if (!lock_.mutex_.try_lock()) {
            return false;
        }
        lock_.mutex_.unlock();
        return true;
    }

private:
    dp::ReadWriteLock& lock_;
};

} // namespace qzref
