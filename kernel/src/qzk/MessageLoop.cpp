#include "qzk/MessageLoop.h"

#include "dom/Observer.h"
#include "du/RefCounted.h"
#include "du/SingleThread.h"

#include <algorithm>
#include <chrono>
#include <exception>
#include <new>
#include <utility>

namespace qzk {
namespace {

uint64 MakeHandle(std::uint32_t generation, std::uint32_t index) {
    return (static_cast<uint64>(generation) << 32) | index;
}

std::uint32_t IndexOf(uint64 handle) {
    return static_cast<std::uint32_t>(handle);
}

} // namespace

MessageLoop::~MessageLoop() {
    StopDispatcher();
}

// The helpers of a post and of a delivery are inline, so that the compiler folds them into their
// callers on the message path; an exported member function is otherwise called through the PLT.
inline MessageLoop::Slot* MessageLoop::Find(uint64 handle) {
    std::uint32_t const index = IndexOf(handle);
    if (index >= slotCount_) {
        return nullptr;
    }
    Slot& slot = SlotAt(index);
    if (slot.observer == nullptr || slot.generation != static_cast<std::uint32_t>(handle >> 32)) {
        return nullptr;
    }
    return &slot;
}

void MessageLoop::Free(Slot& slot, std::uint32_t index) noexcept {
    slot.observer = nullptr;
    // Generations start at 1, so no handle is ever 0 (0 is an unbound proxy's).
    if (++slot.generation == 0) {
        slot.generation = 1;
    }
    slot.state.store(0, std::memory_order_relaxed);
    // Called where nothing may throw (an observer's destructor, the end of a delivery): a slot
    // that cannot be listed is not used again, which costs its few bytes and nothing else.
    try {
        free_.push_back(index);
    } catch (std::bad_alloc const&) {
    }
}

uint64 MessageLoop::AddObserver(dom::Observer* observer) {
    std::lock_guard lock(lock_);
    std::uint32_t index = 0;
    if (!free_.empty()) {
        index = free_.back();
        free_.pop_back();
    } else {
        index = slotCount_;
        if ((index & (kSlotBlockSize - 1)) == 0) {
            slotBlocks_.push_back(std::make_unique<Slot[]>(kSlotBlockSize));
        }
        ++slotCount_;
    }
    Slot& slot = SlotAt(index);
    slot.observer = observer;
    return MakeHandle(slot.generation, index);
}

void MessageLoop::RemoveObserver(uint64 handle) noexcept {
    std::thread::id const self = std::this_thread::get_id();
    std::unique_lock lock(lock_);
    for (;;) {
        Slot* slot = Find(handle);
        if (slot == nullptr) {
            return;
        }
        if (slot->state.load() < OneDelivery) {
            Free(*slot, IndexOf(handle));
            return;
        }
        if (deliveringThread_.load() == self) {
            // The observer ends inside its own handler: the end of that delivery frees the slot.
            slot->state.fetch_or(Dead);
            slot->observer = nullptr;
            return;
        }
        WaitForADelivery(lock);
    }
}

bool MessageLoop::ReleaseIfIdle(uint64 handle) noexcept {
    std::lock_guard lock(lock_);
    Slot* slot = Find(handle);
    if (slot == nullptr) {
        return true;
    }
    std::uint32_t state = slot->state.load();
    while (state >= OneDelivery) {
        if (slot->state.compare_exchange_weak(state, state | ReleasePending)) {
            return false;
        }
    }
    // Forgotten before the destructors run, so no delivery can start on a half-destroyed object.
    Free(*slot, IndexOf(handle));
    return true;
}

inline void MessageLoop::PushQueued(uint64 handle, std::unique_ptr<dom::MessageData>&& message) {
    if (count_ == ring_.size()) {
        std::vector<Queued> grown(std::max<std::size_t>(16, ring_.size() * 2));
        for (std::size_t i = 0; i < count_; ++i) {
            grown[i] = std::move(ring_[(head_ + i) & (ring_.size() - 1)]);
        }
        ring_.swap(grown);
        head_ = 0;
    }
    Queued& tail = ring_[(head_ + count_) & (ring_.size() - 1)];
    tail.handle = handle;
    tail.message = std::move(message);
    ++count_;
}

inline void MessageLoop::PopQueued(Queued& out) {
    Queued& head = ring_[head_];
    out.handle = head.handle;
    out.message = std::move(head.message);
    head_ = (head_ + 1) & (ring_.size() - 1);
    --count_;
}

inline void MessageLoop::KeepEmptyMessage(std::unique_ptr<dom::MessageData>&& message) noexcept {
    if (emptyMessages_.size() < kKeptMessages) {
        try {
            emptyMessages_.push_back(std::move(message));
        } catch (std::bad_alloc const&) {
            // Then the message stays with the caller and is freed instead of kept.
        }
    }
}

void MessageLoop::Queue(uint64 handle, std::unique_ptr<dom::MessageData>& message) {
    std::unique_ptr<dom::MessageData> empty;
    bool wake = false;
    {
        std::lock_guard lock(lock_);
        PushQueued(handle, std::move(message));
        if (!emptyMessages_.empty()) {
            empty = std::move(emptyMessages_.back());
            emptyMessages_.pop_back();
        }
        wake = std::exchange(dispatcherSleeping_, false);
    }
    if (wake) {
        queued_.notify_one();
    }
    // None kept: the proxy makes one when it next writes.
    message = std::move(empty);
}

inline bool MessageLoop::DeliverNext() {
    std::thread::id const self = std::this_thread::get_id();
    // Declared before the lock, so a dropped message's objects are released after it.
    Queued item;
    Slot* slot = nullptr;
    dom::Observer* target = nullptr;
    {
        std::unique_lock lock(lock_);
        // One delivery at a time; a handler that pumps nests its deliveries in its own.
        for (;;) {
            std::thread::id const busy = deliveringThread_.load();
            if (busy == std::thread::id() || busy == self) {
                break;
            }
            WaitForADelivery(lock);
        }
        // Nobody else delivers while this thread holds the lock, so finished_ is this thread's.
        if (finished_ != nullptr) {
            KeepEmptyMessage(std::move(finished_));
        }
        if (count_ == 0) {
            return false;
        }
        PopQueued(item);
        slot = Find(item.handle);
        if (slot == nullptr) {
            ++dropped_;
            return true;
        }
        // Only this thread, under the lock, starts deliveries; the hook and the end of a delivery
        // change the state with read-modify-writes, so a plain increment does here.
        slot->state.store(slot->state.load(std::memory_order_relaxed) + OneDelivery,
                          std::memory_order_relaxed);
        target = slot->observer;
        if (deliveryDepth_++ == 0) {
            deliveringThread_.store(self, std::memory_order_relaxed);
        }
    }
    dom::MessageReader reader(*item.message);
    try {
        target->HandleMessage(reader);
    } catch (std::exception const& error) {
        RecordError(item.handle, error.what());
    } catch (...) {
        RecordError(item.handle, "unknown exception");
    }
    EndDelivery(*slot, item.handle, std::move(item.message));
    return true;
}

inline void MessageLoop::EndDelivery(Slot& slot, uint64 handle,
                                     std::unique_ptr<dom::MessageData>&& message) {
    dom::Observer* release = nullptr;
    std::uint32_t state = 0;
    if (du::ProcessHasOneThread()) {
        state = slot.state.load(std::memory_order_relaxed) - OneDelivery;
        slot.state.store(state, std::memory_order_relaxed);
    } else {
        state = slot.state.fetch_sub(OneDelivery, std::memory_order_acq_rel) - OneDelivery;
    }
    if (state < OneDelivery && (state & (ReleasePending | Dead)) != 0) {
        std::lock_guard lock(lock_);
        if ((state & Dead) != 0) {
            Free(slot, IndexOf(handle));
        } else {
            slot.state.fetch_and(~static_cast<std::uint32_t>(ReleasePending));
            release = slot.observer;
        }
    }
    // Emptied here, outside the lock: releasing the message's objects may end observers.
    message->objects.clear();
    if (message->bytes.capacity() > kKeptMessageBytes) {
        std::string().swap(message->bytes);
    } else {
        message->bytes.clear();
    }
    // A nested delivery's message may still sit here; that one is freed.
    finished_ = std::move(message);
    if (--deliveryDepth_ == 0) {
        deliveringThread_.store(std::thread::id(), std::memory_order_release);
    }
    if (waiters_.load(std::memory_order_relaxed) > 0) {
        // Taking the lock once puts every waiter that has looked at the state either inside the
        // wait or back to looking again.
        { std::lock_guard lock(lock_); }
        delivered_.notify_all();
    }
    if (release != nullptr) {
        // The observer's last reference went during the delivery; its hook kept it until now.
        du::ReleaseReference(release, nullptr);
    }
}

void MessageLoop::WaitForADelivery(std::unique_lock<du::SpinLock>& lock) {
    // The end of a delivery tells waiters without taking the lock first unless it sees them, so
    // a wake-up can be missed; the timeout bounds what that costs. Waiting is rare: a pump racing
    // the dispatcher, or an observer ending while the dispatcher delivers to it.
    ++waiters_;
    delivered_.wait_for(lock, std::chrono::milliseconds(1));
    --waiters_;
}

void MessageLoop::RecordError(uint64 handle, char const* what) noexcept {
    dom::Observer* observer = nullptr;
    {
        std::lock_guard lock(lock_);
        Slot* slot = Find(handle);
        observer = slot != nullptr ? slot->observer : nullptr;
    }
    // The delivery still counts, so the observer stays until it ends and its class is asked
    // outside the lock. A handler that ended its own observer leaves none to ask. Without memory
    // for the text the error goes unrecorded, and the delivery still ends.
    try {
        std::string entry = observer != nullptr ? observer->GetObjectClass() : "(observer gone)";
        entry += ": ";
        entry += what;
        std::lock_guard lock(lock_);
        errors_.push_back(std::move(entry));
    } catch (std::exception const&) {
    }
}

bool MessageLoop::PumpOne() {
    return DeliverNext();
}

std::size_t MessageLoop::PumpUntilIdle() {
    std::size_t count = 0;
    while (DeliverNext()) {
        ++count;
    }
    return count;
}

std::size_t MessageLoop::GetPendingCount() const {
    std::lock_guard lock(lock_);
    return count_;
}

std::size_t MessageLoop::DiscardPending() {
    std::vector<Queued> dropped;
    std::size_t count = 0;
    {
        std::lock_guard lock(lock_);
        dropped.swap(ring_);
        count = std::exchange(count_, 0);
        head_ = 0;
    }
    // The messages' objects are released outside the loop's lock.
    return count;
}

bool MessageLoop::StartDispatcher() {
    std::lock_guard guard(dispatcherMutex_);
    if (dispatcher_.joinable()) {
        return false;
    }
    {
        std::lock_guard lock(lock_);
        stopDispatcher_ = false;
    }
    dispatcherRunning_.store(true);
    dispatcher_ = std::thread([this] { Dispatch(); });
    return true;
}

bool MessageLoop::StopDispatcher() {
    std::lock_guard guard(dispatcherMutex_);
    if (!dispatcher_.joinable() || dispatcher_.get_id() == std::this_thread::get_id()) {
        return false;
    }
    {
        std::lock_guard lock(lock_);
        stopDispatcher_ = true;
    }
    // Past the lock, the dispatcher has either still to look at the flag or is inside the wait,
    // which it entered before letting the lock go.
    queued_.notify_all();
    dispatcher_.join();
    dispatcherRunning_.store(false);
    return true;
}

bool MessageLoop::IsDispatcherRunning() const {
    return dispatcherRunning_.load();
}

void MessageLoop::Dispatch() {
    for (;;) {
        {
            std::unique_lock lock(lock_);
            while (!stopDispatcher_ && count_ == 0) {
                dispatcherSleeping_ = true;
                queued_.wait(lock);
            }
            dispatcherSleeping_ = false;
            if (stopDispatcher_) {
                return;
            }
        }
        DeliverNext();
    }
}

std::vector<std::string> MessageLoop::TakeHandlerErrors() {
    std::lock_guard lock(lock_);
    return std::exchange(errors_, {});
}

std::size_t MessageLoop::GetDroppedCount() const {
    std::lock_guard lock(lock_);
    return dropped_;
}

} // namespace qzk
