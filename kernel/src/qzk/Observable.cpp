#include "qzk/Observable.h"

#include "dom/ObserverProxy.h"
#include "qzk/Kernel.h"
#include "qzk/Observer.h"
#include "qzref/Journal.h"

#include <mutex>
#include <utility>
#include <vector>

namespace qzk {
namespace {

// Guards every observer's tie to its observable (qzk::Observer::observable_). Taken before an
// observable's list lock, never after it.
std::mutex& TieMutex() {
    static std::mutex mutex;
    return mutex;
}

// Tags below this are the kernel's (qzk::Observer's begin, end and unregister notices).
constexpr unsigned char kNextEventId = 17;

std::string ObserverName(dom::Observer const& observer) {
    return observer.GetObjectClass();
}

} // namespace

Observable::_RegisterInitHelper::_RegisterInitHelper() = default;
Observable::_RegisterInitHelper::~_RegisterInitHelper() = default;

void Observable::SimpleEvent::Post(dom::ObserverProxy* proxy) const {
    proxy->PushUInt8Value(id_);
}

void Observable::UInt32Event::Post(dom::ObserverProxy* proxy) const {
    proxy->PushUInt8Value(id_);
    proxy->PushUInt32Value(value_);
}

Observable::Observable(ObjectWithRWLock const* lockOwner) : ObjectWithRWLock(lockOwner) {}

Observable::~Observable() {
    std::lock_guard tie(TieMutex());
    for (dom::Observer const* observer : RemoveAllObservers()) {
        // Only qzk::Observers are ever registered here (see _RegisterObserver).
        static_cast<Observer*>(const_cast<dom::Observer*>(observer))->observable_ = nullptr;
    }
}

unsigned char Observable::GetNextEventId() noexcept {
    return kNextEventId;
}

bool Observable::IsRegistered(Observer const& observer) const {
    return dom::Observable::HasObserver(observer);
}

void Observable::PostObservableEvent(dom::ObservableEvent const& event, bool /*flag*/) {
    if (qzref::Journal::IsEnabled()) {
        qzref::Journal::Record(GetObjectName().str(), "PostObservableEvent",
                               {qzref::Fmt(dom::Observable::PeekEventId(event))});
    }
    PostEvent(event);
}

void Observable::_PostKernelNotice(dom::ObservableEvent const& event) {
    PostEvent(event);
}

bool Observable::_RegisterObserver(Observer& observer,
                                   du::SmartPtr<dom::ObserverProxy> const& proxy,
                                   _RegisterInitHelper* helper) {
    qzref::Journal::Record(GetObjectName().str(), "_RegisterObserver",
                           {ObserverName(observer), qzref::Fmt(helper != nullptr)});
    if (IsDestroyed() || !proxy || proxy->GetObserverHandle() != observer.GetMessageHandle()) {
        return false;
    }
    {
        std::lock_guard tie(TieMutex());
        if (observer.observable_ != nullptr || !AddObserver(observer, proxy)) {
            return false;
        }
        observer.observable_ = this;
    }
    if (helper != nullptr) {
        helper->Init();
    }
    return true;
}

bool Observable::DoUnregisterObserver(Observer& observer) {
    qzref::Journal::Record(GetObjectName().str(), "DoUnregisterObserver", {ObserverName(observer)});
    du::SmartPtr<dom::ObserverProxy> proxy = Unlink(observer, this);
    if (!proxy) {
        return false;
    }
    AfterUnregister(observer, proxy);
    return true;
}

du::SmartPtr<dom::ObserverProxy> Observable::Unlink(Observer& observer,
                                                    Observable const* expected) {
    std::lock_guard tie(TieMutex());
    Observable* observable = observer.observable_;
    if (observable == nullptr || (expected != nullptr && observable != expected)) {
        return nullptr;
    }
    observer.observable_ = nullptr;
    return observable->RemoveObserver(observer);
}

Observable* Observable::TieOf(Observer const& observer) {
    std::lock_guard tie(TieMutex());
    return observer.observable_;
}

void Observable::AfterUnregister(Observer& observer,
                                 du::SmartPtr<dom::ObserverProxy> const& proxy) {
    // The proxy has left the list, so no post can be using it.
    proxy->Begin();
    proxy->PushUInt8Value(Observer::UnregisterEventId);
    proxy->End();
    UnmanageFromKernel(&observer);
}

void Observable::Destroy() {
    if (destroying_.exchange(true, std::memory_order_acq_rel)) {
        return;
    }
    _OnDestroy();
    _OnPostDestroy();
    // Each counted observer is held while it is detached, so that its owner letting go of it on
    // another thread cannot free it underneath. One whose count is 0 here was never counted (it
    // lives on a stack or in a member): a counted observer leaves the list before its count can
    // reach 0 (see Observer::ZeroReferenceCountHook), under the tie mutex held here.
    std::vector<std::pair<Observer*, du::SmartPtr<Observer>>> detached;
    {
        std::lock_guard tie(TieMutex());
        for (dom::Observer const* entry : RemoveAllObservers()) {
            auto* observer = static_cast<Observer*>(const_cast<dom::Observer*>(entry));
            observer->observable_ = nullptr;
            du::SmartPtr<Observer> held;
            if (observer->TryAddReference(nullptr)) {
                held = du::SmartPtr<Observer>(observer);
                du::ReleaseReference(observer, nullptr);
            }
            detached.emplace_back(observer, std::move(held));
        }
    }
    for (auto const& [observer, held] : detached) {
        observer->DetachObserver();
        UnmanageFromKernel(observer);
    }
}

} // namespace qzk
