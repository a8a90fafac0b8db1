// An event source: the kernel's base of every object that observers register with (the API
// scenes derive from it).
//
// Events are numbered from GetNextEventId(), the first id the kernel leaves free; it is not 0,
// so a derived class that numbers its events absolutely instead of from it is caught at once.
// The kernel's own ids, below it, are those qzk::Observer::HandleEvent answers. Registration and
// posting are guarded by the observable's own small locks, not by the object's reader-writer
// lock, which the caller holds as it sees fit; handlers never run inside a post.
#pragma once

#include "dom/Observable.h"
#include "dom/ObservableEvent.h"
#include "du/SmartPtr.h"
#include "qzk/ObjectWithRWLock.h"

#include <atomic>
#include <cstddef>

namespace qzref {
class ObservableInspector;
}

namespace qzk {

class Observer;

class Observable : private dom::Observable, public ObjectWithRWLock {
public:
    // Brings one newly registered observer up to date, inside _RegisterObserver.
    class _RegisterInitHelper {
    public:
        _RegisterInitHelper();
        _RegisterInitHelper(_RegisterInitHelper const&) = delete;
        _RegisterInitHelper& operator=(_RegisterInitHelper const&) = delete;
        virtual void Init() = 0;
        virtual ~_RegisterInitHelper();
    };

    // The usual helper: calls scene->_InitObserver(observer). The scene befriends it when
    // _InitObserver is not public.
    template <class SceneT, class ObserverT>
    class DefaultRegisterInitHelper : public _RegisterInitHelper {
    public:
        DefaultRegisterInitHelper(SceneT* scene, ObserverT& observer)
            : scene_(scene), observer_(observer) {}
        void Init() override { scene_->_InitObserver(observer_); }

    private:
        SceneT* scene_;
        ObserverT& observer_;
    };

    // An event with an id and no payload.
    class SimpleEvent : public dom::ObservableEvent {
    public:
        explicit SimpleEvent(unsigned char id) noexcept : id_(id) {}
        void Post(dom::ObserverProxy* proxy) const override;

    private:
        unsigned char id_;
    };

    // An event with an id and one unsigned 32-bit value.
    class UInt32Event : public dom::ObservableEvent {
    public:
        UInt32Event(unsigned char id, unsigned int value) noexcept : id_(id), value_(value) {}
        void Post(dom::ObserverProxy* proxy) const override;

    private:
        unsigned char id_;
        unsigned int value_;
    };

    // The new object shares lockOwner's reader-writer lock; null runs unlocked.
    explicit Observable(ObjectWithRWLock const* lockOwner);
    ~Observable() override;

    // The end of the observable: _OnDestroy, _OnPostDestroy, then every observer is detached
    // (DetachObserver) and let go by the kernel. It runs once: a call while it runs, from
    // _OnDestroy itself or from another thread, and any later call return at once.
    void Destroy();
    bool IsDestroyed() const noexcept { return destroying_.load(std::memory_order_acquire); }

protected:
    static unsigned char GetNextEventId() noexcept;

    // Queues the event for every registered observer. The flag is accepted for the platform's
    // signature and ignored: delivery never waits for handlers.
    void PostObservableEvent(dom::ObservableEvent const& event, bool flag);
    // The kernel's own objects post their notices here: as every call the kernel makes on
    // itself, it is not journalled.
    void _PostKernelNotice(dom::ObservableEvent const& event);
    // Adds the observer with its proxy; then, if helper is given, runs it once, for this
    // observer only, before returning. false (and no helper call) for a null proxy, an observer
    // already registered here or elsewhere, or an observable that is being destroyed.
    bool _RegisterObserver(Observer& observer, du::SmartPtr<dom::ObserverProxy> const& proxy,
                           _RegisterInitHelper* helper);
    // Removes the observer, queues its OnUnregister notice and lets the kernel release it.
    bool DoUnregisterObserver(Observer& observer);

private:
    friend class Observer;
    friend class qzref::ObservableInspector;

    std::size_t GetObserverCount() const { return dom::Observable::GetObserverCount(); }
    bool IsRegistered(Observer const& observer) const;

    // Ends observer's tie to whichever observable holds it (or only to expected, when given) and
    // returns its proxy; null if there was no such tie.
    static du::SmartPtr<dom::ObserverProxy> Unlink(Observer& observer, Observable const* expected);
    static Observable* TieOf(Observer const& observer);
    // Queues the kernel's OnUnregister notice through proxy and lets the kernel release observer.
    static void AfterUnregister(Observer& observer, du::SmartPtr<dom::ObserverProxy> const& proxy);

    std::atomic<bool> destroying_{false};
};

} // namespace qzk
