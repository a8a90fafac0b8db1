// The release protocol of du::SmartPtr, the re-entrant reader-writer lock and the spin lock.
#include "dp/ReadWriteLock.h"
#include "du/SmartPtr.h"
#include "du/SpinLock.h"
#include "du/Symbol.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <mutex>
#include <stdexcept>
#include <thread>

namespace {

// Counts destructions and lets a test decide what the hook answers.
struct Tracked : du::RefCounted {
    explicit Tracked(int* deaths, bool* keep = nullptr) : deaths(deaths), keep(keep) {}
    ~Tracked() override { ++*deaths; }
    bool ZeroReferenceCountHook() const override {
        ++hookCalls;
        return keep == nullptr || !*keep;
    }
    int* deaths;
    bool* keep;
    mutable int hookCalls = 0;
};

TEST(SmartPtr, LastReleaseAsksTheHookAndDeletes) {
    int deaths = 0;
    Tracked* raw = nullptr;
    {
        du::SmartPtr<Tracked> a(new Tracked(&deaths));
        raw = a.Get();
        du::SmartPtr<Tracked> b = a;
        EXPECT_EQ(raw->GetReferenceCount(), 2);
        b = nullptr;
        EXPECT_EQ(raw->hookCalls, 0);
        EXPECT_EQ(deaths, 0);
    }
    EXPECT_EQ(deaths, 1);
}

TEST(SmartPtr, HookThatRefusesKeepsTheObjectWithOneReference) {
    int deaths = 0;
    bool keep = true;
    auto* raw = new Tracked(&deaths, &keep);
    { du::SmartPtr<Tracked> a(raw); }
    EXPECT_EQ(deaths, 0);
    EXPECT_EQ(raw->hookCalls, 1);
    EXPECT_EQ(raw->GetReferenceCount(), 1);
    // The object arranged to stay; its owner lets it go by the same protocol later.
    keep = false;
    du::ReleaseReference(raw, nullptr);
    EXPECT_EQ(deaths, 1);
}

TEST(SmartPtr, AssignmentAddsTheNewReferenceBeforeReleasingTheOld) {
    int deaths = 0;
    du::SmartPtr<Tracked> a(new Tracked(&deaths));
    a = a; // self-assignment must not drop the only reference
    EXPECT_EQ(deaths, 0);
    EXPECT_EQ(a->GetReferenceCount(), 1);
    Tracked* raw = a.Get();
    a = raw; // assignment from the raw pointer it already holds
    EXPECT_EQ(deaths, 0);
    a = nullptr;
    EXPECT_EQ(deaths, 1);
    du::SmartPtr<Tracked> none;
    none = nullptr; // releasing null is legal
    EXPECT_FALSE(none);
}

TEST(Symbol, ComparesByValueAcrossThreads) {
    du::Symbol fromThread;
    std::thread t([&] { fromThread = du::Symbol(std::string("Display") + "Priority"); });
    t.join();
    EXPECT_EQ(fromThread, du::Symbol("DisplayPriority"));
    EXPECT_EQ(fromThread.safe_c_str(), du::Symbol("DisplayPriority").safe_c_str());
    EXPECT_EQ(du::Symbol(), du::Symbol::EMPTY);
    EXPECT_EQ(du::Symbol::EMPTY.length(), 0u);
    EXPECT_FALSE(du::Symbol("a") == du::Symbol("A"));
}

TEST(ReadWriteLock, WriterNestsWriteAndReadWithoutBlocking) {
    dp::ReadWriteLock lock;
    {
        dp::WriteLocker w1(&lock);
        dp::WriteLocker w2(&lock);
        dp::ReadLocker r1(&lock);
        dp::ReadLocker r2(&lock);
        EXPECT_TRUE(lock.IsWriteLockedByCurrentThread());
    }
    EXPECT_FALSE(lock.IsWriteLockedByCurrentThread());
    // Released in full: another thread can now write.
    std::thread other([&] { dp::WriteLocker w(&lock); });
    other.join();
}

TEST(ReadWriteLock, OtherThreadsWaitForTheWriterUntilItsLastRelease) {
    dp::ReadWriteLock lock;
    std::atomic<bool> readerIn{false};
    std::thread reader;
    {
        dp::WriteLocker outer(&lock);
        {
            dp::WriteLocker inner(&lock);
            reader = std::thread([&] {
                dp::ReadLocker r(&lock);
                readerIn = true;
            });
        }
        // The inner release must not let the reader in.
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        EXPECT_FALSE(readerIn.load());
    }
    reader.join();
    EXPECT_TRUE(readerIn.load());
}

TEST(ReadWriteLock, ReadHeldPastTheLastWriteKeepsExclusiveHoldUntilReleased) {
    dp::ReadWriteLock lock;
    std::atomic<bool> writerIn{false};
    lock.WriteLock();
    lock.ReadLock();
    lock.WriteUnlock();
    std::thread writer([&] {
        dp::WriteLocker w(&lock);
        writerIn = true;
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    EXPECT_FALSE(writerIn.load());
    lock.ReadUnlock();
    writer.join();
    EXPECT_TRUE(writerIn.load());
}

TEST(ReadWriteLock, GuardsReleaseWhenAnExceptionPasses) {
    dp::ReadWriteLock lock;
    try {
        dp::WriteLocker w(&lock);
        dp::ReadLocker r(&lock);
        throw std::runtime_error("boom");
    } catch (std::runtime_error const&) {
    }
    EXPECT_FALSE(lock.IsWriteLockedByCurrentThread());
    std::thread other([&] { dp::WriteLocker w(&lock); });
    other.join();
    dp::WriteLocker none(nullptr); // an object without a lock runs unlocked
}

TEST(ReadWriteLock, ReadersShareTheLock) {
    dp::ReadWriteLock lock;
    dp::ReadLocker mine(&lock);
    std::atomic<bool> otherIn{false};
    std::thread other([&] {
        dp::ReadLocker r(&lock);
        otherIn = true;
    });
    other.join();
    EXPECT_TRUE(otherIn.load());
}

// Two threads add to a pair of plain counters under the lock; a lost or torn update shows in the
// totals (and to the thread sanitizer as a race), and try_lock refuses while the lock is held.
TEST(SpinLock, ExcludesAndHandsOverWhatWasWrittenUnderIt) {
    du::SpinLock lock;
    long first = 0;
    long second = 0;
    constexpr long kRounds = 100000;
    std::atomic<int> ready{0};
    auto work = [&] {
        // Both threads start together, so their sections overlap for most of the rounds.
        ready.fetch_add(1);
        while (ready.load() < 2) {
        }
        for (long i = 0; i < kRounds; ++i) {
            std::lock_guard guard(lock);
            long const seen = first;
            // A window between the read and the write that an overlapping section falls into.
            for (int spin = 0; spin < 8; ++spin) {
                second += spin;
            }
            second -= 28;
            first = seen + 1;
            second += first - seen;
        }
    };
    std::thread other(work);
    work();
    other.join();
    EXPECT_EQ(first, 2 * kRounds);
    EXPECT_EQ(second, 2 * kRounds);

    lock.lock();
    std::atomic<bool> tookIt{true};
    std::thread([&] { tookIt = lock.try_lock(); }).join();
    EXPECT_FALSE(tookIt);
    lock.unlock();
    std::thread([&] {
        tookIt = lock.try_lock();
        if (tookIt) {
            lock.unlock();
        }
    }).join();
    EXPECT_TRUE(tookIt);
}

} // namespace
