#include "qzk/MessageLoop.h"

#include "dom/Observer.h"
#include "du/RefCounted.h"

#include <exception>
#include <utility>

namespace qzk {

MessageLoop& MessageLoop::Get() {
    static MessageLoop loop;
    return loop;
}

MessageLoop::~MessageLoop() { StopDispatcher(); }

uint64 MessageLoop::AddObserver(dom::Observer* observer) {
    std::lock_guard lock(mutex_);
    uint64 handle = nextHandle_++;
    observers_.emplace(handle, Entry{observer});
    return handle;
}

void MessageLoop::RemoveObserver(uint64 handle) noexcept {
    std::unique_lock lock(mutex_);
    for (;;) {
        auto found = observers_.find(handle);
        if (found == observers_.end()) {
            return;
        }
        // A handler that ends its own observer must not wait for itself.
        if (found->second.deliveries > 0 && deliveringThread_ != std::this_thread::get_id()) {
            ++waiters_;
            delivered_.wait(lock);
            --waiters_;
            continue;
        }
        observers_.erase(found);
        return;
    }
}

bool MessageLoop::ReleaseIfIdle(uint64 handle) noexcept {
    std::lock_guard lock(mutex_);
    auto found = observers_.find(handle);
    if (found == observers_.end()) {
        return true;
    }
    if (found->second.deliveries > 0) {
        found->second.releasePending = true;
        return false;
    }
    // Forgotten before the destructors run, so no delivery can start on a half-destroyed object.
    observers_.erase(found);
    return true;
}

void MessageLoop::Queue(uint64 handle, dom::MessageData&& message) {
    std::lock_guard lock(mutex_);
    queue_.push_back(Queued{handle, std::move(message)});
    if (dispatcherRunning_.load(std::memory_order_relaxed)) {
        queued_.notify_one();
    }
}

bool MessageLoop::DeliverNext() {
    std::lock_guard delivery(deliveryMutex_);
    Queued item;
    dom::Observer* target = nullptr;
    {
        std::lock_guard lock(mutex_);
        if (queue_.empty()) {
            return false;
        }
        item = std::move(queue_.front());
        queue_.pop_front();
        auto found = observers_.find(item.handle);
        if (found == observers_.end()) {
            ++dropped_;
        } else {
            ++found->second.deliveries;
            deliveringThread_ = std::this_thread::get_id();
            target = found->second.observer;
        }
    }
    if (target == nullptr) {
        return true;
    }
    dom::MessageReader reader(item.message);
    try {
        target->HandleMessage(reader);
    } catch (std::exception const& error) {
        RecordError(item.handle, error.what());
    } catch (...) {
        RecordError(item.handle, "unknown exception");
    }
    dom::Observer* release = nullptr;
    {
        std::lock_guard lock(mutex_);
        auto found = observers_.find(item.handle);
        if (found != observers_.end() && --found->second.deliveries == 0 &&
            found->second.releasePending) {
            found->second.releasePending = false;
            release = found->second.observer;
        }
        if (waiters_ > 0) {
            delivered_.notify_all();
        }
    }
    // The observer's last reference went during the delivery; its hook kept it until now.
    du::ReleaseReference(release, nullptr);
    return true;
}

void MessageLoop::RecordError(uint64 handle, std::string const& what) {
    std::lock_guard lock(mutex_);
    auto found = observers_.find(handle);
    // The handler may have ended its own observer; its class can no longer be asked.
    std::string where = found != observers_.end() ? found->second.observer->GetObjectClass()
                                                  : std::string("(observer gone)");
    errors_.push_back(where + ": " + what);
}

bool MessageLoop::PumpOne() { return DeliverNext(); }

std::size_t MessageLoop::PumpUntilIdle() {
    std::lock_guard delivery(deliveryMutex_);
    std::size_t count = 0;
    while (DeliverNext()) {
        ++count;
    }
    return count;
}

std::size_t MessageLoop::GetPendingCount() const {
    std::lock_guard lock(mutex_);
    return queue_.size();
}

std::size_t MessageLoop::DiscardPending() {
    std::deque<Queued> dropped;
    {
        std::lock_guard lock(mutex_);
        dropped.swap(queue_);
    }
    // The messages' objects are released outside the loop's mutex.
    return dropped.size();
}

bool MessageLoop::StartDispatcher() {
    std::lock_guard guard(dispatcherMutex_);
    if (dispatcher_.joinable()) {
        return false;
    }
    {
        std::lock_guard lock(mutex_);
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
        std::lock_guard lock(mutex_);
        stopDispatcher_ = true;
        queued_.notify_all();
    }
    dispatcher_.join();
    dispatcherRunning_.store(false);
    return true;
}

bool MessageLoop::IsDispatcherRunning() const { return dispatcherRunning_.load(); }

void MessageLoop::Dispatch() {
    for (;;) {
        {
            std::unique_lock lock(mutex_);
            queued_.wait(lock, [this] { return stopDispatcher_ || !queue_.empty(); });
            if (stopDispatcher_) {
                return;
            }
        }
        DeliverNext();
    }
}

std::vector<std::string> MessageLoop::TakeHandlerErrors() {
    std::lock_guard lock(mutex_);
    return std::exchange(errors_, {});
}

std::size_t MessageLoop::GetDroppedCount() const {
    std::lock_guard lock(mutex_);
    return dropped_;
}

} // namespace qzk
