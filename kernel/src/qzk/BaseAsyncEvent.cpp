#include "qzk/BaseAsyncEvent.h"

#include "dom/MessageReader.h"
#include "dom/ObserverProxy.h"
#include "du/CommonAllocatorImpl.h"
#include "qzk/Kernel.h"

namespace qzk {

BaseAsyncEvent::BaseAsyncEvent() {
    void* block = du::CommonAllocatorImpl::Allocate(sizeof(dom::ObserverProxy), nullptr);
    proxy_ = du::SmartPtr<dom::ObserverProxy>(new (block) dom::ObserverProxy(*this));
}

BaseAsyncEvent::~BaseAsyncEvent() {
    DetachFromMessageLoop();
}

bool BaseAsyncEvent::CompleteWithStatus(int status, du::Symbol const& text, unsigned short number) {
    {
        std::lock_guard lock(mutex_);
        if (complete_.load(std::memory_order_relaxed)) {
            return false;
        }
        status_ = status;
        errorText_ = text;
        errorNumber_ = number;
        if (status == StatusCanceled) {
            canceled_.store(true, std::memory_order_release);
        }
        complete_.store(true, std::memory_order_release);
    }
    if (RunOnCompleteInTask()) {
        OnCompleted(status);
        UnmanageFromKernel(this);
    } else {
        QueueToSelf(CompletedId, static_cast<unsigned int>(status), nullptr);
    }
    return true;
}

void BaseAsyncEvent::CompleteWithError(du::Symbol const& text, unsigned short number) {
    CompleteWithStatus(StatusError, text, number);
}

void BaseAsyncEvent::Complete() {
    CompleteWithStatus(StatusSuccess, du::Symbol::EMPTY, 0);
}

void BaseAsyncEvent::Progress(unsigned char percent) {
    QueueToSelf(ProgressId, percent, nullptr);
}

void BaseAsyncEvent::Status(du::Symbol status) {
    QueueToSelf(StatusId, 0, &status);
}

void BaseAsyncEvent::Cancel() {
    canceled_.store(true, std::memory_order_release);
    CompleteWithStatus(StatusCanceled, du::Symbol::EMPTY, 0);
}

int BaseAsyncEvent::GetStatus() const {
    std::lock_guard lock(mutex_);
    return status_;
}

du::Symbol BaseAsyncEvent::GetErrorText() const {
    std::lock_guard lock(mutex_);
    return errorText_;
}

unsigned short BaseAsyncEvent::GetErrorNumber() const {
    std::lock_guard lock(mutex_);
    return errorNumber_;
}

void BaseAsyncEvent::QueueToSelf(unsigned char id, unsigned int value, du::Symbol const* text) {
    std::lock_guard lock(mutex_);
    proxy_->Begin();
    proxy_->PushUInt8Value(id);
    if (id == CompletedId) {
        proxy_->PushUInt32Value(value);
    } else if (id == ProgressId) {
        proxy_->PushUInt8Value(static_cast<unsigned char>(value));
    } else if (text != nullptr) {
        proxy_->PushStringValue(text->str());
    }
    proxy_->End();
}

void BaseAsyncEvent::EventHandler(dom::MessageReader& reader) {
    unsigned char id = 0;
    if (reader.GetUInt8Value(id)) {
        HandleEvent(id, reader);
    }
}

void BaseAsyncEvent::HandleEvent(unsigned char id, dom::MessageReader& reader) {
    switch (id) {
    case CompletedId: {
        unsigned int status = 0;
        if (reader.GetUInt32Value(status)) {
            OnCompleted(static_cast<int>(status));
        }
        // The kernel's part ends with the completion; if it held the last reference, the loop
        // keeps the event to the end of this delivery.
        UnmanageFromKernel(this);
        break;
    }
    case ProgressId: {
        unsigned char percent = 0;
        if (reader.GetUInt8Value(percent)) {
            OnProgress(percent);
        }
        break;
    }
    case StatusId: {
        std::string text;
        if (reader.GetStringValue(text)) {
            OnStatus(du::Symbol(text));
        }
        break;
    }
    default:
        break;
    }
}

void BaseAsyncEvent::OnManage() {}

void BaseAsyncEvent::OnProgress(unsigned char /*percent*/) {}

void BaseAsyncEvent::OnCompleted(int /*status*/) {}

void BaseAsyncEvent::OnStatus(du::Symbol /*status*/) {}

bool BaseAsyncEvent::RunOnCompleteInTask() const {
    return false;
}

} // namespace qzk
