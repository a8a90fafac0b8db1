// A second LoadEcadDesign on the same scene while the first load is still out: both completions
// reach a live scene, and neither reaches one that has ended.
#include "design/SceneHarness.h"

namespace qztest {
namespace {

using qzref::Journal;
using qzref::LoaderControl;
using qzref::Messages;

class SecondLoadTest : public SceneTest {};

TEST_F(SecondLoadTest, FormerLoadStillReachesALiveScene) {
    LoaderControl::SetHolding(true);
    auto live = MakeBoard(Example("four-layer-board.json"));
    ASSERT_TRUE(live);
    Api(live)->LoadEcadDesign();
    ASSERT_EQ(LoaderControl::GetHeldCount(), 2U);

    // The former load completes first, failing: the scene hears it although it holds the
    // second event now.
    du::SmartPtr<RecordingObserver> observer(new RecordingObserver());
    ASSERT_TRUE(Api(live)->RegisterObserver(*observer));
    ASSERT_TRUE(LoaderControl::CompleteHeld(1, -5, 5, du::Symbol("first")));
    Messages::PumpUntilIdle();
    EXPECT_EQ(observer->Take(), (std::vector<std::string>{"DesignLoaded 5 \"first\""}));
    EXPECT_FALSE(Api(live)->_IsLoadInProgress());
    EXPECT_FALSE(Api(live)->IsDesignLoaded());

    // The second is read for real and brings the design.
    LoaderControl::ReleaseHeld();
    Settle();
    EXPECT_TRUE(Api(live)->IsDesignLoaded());
    EXPECT_EQ(observer->Calls().front(), "DesignLoaded 0 \"\"");
}

TEST_F(SecondLoadTest, NeitherLoadReachesASceneThatEndedWithBothOut) {
    LoaderControl::SetHolding(true);
    // The scene's memory comes back although both late completions still point its way.
    std::uint64_t const before = qzk::MemoryPoolAllocated::GetLiveBlockCount();
    {
        auto ended = MakeBoard(Example("six-layer-board.json"));
        ASSERT_TRUE(ended);
        Api(ended)->LoadEcadDesign();
        ASSERT_EQ(LoaderControl::GetHeldCount(), 2U);
        End(ended);
        Messages::PumpUntilIdle();

        std::size_t const mark = Journal::Size();
        ASSERT_TRUE(LoaderControl::CompleteHeld(0));
        ASSERT_TRUE(LoaderControl::CompleteHeld(1, -8, 2, du::Symbol("second")));
        Messages::PumpUntilIdle();
        EXPECT_TRUE(Journal::Since(mark).empty());
        EXPECT_TRUE(Messages::TakeHandlerErrors().empty());
    }
    Messages::PumpUntilIdle();
    EXPECT_EQ(qzk::MemoryPoolAllocated::GetLiveBlockCount(), before);
}

} // namespace
} // namespace qztest
