// Reader-writer lock that is re-entrant for its writer.
//
// The thread that holds the write lock may take the write lock again and the read lock too; all
// of them nest and must be released as often as they were taken. Other threads share the read
// lock. A reader must not ask for the write lock while it still holds a read lock (there is no
// upgrade). If the writer gives up its last write lock while it still holds read locks taken
// under it, it keeps exclusive hold until the last of those is released.
//
// Use ReadLocker and WriteLocker; never release a lock by hand.
#pragma once

#include <atomic>
#include <cassert>
#include <shared_mutex>
#include <thread>

namespace qzref {
class ReadWriteLockInspector;
}

namespace dp {

class ReadWriteLock {
public:
    ReadWriteLock() = default;
    ReadWriteLock(ReadWriteLock const&) = delete;
    ReadWriteLock& operator=(ReadWriteLock const&) = delete;

    // Inline: the lock sits on every scene call, and the uncontended path is a few
    // instructions around the shared mutex.
    void ReadLock() {
        if (IsWriteLockedByCurrentThread()) {
            ++ownerReadDepth_;
            return;
        }
        // glibc's rwlock prefers readers, so a reader that nests its read lock never waits for a
        // writer that queued up in between.
        mutex_.lock_shared();
    }
    void ReadUnlock() {
        // Only the owner can see itself as owner, so this test is exact without a fence.
        if (IsWriteLockedByCurrentThread()) {
            assert(ownerReadDepth_ > 0);
            if (--ownerReadDepth_ == 0 && writeDepth_ == 0) {
                Release();
            }
            return;
        }
        mutex_.unlock_shared();
    }
    void WriteLock() {
        std::thread::id const self = std::this_thread::get_id();
        if (owner_.load(std::memory_order_relaxed) == self) {
            ++writeDepth_;
            return;
        }
        mutex_.lock();
        owner_.store(self, std::memory_order_relaxed);
        writeDepth_ = 1;
    }
    void WriteUnlock() {
        // Only the owner may release a write lock; the owner test is left to debug builds.
        assert(IsWriteLockedByCurrentThread() && writeDepth_ > 0);
        if (--writeDepth_ == 0 && ownerReadDepth_ == 0) {
            Release();
        }
    }

    // True on the thread that holds the write lock.
    bool IsWriteLockedByCurrentThread() const noexcept {
        return owner_.load(std::memory_order_relaxed) == std::this_thread::get_id();
    }

private:
    friend class qzref::ReadWriteLockInspector;

    void Release() {
        owner_.store(std::thread::id(), std::memory_order_relaxed);
        mutex_.unlock();
    }

    std::shared_mutex mutex_;
    std::atomic<std::thread::id> owner_{};
    // Touched only by the owner thread while it holds mutex_ exclusively.
    int writeDepth_ = 0;
    int ownerReadDepth_ = 0;
};

// Scope guards. A null lock means the object runs unlocked: the guard does nothing.
class ReadLocker {
public:
    explicit ReadLocker(ReadWriteLock* lock) : lock_(lock) {
        if (lock_ != nullptr) {
            lock_->ReadLock();
        }
    }
    ~ReadLocker() {
        if (lock_ != nullptr) {
            lock_->ReadUnlock();
        }
    }
    ReadLocker(ReadLocker const&) = delete;
    ReadLocker& operator=(ReadLocker const&) = delete;

private:
    ReadWriteLock* lock_;
};

class WriteLocker {
public:
    explicit WriteLocker(ReadWriteLock* lock) : lock_(lock) {
        if (lock_ != nullptr) {
            lock_->WriteLock();
        }
    }
    ~WriteLocker() {
        if (lock_ != nullptr) {
            lock_->WriteUnlock();
        }
    }
    WriteLocker(WriteLocker const&) = delete;
    WriteLocker& operator=(WriteLocker const&) = delete;

private:
    ReadWriteLock* lock_;
};

} // namespace dp
