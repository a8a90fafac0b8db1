// The design loader and its events: reading, failures, newer versions, progress, cancelling and
// completing held loads by hand.
#include "qzloader/Loader.h"
#include "qzk/EcadDesign.h"
#include "qzk/Kernel.h"
#include "qzloader/EcadDesignLoaderEvent.h"
#include "qzref/Journal.h"
#include "qzref/LoaderControl.h"
#include "qzref/Messages.h"
#include "qzref/Platform.h"

#include <gtest/gtest.h>

#include "qzref/Inspect.h"
#include <string>
#include <thread>
#include <vector>

namespace {

using qzref::LoaderControl;
using qzref::Messages;

std::string Example(char const* name) {
    return std::string(QZ_EXAMPLES_DIR) + "/designs/" + name;
}

class RecordingLoadEvent : public qzloader::EcadDesignLoaderEvent {
public:
    ~RecordingLoadEvent() override { DetachFromMessageLoop(); }
    std::vector<int> completions;
    std::vector<unsigned char> progress;
    std::thread::id completedOn;

private:
    void OnProgress(unsigned char percent) override { progress.push_back(percent); }
    void OnCompleted(int status) override {
        completions.push_back(status);
        completedOn = std::this_thread::get_id();
    }
};

class LoaderTest : public ::testing::Test {
protected:
    void SetUp() override { Messages::DiscardPending(); }
    void TearDown() override { LoaderControl::SetHolding(false); }

    // Starts a load the way a scene does: the event is handed to the kernel first.
    du::SmartPtr<RecordingLoadEvent> Load(du::SmartPtr<qzk::EcadDesign> const& design) {
        du::SmartPtr<RecordingLoadEvent> event(new RecordingLoadEvent());
        qzk::Kernel::GetKernel()->ManageObject(event);
        EXPECT_TRUE(qzloader::Loader::GetLoader()->LoadEcadDesign(design, event.Get()));
        return event;
    }

    static void Finish() {
        LoaderControl::WaitUntilIdle();
        Messages::PumpUntilIdle();
    }

    qzref::ScopedPlatform platform_;
};

TEST_F(LoaderTest, ReadDesignIsStoredAndTheCompletionIsDeliveredByTheLoop) {
    auto design = qzk::EcadDesign::FromFile(Example("four-layer-board.json"));
    std::size_t const mark = qzref::Journal::Size();
    auto event = Load(design);
    LoaderControl::WaitUntilIdle();
    EXPECT_TRUE(event->IsComplete());
    EXPECT_TRUE(event->completions.empty());
    Messages::PumpUntilIdle();

    EXPECT_EQ(event->completions, (std::vector<int>{0}));
    EXPECT_EQ(event->completedOn, std::this_thread::get_id());
    EXPECT_EQ(event->GetResult(), 0);
    EXPECT_TRUE(design->GetEcadDesignData());
    ASSERT_FALSE(event->progress.empty());
    EXPECT_EQ(event->progress.back(), 100);
    for (std::size_t i = 1; i < event->progress.size(); ++i) {
        EXPECT_LT(event->progress[i - 1], event->progress[i]);
    }
    std::vector<std::string> lines = qzref::Journal::Since(mark);
    ASSERT_GE(lines.size(), 2u);
    EXPECT_EQ(lines[1], "Loader.LoadEcadDesign(\"" + Example("four-layer-board.json") + "\")");
    // The kernel's part ends with the completion.
    EXPECT_FALSE(qzref::Inspect(*qzk::Kernel::GetKernel()).IsManaging(event.Get()));
}

TEST_F(LoaderTest, UnreadableFilesCompleteWithErrorNumberAndText) {
    auto truncated = qzk::EcadDesign::FromFile(Example("truncated-board.json"));
    auto missing = qzk::EcadDesign::FromFile(Example("no-such-board.json"));
    auto truncatedEvent = Load(truncated);
    auto missingEvent = Load(missing);
    Finish();

    EXPECT_EQ(truncatedEvent->completions, (std::vector<int>{1}));
    EXPECT_EQ(truncatedEvent->GetResult(), -3);
    EXPECT_EQ(truncatedEvent->GetErrorNumber(), 3);
    EXPECT_NE(truncatedEvent->GetErrorText().str().find("truncated-board.json"), std::string::npos);
    EXPECT_FALSE(truncated->GetEcadDesignData());
    EXPECT_EQ(missingEvent->completions, (std::vector<int>{1}));
    EXPECT_EQ(missingEvent->GetResult(), -1);
    EXPECT_EQ(missingEvent->GetErrorNumber(), 1);
}

TEST_F(LoaderTest, NewerVersionsReadOrRefusedCarryTheirResults) {
    auto readable = qzk::EcadDesign::FromFile(Example("newer-readable-board.json"));
    auto unreadable = qzk::EcadDesign::FromFile(Example("newer-unreadable-board.json"));
    auto readEvent = Load(readable);
    auto refusedEvent = Load(unreadable);
    Finish();

    EXPECT_EQ(readEvent->completions, (std::vector<int>{0}));
    EXPECT_EQ(readEvent->GetResult(), 3);
    EXPECT_TRUE(readable->GetEcadDesignData());
    EXPECT_EQ(refusedEvent->completions, (std::vector<int>{1}));
    EXPECT_EQ(refusedEvent->GetResult(), -8);
    EXPECT_EQ(refusedEvent->GetErrorNumber(), 8);
    EXPECT_FALSE(unreadable->GetEcadDesignData());
}

TEST_F(LoaderTest, HeldLoadCompletesByHandWithAnyStatusAndReadsNothing) {
    LoaderControl::SetHolding(true);
    auto design = qzk::EcadDesign::FromFile(Example("four-layer-board.json"));
    auto event = Load(design);
    EXPECT_EQ(LoaderControl::GetHeldCount(), 1u);
    EXPECT_EQ(LoaderControl::GetHeldUrl(), Example("four-layer-board.json"));
    Finish();
    EXPECT_FALSE(event->IsComplete());

    EXPECT_TRUE(LoaderControl::CompleteHeld(5, 42, 7, du::Symbol("by hand")));
    EXPECT_FALSE(LoaderControl::CompleteHeld(0));
    Messages::PumpUntilIdle();
    EXPECT_EQ(event->completions, (std::vector<int>{5}));
    EXPECT_EQ(event->GetResult(), 42);
    EXPECT_EQ(event->GetErrorNumber(), 7);
    EXPECT_EQ(event->GetErrorText(), du::Symbol("by hand"));
    EXPECT_FALSE(design->GetEcadDesignData());
}

TEST_F(LoaderTest, CancelledLoadCompletesOnceWithStatusTwoAndLeavesTheDesign) {
    LoaderControl::SetHolding(true);
    auto design = qzk::EcadDesign::FromFile(Example("four-layer-board.json"));
    auto event = Load(design);
    event->Cancel();
    EXPECT_TRUE(event->IsCanceled());
    LoaderControl::ReleaseHeld();
    Finish();
    // A completion after the cancel is ignored.
    event->Complete();
    Messages::PumpUntilIdle();

    EXPECT_EQ(event->completions, (std::vector<int>{2}));
    EXPECT_FALSE(design->GetEcadDesignData());
}

// The scene drops its loader event inside OnCompleted; the kernel has let go too, so the event's
// last reference goes inside its own delivery.
class SelfDroppingEvent : public qzloader::EcadDesignLoaderEvent {
public:
    SelfDroppingEvent(du::SmartPtr<SelfDroppingEvent>* holder, bool* completedBeforeEnd)
        : holder_(holder), completedBeforeEnd_(completedBeforeEnd) {}
    ~SelfDroppingEvent() override {
        DetachFromMessageLoop();
        *completedBeforeEnd_ = completed_;
    }

private:
    void OnCompleted(int /*status*/) override {
        *holder_ = nullptr;
        completed_ = true;
    }
    du::SmartPtr<SelfDroppingEvent>* holder_;
    bool* completedBeforeEnd_;
    bool completed_ = false;
};

TEST_F(LoaderTest, EventDroppedInItsOwnCompletionEndsAfterIt) {
    bool completedBeforeEnd = false;
    du::SmartPtr<SelfDroppingEvent> held;
    held = du::SmartPtr<SelfDroppingEvent>(new SelfDroppingEvent(&held, &completedBeforeEnd));
    qzk::Kernel::GetKernel()->ManageObject(held);
    held->Complete();
    Messages::PumpUntilIdle();
    EXPECT_TRUE(held.IsNull());
    EXPECT_TRUE(completedBeforeEnd);
}

TEST(LoaderWithoutPlatform, IsAbsent) {
    ASSERT_FALSE(qzref::Platform::IsRunning());
    EXPECT_FALSE(qzloader::Loader::GetLoader());
    EXPECT_FALSE(qzk::Kernel::GetKernel());
}

} // namespace
