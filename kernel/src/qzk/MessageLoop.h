// The kernel's message loop: the queue of messages, the table of live observers that messages
// are addressed to, and the optional dispatcher thread. Process-wide, so observers built before
// the kernel starts or after it stops are still known.
//
// An observer's handle names a slot of the table and the slot's generation, so a handle of an
// observer that has gone never finds its successor in the slot. Deliveries are serialised (one
// at a time, plus deliveries nested in a handler on the same thread), which keeps messages in
// order. The loop's mutex is never held while a handler runs; the end of a delivery takes it only
// when someone waits for that delivery or the observer's release was put off until then.
#pragma once

#include "dom/MessageReader.h"
#include "du/Types.h"

#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace dom {
class Observer;
}

namespace qzk {

class MessageLoop {
public:
    // Inline, so a post and a pump test the guard of the static in place instead of calling out.
    static MessageLoop& Get() {
        static MessageLoop loop;
        return loop;
    }

    uint64 AddObserver(dom::Observer* observer);
    // Waits while a delivery to the observer runs on another thread, then forgets it.
    void RemoveObserver(uint64 handle) noexcept;
    // The zero-count hook of an observer: false (and the release is finished after the
    // delivery) while a message is being delivered to it; otherwise forgets it and says true.
    bool ReleaseIfIdle(uint64 handle) noexcept;

    void Queue(uint64 handle, dom::MessageData&& message);

    bool PumpOne();
    std::size_t PumpUntilIdle();
    std::size_t GetPendingCount() const;
    std::size_t DiscardPending();

    bool StartDispatcher();
    bool StopDispatcher();
    bool IsDispatcherRunning() const;

    std::vector<std::string> TakeHandlerErrors();
    std::size_t GetDroppedCount() const;

private:
    // state: deliveries running to the slot's observer, shifted by two, and two flags.
    enum : std::uint32_t { ReleasePending = 1, Dead = 2, OneDelivery = 4 };
    struct Slot {
        dom::Observer* observer = nullptr;
        std::uint32_t generation = 1;
        std::atomic<std::uint32_t> state{0};
    };
    struct Queued {
        uint64 handle;
        dom::MessageData message;
    };

    MessageLoop() = default;
    ~MessageLoop();

    // Under mutex_: the ring's ends.
    void PushQueued(uint64 handle, dom::MessageData&& message);
    void PopQueued(Queued& out);
    // Under mutex_: the live slot of handle, or null.
    Slot* Find(uint64 handle);
    // Under mutex_, with no delivery running to the slot: makes it free for a new observer.
    void Free(Slot& slot, std::uint32_t index);
    // Takes the next message and delivers it; false when the queue is empty.
    bool DeliverNext();
    void EndDelivery(Slot& slot, uint64 handle);
    void Dispatch();
    void WaitForADelivery(std::unique_lock<std::mutex>& lock);
    void RecordError(uint64 handle, std::string const& what);

    mutable std::mutex mutex_;
    // Wakes the dispatcher when a message comes.
    std::condition_variable queued_;
    // Wakes those waiting for a delivery to end: observers' destructors and other pumps.
    std::condition_variable delivered_;
    std::atomic<int> waiters_{0};

    // Slots never move (a deque grows at its end without moving), so a delivery keeps its slot
    // without the mutex.
    std::deque<Slot> slots_;
    std::vector<std::uint32_t> free_;
    // The queue: a ring that doubles when full and never shrinks, so that a steady flow of posts
    // and deliveries allocates nothing. Its size is a power of two.
    std::vector<Queued> ring_;
    std::size_t head_ = 0;
    std::size_t count_ = 0;
    std::size_t dropped_ = 0;
    std::vector<std::string> errors_;

    // The thread delivering now, or none; depth counts its nested deliveries.
    std::atomic<std::thread::id> deliveringThread_{};
    int deliveryDepth_ = 0;

    // Guards starting and stopping the dispatcher; stopDispatcher_ itself is guarded by mutex_.
    std::mutex dispatcherMutex_;
    std::thread dispatcher_;
    bool stopDispatcher_ = false;
    std::atomic<bool> dispatcherRunning_{false};
};

} // namespace qzk
