// The kernel's message loop: the queue of messages, the table of live observers that messages
// are addressed to, and the optional dispatcher thread. Process-wide, so observers built before
// the kernel starts or after it stops are still known.
//
// An observer's handle names a slot of the table and the slot's generation, so a handle of an
// observer that has gone never finds its successor in the slot. Deliveries are serialised (one
// at a time, plus deliveries nested in a handler on the same thread), which keeps messages in
// order. The loop's lock is never held while a handler runs; the end of a delivery takes it only
// when someone waits for that delivery or the observer's release was put off until then.
//
// Messages are never copied on their way: a proxy writes into a message it holds, queueing hands
// that message over and gives the proxy an empty one back, and the handler reads it where it lies.
// Delivered messages are emptied outside the lock and kept for the next posts, so a steady flow
// of posts and deliveries allocates nothing.
#pragma once

#include "dom/MessageReader.h"
#include "du/SpinLock.h"
#include "du/Types.h"

#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <memory>
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

    // Queues message for the observer of handle and leaves an empty message in its place.
    void Queue(uint64 handle, std::unique_ptr<dom::MessageData>& message);

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
        uint64 handle = 0;
        std::unique_ptr<dom::MessageData> message;
    };
    // The table grows by blocks that never move, so a delivery keeps its slot without the lock
    // and finding a slot is two loads.
    static constexpr std::uint32_t kSlotBlockBits = 8;
    static constexpr std::uint32_t kSlotBlockSize = 1U << kSlotBlockBits;
    // Emptied messages kept for reuse; more are freed. A message whose text grew past
    // kKeptMessageBytes gives its buffer back, so one large post does not stay for ever.
    static constexpr std::size_t kKeptMessages = 1024;
    static constexpr std::size_t kKeptMessageBytes = 256;

    MessageLoop() = default;
    ~MessageLoop();

    // Under lock_: the ring's ends.
    void PushQueued(uint64 handle, std::unique_ptr<dom::MessageData>&& message);
    void PopQueued(Queued& out);
    // Under lock_: keeps an emptied message for a later post, or lets it go.
    void KeepEmptyMessage(std::unique_ptr<dom::MessageData>&& message) noexcept;
    // The slot at index, which is below slotCount_.
    Slot& SlotAt(std::uint32_t index) {
        return slotBlocks_[index >> kSlotBlockBits][index & (kSlotBlockSize - 1)];
    }
    // Under lock_: the live slot of handle, or null.
    Slot* Find(uint64 handle);
    // Under lock_, with no delivery running to the slot: makes it free for a new observer.
    void Free(Slot& slot, std::uint32_t index) noexcept;
    // Takes the next message and delivers it; false when the queue is empty.
    bool DeliverNext();
    void EndDelivery(Slot& slot, uint64 handle, std::unique_ptr<dom::MessageData>&& message);
    void Dispatch();
    void WaitForADelivery(std::unique_lock<du::SpinLock>& lock);
    void RecordError(uint64 handle, char const* what) noexcept;

    // A spin lock: posts and deliveries hold it for a few dozen instructions, and a mutex's
    // release would cost each of them another atomic operation.
    mutable du::SpinLock lock_;
    // Wakes the dispatcher when a message comes while it sleeps (dispatcherSleeping_, under
    // lock_), so a post while it is awake leaves the condition variable alone.
    std::condition_variable_any queued_;
    bool dispatcherSleeping_ = false;
    // Wakes those waiting for a delivery to end: observers' destructors and other pumps.
    std::condition_variable_any delivered_;
    std::atomic<int> waiters_{0};

    std::vector<std::unique_ptr<Slot[]>> slotBlocks_;
    std::uint32_t slotCount_ = 0;
    std::vector<std::uint32_t> free_;
    // The queue: a ring that doubles when full and never shrinks, so that a steady flow of posts
    // and deliveries allocates nothing. Its size is a power of two.
    std::vector<Queued> ring_;
    std::size_t head_ = 0;
    std::size_t count_ = 0;
    std::size_t dropped_ = 0;
    std::vector<std::unique_ptr<dom::MessageData>> emptyMessages_;
    // The last message delivered, emptied; touched only by the thread that delivers, so the end of
    // a delivery needs no lock for it. The next delivery keeps it under the lock it takes anyway.
    std::unique_ptr<dom::MessageData> finished_;
    std::vector<std::string> errors_;

    // The thread delivering now, or none; depth counts its nested deliveries.
    std::atomic<std::thread::id> deliveringThread_{};
    int deliveryDepth_ = 0;

    // Guards starting and stopping the dispatcher; stopDispatcher_ itself is guarded by lock_.
    std::mutex dispatcherMutex_;
    std::thread dispatcher_;
    bool stopDispatcher_ = false;
    std::atomic<bool> dispatcherRunning_{false};
};

} // namespace qzk
