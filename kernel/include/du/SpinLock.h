// A lock for short sections on hot paths. Taking a free lock is one atomic exchange and releasing
// it a plain store, where a mutex pays an atomic read-modify-write for each, because its release
// must look for sleepers. A waiter spins briefly and then yields its time slice, so a holder that
// was preempted costs the waiters time, never progress.
//
// While the process has one thread, taking and releasing are plain stores.
//
// For sections that do a bounded amount of work and never wait for another thread. Not
// recursive. Meets Lockable, so std::lock_guard, std::unique_lock and
// std::condition_variable_any take it.
#pragma once

#include "du/SingleThread.h"

#include <atomic>

namespace du {

class SpinLock {
public:
    SpinLock() noexcept = default;
    SpinLock(SpinLock const&) = delete;
    SpinLock& operator=(SpinLock const&) = delete;

    void lock() noexcept {
        if (ProcessHasOneThread() && !held_.load(std::memory_order_relaxed)) {
            held_.store(true, std::memory_order_relaxed);
            return;
        }
        if (held_.exchange(true, std::memory_order_acquire)) {
            LockContended();
        }
    }
    bool try_lock() noexcept {
        return !held_.load(std::memory_order_relaxed) &&
               !held_.exchange(true, std::memory_order_acquire);
    }
    void unlock() noexcept { held_.store(false, std::memory_order_release); }

private:
    void LockContended() noexcept;

    std::atomic<bool> held_{false};
};

} // namespace du
