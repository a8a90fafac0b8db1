#include "dp/ReadWriteLock.h"

#include <cassert>

namespace dp {

void ReadWriteLock::ReadLock() {
    if (IsWriteLockedByCurrentThread()) {
        ++ownerReadDepth_;
        return;
    }
    // glibc's rwlock prefers readers, so a reader that nests its read lock never waits for a
    // writer that queued up in between.
    mutex_.lock_shared();
}

void ReadWriteLock::ReadUnlock() {
    if (IsWriteLockedByCurrentThread()) {
        assert(ownerReadDepth_ > 0);
        if (--ownerReadDepth_ == 0 && writeDepth_ == 0) {
            owner_.store(std::thread::id(), std::memory_order_relaxed);
            mutex_.unlock();
        }
        return;
    }
    mutex_.unlock_shared();
}

void ReadWriteLock::WriteLock() {
    if (IsWriteLockedByCurrentThread()) {
        ++writeDepth_;
        return;
    }
    mutex_.lock();
    owner_.store(std::this_thread::get_id(), std::memory_order_relaxed);
    writeDepth_ = 1;
}

void ReadWriteLock::WriteUnlock() {
    assert(IsWriteLockedByCurrentThread() && writeDepth_ > 0);
    if (--writeDepth_ == 0 && ownerReadDepth_ == 0) {
        owner_.store(std::thread::id(), std::memory_order_relaxed);
        mutex_.unlock();
    }
}

} // namespace dp
