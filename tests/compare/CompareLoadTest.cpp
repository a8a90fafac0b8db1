// Loading the two designs of a compare scene: in memory, through the loader in either order,
// one of them failing, newer files, a late observer, a scene that ends while it loads, and a
// saved comparison whose designs come later.
#include "compare/CompareHarness.h"

#include "qzref/AnnoSetTableEntryInspector.h"

namespace qztest {
namespace {

using qzref::Journal;
using qzref::LoaderControl;
using qzref::Messages;

std::string const kFour = Example("four-layer-board.json");
std::string const kSix = Example("six-layer-board.json");

long Count(std::vector<std::string> const& lines, std::string const& part) {
    return std::count_if(lines.begin(), lines.end(), [&](std::string const& line) {
        return line.find(part) != std::string::npos;
    });
}

class CompareLoadTest : public CompareTest {};

TEST_F(CompareLoadTest, DesignsInMemoryAreTakenOverInsideInitWithColoursOnTheSecond) {
    HoldInMemory(kFour, kSix);
    std::size_t const mark = Journal::Size();
    auto scene = MakeCompare(kFour, kSix);
    ASSERT_TRUE(scene);
    std::vector<std::string> const lines = Journal::Since(mark);
    EXPECT_FALSE(Contains(lines, "Loader.LoadEcadDesign"));
    ASSERT_EQ(Count(lines, LoadNotice()), 2);
    // Both notices within CreateScene, the draw order and the rows made once, between them.
    long const firstNotice = IndexOf(lines, LoadNotice());
    long const drawOrder = IndexOf(lines, ".SetDrawOrder(");
    long const rows = IndexOf(lines, ".SetColorVisInfo(");
    long const finishedSecond = IndexOf(lines, ".FinishDesignLoad(true)");
    EXPECT_LT(IndexOf(lines, ".FinishDesignLoad(false)"), firstNotice);
    EXPECT_LT(firstNotice, drawOrder);
    EXPECT_LT(drawOrder, rows);
    EXPECT_LT(rows, finishedSecond);
    EXPECT_EQ(Count(lines, ".SetDrawOrder("), 1);
    EXPECT_EQ(Count(lines, ".SetColorVisInfo("), 1);

    auto* api = Api(scene);
    EXPECT_TRUE(api->IsDesignLoaded());
    EXPECT_FALSE(api->_IsLoadInProgress());
    // No compare colours in the preferences: the kernel is told opaque black for all three,
    // before either design is taken over.
    for (char const* call :
         {".SetFirstItemColor(", ".SetSecondItemColor(", ".SetCommonItemColor("}) {
        long const told = IndexOf(lines, call);
        ASSERT_GE(told, 0) << call;
        EXPECT_LT(told, IndexOf(lines, ".FinishDesignLoad(false)"));
    }
    EXPECT_EQ(scene->GetSecondItemColor(), dg::Color(0.0f, 0.0f, 0.0f, 1.0f));
    EXPECT_EQ(api->GetBottomLayer(false), 2);
    EXPECT_EQ(api->GetTopLayer(false), 5);
    EXPECT_EQ(api->GetTopLayer(true), 7);
    EXPECT_EQ(api->GetSublayerLabel(6, 33, true), L"Power plane");
    EXPECT_EQ(api->GetSublayerLabel(6, 33, false), L"");
    // The union of both stacks, each handle once.
    EXPECT_EQ(qzref::Inspect(*scene).GetDrawOrder(), (std::vector<short>{1, 2, 3, 4, 5, 6, 7, -2}));

    // The notices reached nobody; a new observer is brought up to date once instead.
    auto observer = du::MakeCounted<CompareObserver>();
    ASSERT_TRUE(api->RegisterObserver(*observer));
    Messages::PumpUntilIdle();
    EXPECT_EQ(observer->Calls(),
              (std::vector<std::string>{"DesignLoaded first 0 \"\"", "DrawOrder"}));
}

TEST_F(CompareLoadTest, SecondDesignFirstThenTheFirstBringsTheColours) {
    // The second is in memory, the first goes to the loader and waits there.
    MakeBoard(kSix);
    Settle();
    LoaderControl::SetHolding(true);
    auto scene = MakeCompare(kFour, kSix);
    auto* api = Api(scene);
    EXPECT_TRUE(api->_IsLoadInProgress());
    EXPECT_FALSE(api->IsDesignLoaded());
    EXPECT_TRUE(api->GetSecondDesignData());
    EXPECT_FALSE(api->GetFirstDesignData());
    EXPECT_TRUE(ApiRows(scene).empty());
    EXPECT_EQ(LoaderControl::GetHeldUrl(), kFour);

    // Registered during the load: no replay, the notice later.
    auto observer = du::MakeCounted<CompareObserver>();
    ASSERT_TRUE(api->RegisterObserver(*observer));
    Messages::PumpUntilIdle();
    EXPECT_TRUE(observer->Calls().empty());

    std::size_t const mark = Journal::Size();
    LoaderControl::ReleaseHeld();
    Settle();
    EXPECT_TRUE(api->IsDesignLoaded());
    EXPECT_FALSE(api->_IsLoadInProgress());
    EXPECT_EQ(observer->Take(),
              (std::vector<std::string>{"DrawOrder", "SublayerCV 1", "DesignLoaded first 0 \"\""}));
    EXPECT_EQ(Count(Journal::Since(mark), ".SetColorVisInfo("), 1);
    EXPECT_FALSE(ApiRows(scene).empty());
    EXPECT_TRUE(qzref::Inspect(*scene).IsDesignFinished(false));
    EXPECT_TRUE(qzref::Inspect(*scene).IsDesignFinished(true));
}

TEST_F(CompareLoadTest, OneDesignFailingLeavesTheSceneWithoutColoursAndTheOtherLoads) {
    LoaderControl::SetHolding(true);
    auto scene = MakeCompare(kFour, kSix);
    auto* api = Api(scene);
    auto observer = du::MakeCounted<CompareObserver>();
    ASSERT_TRUE(api->RegisterObserver(*observer));
    ASSERT_EQ(LoaderControl::GetHeldCount(), 2u);

    std::size_t const mark = Journal::Size();
    ASSERT_TRUE(LoaderControl::CompleteHeld(1, -5, 5, du::Symbol("broken file")));
    Messages::PumpUntilIdle();
    // The second still loads.
    EXPECT_TRUE(api->_IsLoadInProgress());
    LoaderControl::ReleaseHeld();
    Settle();

    EXPECT_EQ(observer->Calls(), (std::vector<std::string>{"DesignLoaded first 5 \"broken file\"",
                                                           "DesignLoaded second 0 \"\""}));
    EXPECT_FALSE(api->IsDesignLoaded());
    EXPECT_FALSE(api->_IsLoadInProgress());
    EXPECT_FALSE(api->GetFirstDesignData());
    EXPECT_TRUE(api->GetSecondDesignData());
    std::vector<std::string> const lines = Journal::Since(mark);
    EXPECT_FALSE(Contains(lines, ".SetColorVisInfo("));
    EXPECT_FALSE(Contains(lines, ".SetDrawOrder("));
    EXPECT_FALSE(Contains(lines, "PostNewerFile"));
    EXPECT_TRUE(ApiRows(scene).empty());

    // A late observer hears nothing of a pair that isn't complete, not even the failure.
    auto late = du::MakeCounted<CompareObserver>();
    ASSERT_TRUE(api->RegisterObserver(*late));
    Messages::PumpUntilIdle();
    EXPECT_TRUE(late->Calls().empty());

    // A failed design can be loaded anew; the other is taken over again from memory.
    LoaderControl::SetHolding(false);
    api->LoadEcadDesign();
    Settle();
    EXPECT_TRUE(api->IsDesignLoaded());
    EXPECT_FALSE(ApiRows(scene).empty());
}

TEST_F(CompareLoadTest, NewerFilesAreReportedAheadOfTheirNotices) {
    std::size_t const mark = Journal::Size();
    auto scene =
        MakeCompare(Example("newer-readable-board.json"), Example("newer-unreadable-board.json"));
    auto observer = du::MakeCounted<CompareObserver>();
    ASSERT_TRUE(Api(scene)->RegisterObserver(*observer));
    Settle();
    std::vector<std::string> const lines = Journal::Since(mark);
    long const warning = IndexOf(lines, ".PostNewerFileWarning(\"");
    long const error = IndexOf(lines, ".PostNewerFileError(\"");
    ASSERT_GE(warning, 0);
    ASSERT_GE(error, 0);
    EXPECT_NE(lines[warning].find("newer-readable-board.json"), std::string::npos);
    EXPECT_NE(lines[error].find("newer-unreadable-board.json"), std::string::npos);
    // The warning comes with a success, the error with the failure: each ahead of its notice.
    long const firstNotice = IndexOf(lines, LoadNotice());
    ASSERT_GE(firstNotice, 0);
    EXPECT_LT(warning, firstNotice);
    EXPECT_LT(firstNotice, error);
    std::vector<std::string> const calls = observer->Calls();
    ASSERT_EQ(calls.size(), 2u);
    EXPECT_EQ(calls[0], "DesignLoaded first 0 \"\"");
    EXPECT_EQ(calls[1].rfind("DesignLoaded second 8 \"", 0), 0u) << calls[1];
}

TEST_F(CompareLoadTest, UnknownStatusAndLateCompletionsDoNothing) {
    LoaderControl::SetHolding(true);
    auto scene = MakeCompare(kFour, kSix);
    auto* api = Api(scene);
    auto observer = du::MakeCounted<CompareObserver>();
    ASSERT_TRUE(api->RegisterObserver(*observer));

    std::size_t const mark = Journal::Size();
    ASSERT_TRUE(LoaderControl::CompleteHeld(3));
    Messages::PumpUntilIdle();
    EXPECT_TRUE(observer->Calls().empty());
    EXPECT_TRUE(api->_IsLoadInProgress());
    EXPECT_FALSE(Contains(Journal::Since(mark), LoadNotice()));

    // The scene ends while the second load waits; its completion finds nothing.
    EndCompare(scene);
    Messages::PumpUntilIdle();
    EXPECT_EQ(observer->Take(), (std::vector<std::string>{"Detach"}));
    std::size_t const endMark = Journal::Size();
    ASSERT_TRUE(LoaderControl::CompleteHeld(0));
    Messages::PumpUntilIdle();
    EXPECT_TRUE(Journal::Since(endMark).empty());
    EXPECT_TRUE(observer->Calls().empty());
    EXPECT_TRUE(Messages::TakeHandlerErrors().empty());
}

TEST_F(CompareLoadTest, SavedComparisonWaitsForItsEntryAndGivesItsTicketBackOnceLoading) {
    auto entry = qzk::AnnoSetTableEntry::Create(du::Symbol("saved"));
    auto scene = MakeCompareFromEntry(entry);
    ASSERT_TRUE(scene);
    auto* api = Api(scene);
    EXPECT_EQ(api->GetClassType().GetId(), 164u);
    EXPECT_EQ(qzref::Inspect(*entry).GetOpenRequirements(), (std::vector<unsigned int>{1}));

    // Asked again while waiting: a second ticket, and the first stays open for good.
    api->LoadEcadDesign();
    EXPECT_EQ(qzref::Inspect(*entry).GetOpenRequirements(), (std::vector<unsigned int>{1, 2}));

    auto observer = du::MakeCounted<CompareObserver>();
    ASSERT_TRUE(api->RegisterObserver(*observer));
    qzref::Inspect(*entry).SetFirst(qzk::Instance::Create("first"),
                                    qzk::ViewableSource::Create(du::Symbol(kFour)));
    qzref::Inspect(*entry).SetSecond(qzk::Instance::Create("second"),
                                     qzk::ViewableSource::Create(du::Symbol(kFour)));
    qzref::Inspect(*entry).Complete();
    Settle();
    Settle();
    EXPECT_EQ(qzref::Inspect(*entry).GetCompletedRequirements(), (std::vector<unsigned int>{2}));
    EXPECT_EQ(qzref::Inspect(*entry).GetOpenRequirements(), (std::vector<unsigned int>{1}));
    EXPECT_TRUE(api->IsDesignLoaded());
    std::vector<std::string> const calls = observer->Calls();
    EXPECT_TRUE(Contains(calls, "DesignLoaded first 0"));
    EXPECT_TRUE(Contains(calls, "DesignLoaded second 0"));
    // The same board on both sides: every row is a pair.
    for (std::string const& row : ApiRows(scene)) {
        EXPECT_TRUE(IsPair(row)) << row;
    }
}

TEST_F(CompareLoadTest, FactoryKind159TellsGerberSourcesAndOverloadsApart) {
    auto factory = du::MakeCounted<qzkapp::ecad::SceneApiFactory>();
    auto world = qzk::World::GetWorld();
    auto source = [](std::string const& path) {
        return qzk::ViewableSource::Create(du::Symbol(path));
    };
    auto instance = qzk::Instance::Create("i");
    // A Gerber source on either side makes another scene (PCBOvlCompareSceneTest).
    EXPECT_FALSE(factory->CreateScene(world, instance, source(kFour), instance, source(kSix), 177));
    bool flag = true;
    EXPECT_FALSE(factory->CreateScene(world, instance, source(kFour), 159, flag));
    EXPECT_TRUE(flag);

    auto scene = MakeCompare(kFour, kSix);
    ASSERT_TRUE(scene);
    ASSERT_NE(Api(scene), nullptr);
    EXPECT_EQ(Api(scene)->GetClassType().GetId(), 164u);
}

} // namespace
} // namespace qztest
