// The kernel's message loop: the queue of messages, the table of live observers that messages
// are addressed to, and the optional dispatcher thread. Process-wide, so observers built before
// the kernel starts or after it stops are still known.
//
// Delivery is serialised (one delivery at a time, plus deliveries nested in a handler on the
// same thread), which is what keeps messages in order. The loop's own mutex is never held while
// a handler runs.
#pragma once

#include "dom/MessageReader.h"
#include "du/Types.h"

#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <mutex>
#include <string>
#include <thread>
#include <unordered_map>
#include <vector>

namespace dom {
class Observer;
}

namespace qzk {

class MessageLoop {
public:
    static MessageLoop& Get();

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
    struct Entry {
        dom::Observer* observer;
        int deliveries = 0;
        bool releasePending = false;
    };
    struct Queued {
        uint64 handle;
        dom::MessageData message;
    };

    MessageLoop() = default;
    ~MessageLoop();
    // Takes the next message and marks its observer as being delivered to; false when empty.
    bool DeliverNext();
    void Dispatch();
    void RecordError(uint64 handle, std::string const& what);

    mutable std::mutex mutex_;
    // Wakes the dispatcher when a message comes.
    std::condition_variable queued_;
    // Wakes observers' destructors waiting for a delivery to end.
    std::condition_variable delivered_;
    std::thread::id deliveringThread_;
    std::unordered_map<uint64, Entry> observers_;
    std::deque<Queued> queue_;
    uint64 nextHandle_ = 1;
    int waiters_ = 0;
    std::size_t dropped_ = 0;
    std::vector<std::string> errors_;

    // Serialises deliveries; recursive so that a handler may pump.
    std::recursive_mutex deliveryMutex_;

    // Guards starting and stopping the dispatcher; stopDispatcher_ itself is guarded by mutex_.
    std::mutex dispatcherMutex_;
    std::thread dispatcher_;
    bool stopDispatcher_ = false;
    std::atomic<bool> dispatcherRunning_{false};
};

} // namespace qzk
