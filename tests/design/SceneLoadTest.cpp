// Loading the design of a one-design scene: in memory, through the loader, failing, newer
// files, and a scene that ends while its load runs.
#include "design/SceneHarness.h"

#include "qzk/ecad/EcadDesignData.h"
#include "qzref/Inspect.h"

namespace qztest {
namespace {

using qzref::Journal;
using qzref::LoaderControl;
using qzref::Messages;

class SceneLoadTest : public SceneTest {};

TEST_F(SceneLoadTest, DesignInMemoryIsTakenOverInsideInitBeforeAnyoneListens) {
    auto first = MakeBoard(Example("four-layer-board.json"));
    Settle();
    ASSERT_TRUE(Api(first)->IsDesignLoaded());

    std::size_t const mark = Journal::Size();
    auto second = MakeBoard(Example("four-layer-board.json"));
    std::vector<std::string> const lines = Journal::Since(mark);
    // Taken over inside CreateScene: no load asked, the notice posted, the design finished.
    EXPECT_FALSE(Contains(lines, "Loader.LoadEcadDesign"));
    EXPECT_TRUE(Contains(lines, ".PostObservableEvent(" + std::to_string(DesignLoadedId()) + ")"));
    EXPECT_TRUE(Contains(lines, ".FinishDesignLoad()"));
    EXPECT_TRUE(Api(second)->IsDesignLoaded());
    EXPECT_FALSE(Api(second)->_IsLoadInProgress());
    EXPECT_TRUE(qzref::Inspect(*second).IsDesignLoadedFlag());

    // The notice reached nobody; a new observer is brought up to date instead, once.
    du::SmartPtr<RecordingObserver> observer(new RecordingObserver());
    ASSERT_TRUE(Api(second)->RegisterObserver(*observer));
    Messages::PumpUntilIdle();
    EXPECT_EQ(observer->Calls(), (std::vector<std::string>{"DesignLoaded 0 \"\"", "DrawOrder"}));
}

TEST_F(SceneLoadTest, StatesThroughASuccessfulLoadAndTheOrderOfItsEvents) {
    LoaderControl::SetHolding(true);
    auto scene = MakeBoard(Example("four-layer-board.json"));
    auto* api = Api(scene);
    ASSERT_NE(api, nullptr);
    EXPECT_TRUE(api->_IsLoadInProgress());
    EXPECT_FALSE(api->IsDesignLoaded());
    EXPECT_EQ(api->GetIcmApiEcad(), nullptr);
    EXPECT_FALSE(qzref::Inspect(*scene).IsDesignLoadedFlag());

    // Registered during the load: no replay, and told of the end like everyone else.
    std::size_t const mark = Journal::Size();
    du::SmartPtr<RecordingObserver> observer(new RecordingObserver());
    ASSERT_TRUE(api->RegisterObserver(*observer));
    EXPECT_TRUE(Contains(Journal::Since(mark), "RecordingObserver, false)"));
    Messages::PumpUntilIdle();
    EXPECT_TRUE(observer->Calls().empty());

    std::size_t const loadMark = Journal::Size();
    LoaderControl::ReleaseHeld();
    Settle();
    EXPECT_FALSE(api->_IsLoadInProgress());
    ASSERT_TRUE(api->IsDesignLoaded());
    ASSERT_NE(api->GetIcmApiEcad(), nullptr);
    EXPECT_EQ(api->GetIcmApiEcad(), api->GetDesignData()->GetIcmApiEcad());
    EXPECT_TRUE(qzref::Inspect(*scene).IsDesignLoadedFlag());
    // Told first, then the draw order and the colours that follow from the design.
    EXPECT_EQ(observer->Calls(),
              (std::vector<std::string>{"DesignLoaded 0 \"\"", "DrawOrder", "SublayerCV 1"}));
    std::vector<std::string> const lines = Journal::Since(loadMark);
    long const posted =
        IndexOf(lines, ".PostObservableEvent(" + std::to_string(DesignLoadedId()) + ")");
    long const drawOrder = IndexOf(lines, ".SetDrawOrder(");
    long const colours = IndexOf(lines, ".SetColorVisInfo(");
    long const finished = IndexOf(lines, ".FinishDesignLoad()");
    ASSERT_GE(posted, 0);
    EXPECT_LT(posted, drawOrder);
    EXPECT_LT(drawOrder, colours);
    EXPECT_LT(colours, finished);
    EXPECT_EQ(qzref::Inspect(*scene).GetDrawOrder(), (std::vector<short>{1, 2, 3, 4, 5, -2}));
    EXPECT_FALSE(Contains(lines, "PostNewerFile"));
}

TEST_F(SceneLoadTest, FailedLoadIsToldToALateObserverWithoutDrawOrder) {
    LoaderControl::SetHolding(true);
    auto scene = MakeBoard(Example("four-layer-board.json"));
    du::SmartPtr<RecordingObserver> early(new RecordingObserver());
    ASSERT_TRUE(Api(scene)->RegisterObserver(*early));
    std::size_t const mark = Journal::Size();
    ASSERT_TRUE(LoaderControl::CompleteHeld(1, -5, 5, du::Symbol("broken file")));
    Messages::PumpUntilIdle();
    EXPECT_EQ(early->Calls(), (std::vector<std::string>{"DesignLoaded 5 \"broken file\""}));

    du::SmartPtr<RecordingObserver> late(new RecordingObserver());
    ASSERT_TRUE(Api(scene)->RegisterObserver(*late));
    Messages::PumpUntilIdle();
    EXPECT_EQ(late->Calls(), (std::vector<std::string>{"DesignLoaded 5 \"broken file\""}));

    EXPECT_FALSE(Api(scene)->IsDesignLoaded());
    EXPECT_FALSE(Api(scene)->_IsLoadInProgress());
    EXPECT_EQ(Api(scene)->GetIcmApiEcad(), nullptr);
    std::vector<std::string> const lines = Journal::Since(mark);
    EXPECT_FALSE(Contains(lines, ".FinishDesignLoad()"));
    EXPECT_FALSE(Contains(lines, ".SetDrawOrder("));
    EXPECT_FALSE(Contains(lines, "PostNewerFile"));
}

TEST_F(SceneLoadTest, NewerFilesAreReportedOnBothPaths) {
    std::size_t const mark = Journal::Size();
    auto readable = MakeBoard(Example("newer-readable-board.json"));
    du::SmartPtr<RecordingObserver> observer(new RecordingObserver());
    Settle();
    std::vector<std::string> lines = Journal::Since(mark);
    long const warning = IndexOf(lines, ".PostNewerFileWarning(\"");
    long const posted =
        IndexOf(lines, ".PostObservableEvent(" + std::to_string(DesignLoadedId()) + ")");
    ASSERT_GE(warning, 0);
    EXPECT_LT(warning, posted);
    EXPECT_NE(lines[warning].find("newer-readable-board.json"), std::string::npos);
    EXPECT_FALSE(Contains(lines, "PostNewerFileError"));
    EXPECT_TRUE(Api(readable)->IsDesignLoaded());
    ASSERT_TRUE(Api(readable)->RegisterObserver(*observer));
    EXPECT_EQ(observer->Take(), (std::vector<std::string>{"DesignLoaded 0 \"\"", "DrawOrder"}));

    std::size_t const failMark = Journal::Size();
    auto unreadable = MakeBoard(Example("newer-unreadable-board.json"));
    Settle();
    lines = Journal::Since(failMark);
    long const error = IndexOf(lines, ".PostNewerFileError(\"");
    ASSERT_GE(error, 0);
    EXPECT_NE(lines[error].find("newer-unreadable-board.json"), std::string::npos);
    EXPECT_LT(error,
              IndexOf(lines, ".PostObservableEvent(" + std::to_string(DesignLoadedId()) + ")"));
    EXPECT_FALSE(Api(unreadable)->IsDesignLoaded());
    du::SmartPtr<RecordingObserver> late(new RecordingObserver());
    ASSERT_TRUE(Api(unreadable)->RegisterObserver(*late));
    std::vector<std::string> const calls = late->Calls();
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_EQ(calls[0].rfind("DesignLoaded 8 \"", 0), 0u) << calls[0];
}

TEST_F(SceneLoadTest, OtherResultsOnAHeldLoadMakeNoNewerFileCall) {
    LoaderControl::SetHolding(true);
    MakeBoard(Example("four-layer-board.json"));
    std::size_t const mark = Journal::Size();
    ASSERT_TRUE(LoaderControl::CompleteHeld(1, -7, 7, du::Symbol("unreadable")));
    Messages::PumpUntilIdle();
    EXPECT_FALSE(Contains(Journal::Since(mark), "PostNewerFile"));
}

// A scene that ended during its load must not be reached by the load's late completion.
TEST_F(SceneLoadTest, SceneEndedDuringItsLoadIgnoresTheLateCompletionAndLeavesNothing) {
    std::uint64_t const before = qzk::MemoryPoolAllocated::GetLiveBlockCount();
    LoaderControl::SetHolding(true);
    {
        auto scene = MakeBoard(Example("four-layer-board.json"));
        du::SmartPtr<RecordingObserver> observer(new RecordingObserver());
        ASSERT_TRUE(Api(scene)->RegisterObserver(*observer));
        End(scene);
        Messages::PumpUntilIdle();
        EXPECT_EQ(observer->Take(), (std::vector<std::string>{"Detach"}));
        EXPECT_EQ(scene->GetApiScene(), nullptr);

        std::size_t const mark = Journal::Size();
        ASSERT_TRUE(LoaderControl::CompleteHeld(0));
        Messages::PumpUntilIdle();
        EXPECT_TRUE(Journal::Since(mark).empty());
        EXPECT_TRUE(observer->Calls().empty());
        EXPECT_TRUE(Messages::TakeHandlerErrors().empty());
    }
    Messages::PumpUntilIdle();
    EXPECT_EQ(qzk::MemoryPoolAllocated::GetLiveBlockCount(), before);
}

TEST_F(SceneLoadTest, LoadedSceneThatEndsGivesBackItsMemory) {
    std::uint64_t const before = qzk::MemoryPoolAllocated::GetLiveBlockCount();
    {
        auto scene = MakeBoard(Example("four-layer-board.json"));
        du::SmartPtr<RecordingObserver> observer(new RecordingObserver());
        ASSERT_TRUE(Api(scene)->RegisterObserver(*observer));
        Settle();
        ASSERT_TRUE(Api(scene)->IsDesignLoaded());
        End(scene);
        Messages::PumpUntilIdle();
    }
    Messages::PumpUntilIdle();
    EXPECT_EQ(qzk::MemoryPoolAllocated::GetLiveBlockCount(), before);
}

} // namespace
} // namespace qztest
