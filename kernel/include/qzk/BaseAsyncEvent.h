// The completion of a background job, told to whoever waits for it through the message loop.
//
// The job calls Progress, Status and, once, one of Complete (status 0), CompleteWithError
// (status 1, with a text and a number) or Cancel (status 2); a second completion is ignored.
// Each call queues a message to the event itself; the loop then calls OnProgress, OnStatus or
// OnCompleted(status) on the loop's thread. After OnCompleted the kernel lets the event go. An
// event whose RunOnCompleteInTask() is true gets OnCompleted on the completing thread instead.
//
// Hand the event to the kernel with ManageObject before giving it to a job.
#pragma once

#include "dom/Observer.h"
#include "du/SmartPtr.h"
#include "du/Symbol.h"

#include <atomic>
#include <mutex>

namespace dom {
class ObserverProxy;
}

namespace qzk {

class BaseAsyncEvent : public dom::Observer {
public:
    enum : unsigned char { CompletedId = 0, ProgressId = 1, StatusId = 2 };
    enum : int { StatusSuccess = 0, StatusError = 1, StatusCanceled = 2 };

    ~BaseAsyncEvent() override;

    bool IsComplete() const noexcept { return complete_.load(std::memory_order_acquire); }
    bool IsCanceled() const noexcept { return canceled_.load(std::memory_order_acquire); }

    virtual void CompleteWithError(du::Symbol const& text, unsigned short number);
    virtual void Complete();
    virtual void Progress(unsigned char percent);
    virtual void Status(du::Symbol status);
    // Marks the job cancelled and completes the event with status 2 unless it is complete.
    virtual void Cancel();

    // Kernel side: completes with any status (the loader's hand controls use it); false if the
    // event was complete already. Status 2 also marks the event cancelled.
    bool CompleteWithStatus(int status, du::Symbol const& text, unsigned short number);

    // What the event was completed with; valid once IsComplete().
    int GetStatus() const;
    du::Symbol GetErrorText() const;
    unsigned short GetErrorNumber() const;

    void EventHandler(dom::MessageReader& reader) override;

protected:
    BaseAsyncEvent();
    virtual void HandleEvent(unsigned char id, dom::MessageReader& reader);
    void OnManage() override;

private:
    virtual void OnProgress(unsigned char percent);

protected:
    virtual void OnCompleted(int status);

private:
    virtual void OnStatus(du::Symbol status);
    virtual bool RunOnCompleteInTask() const;

    void QueueToSelf(unsigned char id, unsigned int value, du::Symbol const* text);

    std::atomic<bool> complete_{false};
    std::atomic<bool> canceled_{false};
    mutable std::mutex mutex_;
    int status_ = -1;
    du::Symbol errorText_;
    unsigned short errorNumber_ = 0;
    du::SmartPtr<dom::ObserverProxy> proxy_;
};

} // namespace qzk
