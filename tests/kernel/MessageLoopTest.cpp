// The kernel's message loop: order, delivery outside the poster's call, messages for observers
// that have gone, handler errors, and the life of an observer across a delivery.
#include "dom/MessageReader.h"
#include "dom/Observable.h"
#include "dom/Observer.h"
#include "dom/ObserverProxy.h"
#include "du/CommonAllocatorImpl.h"
#include "qzk/Observable.h"
#include "qzref/Messages.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <mutex>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace {

using qzref::Messages;

du::SmartPtr<dom::ObserverProxy> MakeProxy(dom::Observer const& observer) {
    void* block = du::CommonAllocatorImpl::Allocate(sizeof(dom::ObserverProxy), nullptr);
    return du::SmartPtr<dom::ObserverProxy>(new (block) dom::ObserverProxy(observer));
}

// Appends "<tag><id>:<value>" to a log shared by several observers, so that the order across
// observers shows.
class Recorder : public dom::Observer {
public:
    Recorder(std::string tag, std::vector<std::string>* log) : tag_(std::move(tag)), log_(log) {}
    ~Recorder() override { DetachFromMessageLoop(); }

    void EventHandler(dom::MessageReader& reader) override {
        unsigned char id = 0;
        unsigned int value = 0;
        reader.GetUInt8Value(id);
        reader.GetUInt32Value(value);
        if (id == 99) {
            throw std::runtime_error("bad payload");
        }
        log_->push_back(tag_ + std::to_string(id) + ":" + std::to_string(value));
    }

private:
    std::string tag_;
    std::vector<std::string>* log_;
};

class MessageLoopTest : public ::testing::Test {
protected:
    void SetUp() override {
        Messages::DiscardPending();
        Messages::TakeHandlerErrors();
    }
    void TearDown() override {
        Messages::StopDispatcher();
        Messages::DiscardPending();
    }

    void Post(unsigned char id, unsigned int value) {
        observable_.PostEvent(qzk::Observable::UInt32Event(id, value));
    }

    dom::Observable observable_;
};

TEST_F(MessageLoopTest, DeliversInPostingOrderAndNeverInsideThePost) {
    std::vector<std::string> log;
    Recorder a("a", &log);
    Recorder b("b", &log);
    ASSERT_TRUE(observable_.AddObserver(a, MakeProxy(a)));
    ASSERT_TRUE(observable_.AddObserver(b, MakeProxy(b)));
    EXPECT_FALSE(observable_.AddObserver(a, MakeProxy(a)));

    Post(20, 1);
    Post(21, 2);
    EXPECT_TRUE(log.empty());
    EXPECT_EQ(Messages::GetPendingCount(), 4u);

    EXPECT_TRUE(Messages::PumpOne());
    EXPECT_EQ(log, (std::vector<std::string>{"a20:1"}));
    EXPECT_EQ(Messages::PumpUntilIdle(), 3u);
    EXPECT_EQ(log, (std::vector<std::string>{"a20:1", "b20:1", "a21:2", "b21:2"}));
    EXPECT_FALSE(Messages::PumpOne());
}

// The queue is a ring that grows: a growth while its oldest message sits in the middle of the
// ring must keep the order, and so must the pending count.
TEST_F(MessageLoopTest, OrderHoldsWhenTheQueueGrowsWhileItWrapsAround) {
    std::vector<std::string> log;
    Recorder a("a", &log);
    ASSERT_TRUE(observable_.AddObserver(a, MakeProxy(a)));
    std::vector<std::string> expected;
    unsigned int next = 0;
    auto post = [&](int count) {
        for (int i = 0; i < count; ++i) {
            Post(20, ++next);
            expected.push_back("a20:" + std::to_string(next));
        }
    };
    post(12);
    for (int i = 0; i < 9; ++i) {
        ASSERT_TRUE(Messages::PumpOne());
    }
    post(40);
    EXPECT_EQ(Messages::GetPendingCount(), 43u);
    post(100);
    EXPECT_EQ(Messages::PumpUntilIdle(), 143u);
    EXPECT_EQ(log, expected);
}

TEST_F(MessageLoopTest, MessageForAnObserverThatHasGoneIsDropped) {
    std::vector<std::string> log;
    Recorder stays("s", &log);
    observable_.AddObserver(stays, MakeProxy(stays));
    std::size_t const droppedBefore = Messages::GetDroppedCount();
    {
        Recorder gone("g", &log);
        observable_.AddObserver(gone, MakeProxy(gone));
        Post(20, 7);
        observable_.RemoveObserver(gone);
    }
    Messages::PumpUntilIdle();
    EXPECT_EQ(log, (std::vector<std::string>{"s20:7"}));
    EXPECT_EQ(Messages::GetDroppedCount(), droppedBefore + 1);
}

TEST_F(MessageLoopTest, HandlerExceptionIsKeptAndTheLoopGoesOn) {
    std::vector<std::string> log;
    Recorder a("a", &log);
    observable_.AddObserver(a, MakeProxy(a));
    Post(99, 0);
    Post(20, 3);
    EXPECT_EQ(Messages::PumpUntilIdle(), 2u);
    EXPECT_EQ(log, (std::vector<std::string>{"a20:3"}));
    std::vector<std::string> errors = Messages::TakeHandlerErrors();
    ASSERT_EQ(errors.size(), 1u);
    EXPECT_NE(errors[0].find("Recorder"), std::string::npos) << errors[0];
    EXPECT_NE(errors[0].find("bad payload"), std::string::npos) << errors[0];
    EXPECT_TRUE(Messages::TakeHandlerErrors().empty());
}

// A message's storage serves post after post: a handler reads only what was posted, and the
// objects a message carried go once it has been delivered, not when its storage is next used.
class Token : public du::CommonAllocated, public du::RefCounted {
public:
    explicit Token(bool* gone) : gone_(gone) {}
    ~Token() override { *gone_ = true; }

private:
    bool* gone_;
};

class TextEvent : public dom::ObservableEvent {
public:
    TextEvent(std::string text, du::SmartPtr<du::RefCounted> object)
        : text_(std::move(text)), object_(std::move(object)) {}
    void Post(dom::ObserverProxy* proxy) const override {
        proxy->PushUInt8Value(30);
        proxy->PushStringValue(text_);
        if (object_) {
            proxy->PushObjectValue(object_);
        }
    }

private:
    std::string text_;
    du::SmartPtr<du::RefCounted> object_;
};

class TextReader : public dom::Observer {
public:
    ~TextReader() override { DetachFromMessageLoop(); }
    void EventHandler(dom::MessageReader& reader) override {
        unsigned char id = 0;
        std::string text;
        du::SmartPtr<du::RefCounted> object;
        reader.GetUInt8Value(id);
        reader.GetStringValue(text);
        bool const hasObject = reader.GetObjectValue(object);
        seen.push_back(text + (hasObject ? "+object" : "") + (reader.AtEnd() ? "" : "+more"));
    }
    std::vector<std::string> seen;
};

TEST_F(MessageLoopTest, ReusedMessagesCarryOnlyWhatWasPostedAndLetTheirObjectsGo) {
    TextReader reader;
    ASSERT_TRUE(observable_.AddObserver(reader, MakeProxy(reader)));
    std::vector<std::string> expected;
    for (int round = 0; round < 6; ++round) {
        bool const withObject = round % 2 == 0;
        std::string const text = withObject ? std::string(1000, 'x') : "short";
        bool gone = false;
        {
            du::SmartPtr<du::RefCounted> token;
            if (withObject) {
                void* block = du::CommonAllocatorImpl::Allocate(sizeof(Token), nullptr);
                token = du::SmartPtr<du::RefCounted>(new (block) Token(&gone));
            }
            observable_.PostEvent(TextEvent(text, token));
        }
        EXPECT_FALSE(gone) << "the queued message holds its object";
        ASSERT_TRUE(Messages::PumpOne());
        EXPECT_EQ(gone, withObject) << "round " << round;
        expected.push_back(withObject ? text + "+object" : text);
    }
    EXPECT_EQ(reader.seen, expected);
}

// A counted observer that lets go of the last reference to itself in its own handler, as a load
// event does when the scene drops it on completion, then goes on using its members.
class SelfReleasing : public dom::Observer {
public:
    SelfReleasing(du::SmartPtr<SelfReleasing>* holder, bool* destroyedAfterHandler)
        : holder_(holder), destroyedAfterHandler_(destroyedAfterHandler) {}
    ~SelfReleasing() override {
        DetachFromMessageLoop();
        *destroyedAfterHandler_ = handlerDone_;
    }
    void EventHandler(dom::MessageReader& /*reader*/) override {
        *holder_ = nullptr;
        handlerDone_ = true;
    }

private:
    du::SmartPtr<SelfReleasing>* holder_;
    bool* destroyedAfterHandler_;
    bool handlerDone_ = false;
};

TEST_F(MessageLoopTest, ObserverReleasedInsideItsDeliveryLivesToTheEndOfIt) {
    bool destroyedAfterHandler = false;
    du::SmartPtr<SelfReleasing> holder;
    holder = du::SmartPtr<SelfReleasing>(new SelfReleasing(&holder, &destroyedAfterHandler));
    observable_.AddObserver(*holder, MakeProxy(*holder));
    Post(20, 0);
    observable_.RemoveAllObservers();
    Messages::PumpUntilIdle();
    EXPECT_TRUE(holder.IsNull());
    EXPECT_TRUE(destroyedAfterHandler);
}

// Blocks in its handler until told to go on, so a test can end it mid-delivery.
class SlowObserver : public dom::Observer {
public:
    SlowObserver(std::atomic<bool>* entered, std::atomic<bool>* finished)
        : entered_(entered), finished_(finished) {}
    ~SlowObserver() override { DetachFromMessageLoop(); }
    void EventHandler(dom::MessageReader& /*reader*/) override {
        entered_->store(true);
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        finished_->store(true);
    }

private:
    std::atomic<bool>* entered_;
    std::atomic<bool>* finished_;
};

TEST_F(MessageLoopTest, StackObserverEndingDuringADeliveryOnTheDispatcherWaitsForIt) {
    std::atomic<bool> entered{false};
    std::atomic<bool> finished{false};
    {
        SlowObserver observer(&entered, &finished);
        observable_.AddObserver(observer, MakeProxy(observer));
        ASSERT_TRUE(Messages::StartDispatcher());
        EXPECT_FALSE(Messages::StartDispatcher());
        Post(20, 0);
        while (!entered.load()) {
            std::this_thread::yield();
        }
        observable_.RemoveObserver(observer);
    }
    EXPECT_TRUE(finished.load());
    EXPECT_TRUE(Messages::StopDispatcher());
    EXPECT_FALSE(Messages::IsDispatcherRunning());
}

TEST_F(MessageLoopTest, DispatcherDeliversInOrderOnItsOwnThread) {
    class ThreadRecorder : public dom::Observer {
    public:
        ~ThreadRecorder() override { DetachFromMessageLoop(); }
        void EventHandler(dom::MessageReader& reader) override {
            unsigned char id = 0;
            unsigned int value = 0;
            reader.GetUInt8Value(id);
            reader.GetUInt32Value(value);
            std::lock_guard lock(mutex);
            values.push_back(value);
            threads.push_back(std::this_thread::get_id());
        }
        std::mutex mutex;
        std::vector<unsigned int> values;
        std::vector<std::thread::id> threads;
    } observer;
    observable_.AddObserver(observer, MakeProxy(observer));
    Messages::StartDispatcher();
    for (unsigned int i = 0; i < 200; ++i) {
        Post(20, i);
    }
    for (int spin = 0; spin < 5000 && Messages::GetPendingCount() != 0; ++spin) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    // Pumping while the dispatcher runs waits for the delivery in progress.
    Messages::PumpUntilIdle();
    Messages::StopDispatcher();
    std::lock_guard lock(observer.mutex);
    ASSERT_EQ(observer.values.size(), 200u);
    for (unsigned int i = 0; i < 200; ++i) {
        EXPECT_EQ(observer.values[i], i);
    }
    EXPECT_NE(observer.threads.front(), std::this_thread::get_id());
}

TEST(MessageReader, ReadsOnlyAValueOfTheKindAndWidthAskedForAndConsumesNothingOnFailure) {
    dom::ObserverProxy writer;
    writer.Begin();
    writer.PushUInt16Value(7);
    writer.PushUInt32Value(0xFFFFFFFFu);
    writer.PushStringValue("text");
    writer.PushBooleanValue(true);
    writer.PushUInt8Value(200);
    writer.End();
    dom::MessageData message = writer.TakeMessage();
    dom::MessageReader reader(message);

    unsigned int word = 1;
    unsigned short half = 0;
    EXPECT_FALSE(reader.GetUInt32Value(word));
    EXPECT_EQ(word, 1u);
    EXPECT_TRUE(reader.GetUInt16Value(half));
    EXPECT_EQ(half, 7);
    int signedWord = 0;
    EXPECT_FALSE(reader.GetUInt16Value(half));
    EXPECT_TRUE(reader.GetInt32Value(signedWord));
    EXPECT_EQ(signedWord, -1);
    bool flag = false;
    EXPECT_FALSE(reader.GetBooleanValue(flag));
    std::string text;
    EXPECT_TRUE(reader.GetStringValue(text));
    EXPECT_EQ(text, "text");
    EXPECT_TRUE(reader.GetBooleanValue(flag));
    EXPECT_TRUE(flag);
    unsigned char byte = 0;
    EXPECT_TRUE(reader.GetUInt8Value(byte));
    EXPECT_EQ(byte, 200);
    EXPECT_TRUE(reader.AtEnd());
    EXPECT_FALSE(reader.GetUInt8Value(byte));
    EXPECT_FALSE(reader.GetStringValue(text));
}

TEST(MessageReader, TruncatedStringIsRefused) {
    dom::ObserverProxy writer;
    writer.Begin();
    writer.PushStringValue("abcdef");
    writer.End();
    dom::MessageData message = writer.TakeMessage();
    message.bytes.resize(message.bytes.size() - 2);
    dom::MessageReader reader(message);
    std::string text = "kept";
    EXPECT_FALSE(reader.GetStringValue(text));
    EXPECT_EQ(text, "kept");
}

TEST(ObserverProxy, ProxiesComeFromTheCommonHeapAndGoBackToIt) {
    uint64 const before = du::CommonAllocatorImpl::GetLiveBlockCount();
    {
        std::vector<std::string> log;
        Recorder observer("r", &log);
        du::SmartPtr<dom::ObserverProxy> proxy = MakeProxy(observer);
        EXPECT_EQ(du::CommonAllocatorImpl::GetLiveBlockCount(), before + 1);
        EXPECT_EQ(proxy->GetObserverHandle(), observer.GetMessageHandle());
    }
    EXPECT_EQ(du::CommonAllocatorImpl::GetLiveBlockCount(), before);
}

} // namespace
