// qzk::Observable and qzk::Observer: event ids, registration with an init helper, unregistration
// and the end of an observable.
#include "qzk/Observable.h"
#include "dom/MessageReader.h"
#include "dom/ObserverProxy.h"
#include "du/CommonAllocatorImpl.h"
#include "qzk/Kernel.h"
#include "qzk/Observer.h"
#include "qzref/Journal.h"
#include "qzref/Messages.h"
#include "qzref/Platform.h"

#include <gtest/gtest.h>

#include "qzref/Inspect.h"
#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <functional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace {

using qzref::Messages;

class RecordingObserver;

class TestObservable : public qzk::Observable {
public:
    TestObservable() : qzk::Observable(nullptr) {}
    qzk::ClassType const& GetClassType() const override {
        static qzk::ClassType const type(qzk::classid::Observable);
        return type;
    }
    using qzk::Observable::_RegisterObserver;
    using qzk::Observable::DoUnregisterObserver;
    using qzk::Observable::GetNextEventId;
    using qzk::Observable::PostObservableEvent;

    bool Register(RecordingObserver& observer, bool withHelper);

    std::function<void()> onDestroy;
    int destroyCalls = 0;
    int postDestroyCalls = 0;
    std::vector<RecordingObserver*> initialised;

protected:
    void _OnDestroy() override {
        ++destroyCalls;
        if (onDestroy) {
            onDestroy();
        }
    }
    void _OnPostDestroy() override { ++postDestroyCalls; }

private:
    friend class qzk::Observable::DefaultRegisterInitHelper<TestObservable, RecordingObserver>;
    void _InitObserver(RecordingObserver& observer) { initialised.push_back(&observer); }
};

class RecordingObserver : public qzk::Observer {
public:
    ~RecordingObserver() override {
        DetachFromMessageLoop();
        if (destroyed != nullptr) {
            *destroyed = true;
        }
    }
    void HandleEvent(unsigned char id, dom::MessageReader& reader) override {
        if (id < Base()) {
            qzk::Observer::HandleEvent(id, reader);
            return;
        }
        unsigned int value = 0;
        reader.GetUInt32Value(value);
        events.emplace_back(id, value);
    }
    void DetachObserver() override { ++detached; }
    void OnUnregister() override { ++unregistered; }

    static unsigned char Base() { return TestObservable::GetNextEventId(); }

    std::vector<std::pair<unsigned char, unsigned int>> events;
    int detached = 0;
    int unregistered = 0;
    bool* destroyed = nullptr;
};

du::SmartPtr<dom::ObserverProxy> MakeProxy(dom::Observer const& observer) {
    void* block = du::CommonAllocatorImpl::Allocate(sizeof(dom::ObserverProxy), nullptr);
    return du::SmartPtr<dom::ObserverProxy>(new (block) dom::ObserverProxy(observer));
}

bool TestObservable::Register(RecordingObserver& observer, bool withHelper) {
    DefaultRegisterInitHelper<TestObservable, RecordingObserver> helper(this, observer);
    return _RegisterObserver(observer, MakeProxy(observer), withHelper ? &helper : nullptr);
}

class ObservableTest : public ::testing::Test {
protected:
    void SetUp() override { Messages::DiscardPending(); }
    void TearDown() override { Messages::DiscardPending(); }
    qzref::ScopedPlatform platform_;
};

TEST_F(ObservableTest, EventsAreNumberedFromANonZeroKernelIdAndReachHandleEventLater) {
    unsigned char const base = TestObservable::GetNextEventId();
    EXPECT_NE(base, 0);
    TestObservable observable;
    RecordingObserver observer;
    ASSERT_TRUE(observable.Register(observer, false));
    std::size_t const mark = qzref::Journal::Size();

    observable.PostObservableEvent(qzk::Observable::UInt32Event(base + 1, 42), false);
    observable.PostObservableEvent(qzk::Observable::SimpleEvent(base), false);
    EXPECT_TRUE(observer.events.empty());
    Messages::PumpUntilIdle();

    using Event = std::pair<unsigned char, unsigned int>;
    EXPECT_EQ(observer.events,
              (std::vector<Event>{{static_cast<unsigned char>(base + 1), 42u}, {base, 0u}}));
    std::string const name = observable.GetObjectName().str();
    EXPECT_EQ(
        qzref::Journal::Since(mark),
        (std::vector<std::string>{name + ".PostObservableEvent(" + std::to_string(base + 1) + ")",
                                  name + ".PostObservableEvent(" + std::to_string(base) + ")"}));
}

TEST_F(ObservableTest, RegisterInitHelperRunsOnceForTheNewObserverOnly) {
    TestObservable observable;
    RecordingObserver first;
    RecordingObserver second;
    RecordingObserver third;

    EXPECT_TRUE(observable.Register(first, true));
    EXPECT_EQ(observable.initialised, (std::vector<RecordingObserver*>{&first}));
    EXPECT_TRUE(observable.Register(second, true));
    EXPECT_EQ(observable.initialised, (std::vector<RecordingObserver*>{&first, &second}));
    // A second registration is refused and brings no one up to date again.
    EXPECT_FALSE(observable.Register(first, true));
    EXPECT_TRUE(observable.Register(third, false));
    EXPECT_EQ(observable.initialised.size(), 2u);
    EXPECT_EQ(qzref::Inspect(observable).GetObserverCount(), 3u);

    // An observer belongs to one observable at a time.
    TestObservable other;
    EXPECT_FALSE(other.Register(first, true));
    EXPECT_TRUE(other.initialised.empty());
}

TEST_F(ObservableTest, DestroyRunsOnceAndReturnsAtOnceWhenCalledFromOnDestroy) {
    TestObservable observable;
    RecordingObserver a;
    RecordingObserver b;
    observable.Register(a, false);
    observable.Register(b, false);
    // Like a scene whose _OnDestroy ends in OnDestroyQzkScene, which calls Destroy again.
    observable.onDestroy = [&observable] { observable.Destroy(); };

    observable.Destroy();
    EXPECT_EQ(observable.destroyCalls, 1);
    EXPECT_EQ(observable.postDestroyCalls, 1);
    EXPECT_EQ(a.detached, 1);
    EXPECT_EQ(b.detached, 1);
    EXPECT_EQ(qzref::Inspect(observable).GetObserverCount(), 0u);
    EXPECT_EQ(qzref::Inspect(a).GetObservable(), nullptr);

    observable.Destroy();
    EXPECT_EQ(observable.destroyCalls, 1);
    EXPECT_EQ(a.detached, 1);
    EXPECT_FALSE(observable.Register(a, true));
    EXPECT_TRUE(observable.initialised.empty());
}

TEST_F(ObservableTest, UnregisterTellsTheObserverAndTheKernelLetsItGo) {
    TestObservable observable;
    bool destroyed = false;
    du::SmartPtr<RecordingObserver> kept(new RecordingObserver());
    du::SmartPtr<RecordingObserver> handedOver(new RecordingObserver());
    handedOver->destroyed = &destroyed;
    du::SmartPtr<qzk::Kernel> kernel = qzk::Kernel::GetKernel();
    kernel->ManageObject(kept);
    kernel->ManageObject(handedOver);
    observable.Register(*kept, false);
    observable.Register(*handedOver, false);
    RecordingObserver* handedOverRaw = handedOver.Get();
    handedOver = nullptr;
    EXPECT_FALSE(destroyed);

    EXPECT_TRUE(kept->Unregister());
    EXPECT_FALSE(kept->Unregister());
    EXPECT_FALSE(qzref::Inspect(*kernel).IsManaging(kept.Get()));
    EXPECT_EQ(kept->unregistered, 0);
    Messages::PumpUntilIdle();
    EXPECT_EQ(kept->unregistered, 1);

    // The kernel held the last reference: the observer ends with its unregistration, and the
    // notice queued for it is dropped.
    EXPECT_TRUE(observable.DoUnregisterObserver(*handedOverRaw));
    EXPECT_TRUE(destroyed);
    Messages::PumpUntilIdle();
    EXPECT_EQ(qzref::Inspect(observable).GetObserverCount(), 0u);
}

TEST_F(ObservableTest, ObserverThatEndsWhileRegisteredLeavesTheList) {
    TestObservable observable;
    {
        RecordingObserver shortLived;
        observable.Register(shortLived, false);
        observable.PostObservableEvent(
            qzk::Observable::SimpleEvent(TestObservable::GetNextEventId()), false);
    }
    EXPECT_EQ(qzref::Inspect(observable).GetObserverCount(), 0u);
    Messages::PumpUntilIdle();
    RecordingObserver later;
    EXPECT_TRUE(observable.Register(later, false));
}

TEST_F(ObservableTest, ObservableThatEndsFirstLeavesItsObserversUnregistered) {
    RecordingObserver observer;
    {
        TestObservable observable;
        observable.Register(observer, false);
        EXPECT_EQ(qzref::Inspect(observer).GetObservable(), &observable);
    }
    EXPECT_EQ(qzref::Inspect(observer).GetObservable(), nullptr);
    EXPECT_FALSE(observer.Unregister());
}

// Observers that end on another thread while their observable ends: Destroy must not reach an
// observer its owner has just let go of. Fails under ASan or TSan when Destroy detaches observers
// it does not hold. QZ_STRESS_ROUNDS sets the number of rounds (see docs/stress.md).
class SlowDetachObserver : public RecordingObserver {
public:
    void DetachObserver() override {
        std::this_thread::yield();
        RecordingObserver::DetachObserver();
    }
};

int StressRounds() {
    char const* const env = std::getenv("QZ_STRESS_ROUNDS");
    return env != nullptr ? std::max(1, std::atoi(env)) : 300;
}

TEST_F(ObservableTest, DestroyWhileAnotherThreadRegistersAndDropsObservers) {
    int const rounds = StressRounds();
    constexpr int kObservers = 8;
    for (int round = 0; round < rounds; ++round) {
        du::SmartPtr<TestObservable> observable(new TestObservable());
        std::vector<du::SmartPtr<SlowDetachObserver>> owned;
        for (int i = 0; i < kObservers; ++i) {
            owned.emplace_back(new SlowDetachObserver());
            ASSERT_TRUE(observable->Register(*owned.back(), false));
        }
        std::atomic<bool> go{false};
        std::thread other([&] {
            while (!go.load()) {
                std::this_thread::yield();
            }
            for (auto& observer : owned) {
                observer->Unregister();
                observer = nullptr;
                du::SmartPtr<SlowDetachObserver> late(new SlowDetachObserver());
                observable->Register(*late, false);
            }
        });
        go.store(true);
        observable->Destroy();
        other.join();
        EXPECT_EQ(qzref::Inspect(*observable).GetObserverCount(), 0u);
        Messages::DiscardPending();
    }
}

// Observers come and go on a second thread while the dispatcher delivers to them: some leave by
// Unregister, the rest by losing their last reference, perhaps in the middle of a delivery to
// them. An observer that stays registered throughout must hear every post once and in order.
// Fails under ASan or TSan when a delivery reaches an observer that has gone.
TEST_F(ObservableTest, ObserversComeAndGoOnASecondThreadWhileTheDispatcherDelivers) {
    int const rounds = StressRounds();
    TestObservable observable;
    RecordingObserver steady;
    ASSERT_TRUE(observable.Register(steady, false));
    ASSERT_TRUE(Messages::StartDispatcher());
    std::atomic<bool> go{false};
    std::thread churn([&] {
        while (!go.load()) {
            std::this_thread::yield();
        }
        for (int round = 0; round < rounds; ++round) {
            du::SmartPtr<RecordingObserver> passing(new RecordingObserver());
            observable.Register(*passing, round % 3 == 0);
            std::this_thread::yield();
            if (round % 2 == 0) {
                passing->Unregister();
            }
        }
    });
    unsigned int const posts = static_cast<unsigned int>(rounds) * 4;
    go.store(true);
    for (unsigned int value = 1; value <= posts; ++value) {
        observable.PostObservableEvent(
            qzk::Observable::UInt32Event(RecordingObserver::Base(), value), false);
    }
    churn.join();
    ASSERT_TRUE(Messages::StopDispatcher());
    Messages::PumpUntilIdle();
    EXPECT_TRUE(Messages::TakeHandlerErrors().empty());
    ASSERT_EQ(steady.events.size(), posts);
    for (unsigned int i = 0; i < posts; ++i) {
        ASSERT_EQ(steady.events[i].second, i + 1) << "post " << i + 1;
    }
    EXPECT_EQ(qzref::Inspect(observable).GetObserverCount(), 1u);
    observable.Destroy();
}

} // namespace
