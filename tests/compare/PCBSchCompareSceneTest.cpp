// The board-against-schematic compare scene: each side pointed at its design whichever comes
// first, each side's colours and events kept apart, isolation redrawing the board's views only,
// the board's switches and orientation, the schematic's sheets, and the observer's decoding.
#include "compare/PCBSchCompareHarness.h"

#include "IcmApiEcad.h"
#include "dg/DPoint3D.h"
#include "dom/MessageReader.h"
#include "dom/ObserverProxy.h"
#include "qzk/AnnoSetTableEntry.h"
#include "qzk/EcadDesign.h"
#include "qzk/OperationStep.h"
#include "qzk/ecad/EcadDesignData.h"
#include "qzk/ecad/PCBCompareView.h"
#include "qzk/ecad/PCBView.h"
#include "qzk/ecad/SchematicView.h"
#include "qzk/ecad/SelectionItem.h"
#include "qzk/ecad/SublayerPCB_CV.h"
#include "qzkapp/QzkApp.h"
#include "qzref/DesignFile.h"
#include "qzref/DesignObject.h"

#include <functional>
#include <stdexcept>

namespace qztest {
namespace {

using qzref::Journal;
using qzref::LoaderControl;
using qzref::Messages;

long Count(std::vector<std::string> const& lines, std::string const& part) {
    return std::count_if(lines.begin(), lines.end(), [&](std::string const& line) {
        return line.find(part) != std::string::npos;
    });
}

// The schematic's map as text, one "handle colour shown|hidden" entry each.
std::vector<std::string> SheetText(std::map<short, qzk::ecad::ColorVisInfo> const& map) {
    std::vector<std::string> out;
    out.reserve(map.size());
    for (auto const& [handle, info] : map) {
        out.push_back(std::to_string(handle) + " " + std::to_string(info.color) +
                      (info.visible ? " shown" : " hidden"));
    }
    return out;
}

// The parameter puts the board first.
class EitherOrderTest : public BoardSchematicTest, public ::testing::WithParamInterface<bool> {};

TEST_P(EitherOrderTest, EachSideReadsItsOwnDesignWhicheverComesFirst) {
    bool const boardFirst = GetParam();
    std::size_t const mark = Journal::Size();
    auto scene = MakeLoaded(boardFirst);
    ASSERT_TRUE(scene);
    auto* api = Api(scene);
    ASSERT_NE(api, nullptr);
    EXPECT_EQ(api->GetClassType().GetId(), 172u);
    EXPECT_EQ(api->IsFirstBoard(), boardFirst);
    EXPECT_EQ(Count(Journal::Since(mark), "._GetFirstType()"), 1);
    ASSERT_TRUE(api->IsDesignLoaded());

    auto const& board = boardFirst ? api->GetFirstDesignData() : api->GetSecondDesignData();
    auto const& schematic = boardFirst ? api->GetSecondDesignData() : api->GetFirstDesignData();
    EXPECT_EQ(api->GetPCBData(), board);
    EXPECT_EQ(api->GetSchData(), schematic);
    EXPECT_FALSE(board->IsSchematicData());
    EXPECT_TRUE(schematic->IsSchematicData());

    // The board's questions read the board, the schematic's the schematic.
    EXPECT_EQ(api->GetTopLayer(), 5);
    EXPECT_EQ(api->GetBottomLayer(), 2);
    EXPECT_EQ(std::wstring(api->GetLayerName(12)), L"Wires");
    EXPECT_FALSE(api->GetSublayerLabel(5, 33).empty());

    // Both sides' default colours and orders reached the kernel when the later design came.
    auto inspector = qzref::Inspect(*scene);
    qzk::ecad::SublayerPCB_CVSet boardSet;
    api->GetColorVisInfo(boardSet);
    EXPECT_FALSE(boardSet.empty());
    EXPECT_EQ(inspector.GetColorVisInfo().size(), boardSet.size());
    qzkapp::ecad::SchSceneHelper::SublayerMap sheetMap;
    api->GetSublayerColorVisInfo(sheetMap);
    EXPECT_EQ(sheetMap.size(), 10u);
    EXPECT_EQ(inspector.GetSublayerColorVisInfo().size(), sheetMap.size());

    std::vector<short> pcbDefault;
    api->GetPCBDefaultDrawOrder(pcbDefault);
    std::vector<short> schDefault;
    api->GetSchDefaultDrawOrder(schDefault);
    EXPECT_FALSE(pcbDefault.empty());
    EXPECT_FALSE(schDefault.empty());
    EXPECT_EQ(schDefault.front(), 12);
    EXPECT_EQ(PCBOrder(*api), pcbDefault);
    EXPECT_EQ(SchOrder(*api), schDefault);
    EXPECT_EQ(inspector.GetPCBDrawOrder(), pcbDefault);
    EXPECT_EQ(inspector.GetSchDrawOrder(), schDefault);
    EXPECT_FALSE(inspector.GetPCBDrawOrderFlag());

    // The schematic's three sheets: the third can be gone to.
    auto view = qzk::ecad::SchematicView::Create(*scene, 3);
    auto observer = du::MakeCounted<BoardSchematicObserver>();
    ASSERT_TRUE(api->RegisterObserver(*observer));
    Messages::PumpUntilIdle();
    EXPECT_EQ(observer->Take(),
              (std::vector<std::string>{"DesignLoaded first 0 \"\"", "DrawOrder"}));
    api->PageNav(2, du::SmartPtr<qzk::ecad::BaseView>(view));
    Messages::PumpUntilIdle();
    EXPECT_EQ(observer->Take(), (std::vector<std::string>{"Page 2"}));
    EXPECT_EQ(qzref::Inspect(*view).GetPage(), 2u);
    api->UnregisterObserver(*observer);
}

TEST_P(EitherOrderTest, IsolationRedrawsOnlyTheBoardsViewsAndUndoes) {
    bool const boardFirst = GetParam();
    auto scene = MakeLoaded(boardFirst);
    auto* api = Api(scene);
    ASSERT_TRUE(api->IsDesignLoaded());
    auto const& board = api->GetPCBData();
    auto item = du::SmartPtr<qzk::SelectionItem>(
        new qzk::ecad::SelectionItem(board, board->FindObject("U1", IcmApiEcad::COMPONENT), nullptr,
                                     nullptr, dg::DPoint3D(), 5, 0));
    qzref::UndoControl::Clear();
    std::size_t const mark = Journal::Size();
    api->Isolate({item}, NewOperation(scene));
    EXPECT_EQ(api->GetIsolateCount(), 1u);
    auto inspector = qzref::Inspect(*scene);
    EXPECT_EQ(inspector.GetIsolated().size(), 1u);
    ASSERT_TRUE(qzref::UndoControl::Undo());
    EXPECT_EQ(api->GetIsolateCount(), 0u);
    EXPECT_TRUE(inspector.GetIsolated().empty());

    std::vector<std::string> const lines = Journal::Since(mark);
    EXPECT_EQ(Count(lines, boardFirst ? ".SetFirstViewDirty()" : ".SetSecondViewDirty()"), 2);
    EXPECT_EQ(Count(lines, boardFirst ? ".SetSecondViewDirty()" : ".SetFirstViewDirty()"), 0);
    EXPECT_EQ(Count(lines, ".SetViewsDirty()"), 0);
    EXPECT_EQ(boardFirst ? inspector.GetFirstViewDirtyCount() : inspector.GetSecondViewDirtyCount(),
              2u);
}

INSTANTIATE_TEST_SUITE_P(BoardFirstOrSchematicFirst, EitherOrderTest, ::testing::Bool());

class PCBSchCompareSceneTest : public BoardSchematicTest {};

TEST_F(PCBSchCompareSceneTest, NeitherSideHasDataUntilItsOwnDesignHasLoaded) {
    LoaderControl::SetHolding(true);
    auto scene = Make(kSchematic, kBoard);
    ASSERT_TRUE(scene);
    auto* api = Api(scene);
    EXPECT_FALSE(api->IsFirstBoard());
    EXPECT_FALSE(api->GetPCBData());
    EXPECT_FALSE(api->GetSchData());
    // An observer that comes during the loads hears them by their notices, not by a replay.
    auto observer = du::MakeCounted<BoardSchematicObserver>();
    ASSERT_TRUE(api->RegisterObserver(*observer));
    ASSERT_EQ(LoaderControl::GetHeldCount(), 2u);
    EXPECT_EQ(LoaderControl::GetHeldUrl(), kSchematic);

    // The schematic alone: still no board, and the board's questions give their fall-backs.
    du::SmartPtr<qzk::EcadDesign> first;
    scene->GetFirstDesign(first);
    ASSERT_TRUE(first);
    first->SetEcadDesignData(qzref::ReadDesignFile(kSchematic).data);
    ASSERT_TRUE(LoaderControl::CompleteHeld(0));
    Messages::PumpUntilIdle();
    EXPECT_TRUE(api->GetSchData());
    EXPECT_FALSE(api->GetPCBData());
    EXPECT_TRUE(api->GetSublayerLabel(5, 33).empty());
    EXPECT_NE(api->GetTopLayer(), 5);

    LoaderControl::SetHolding(false);
    LoaderControl::ReleaseHeld();
    Settle();
    EXPECT_TRUE(api->GetPCBData());
    EXPECT_EQ(api->GetTopLayer(), 5);
    std::vector<std::string> const calls = observer->Take();
    EXPECT_EQ(calls.front(), "DesignLoaded first 0 \"\"");
    EXPECT_TRUE(Contains(calls, "DesignLoaded second 0 \"\""));
    EXPECT_TRUE(Contains(calls, "PCBSublayerCV 1"));
    EXPECT_TRUE(Contains(calls, "SchSublayerCV 1"));
}

TEST_F(PCBSchCompareSceneTest, EachColourFamilyReachesItsKernelCallAndItsOwnEvent) {
    auto scene = MakeLoaded(true);
    auto* api = Api(scene);
    auto observer = du::MakeCounted<BoardSchematicObserver>();
    ASSERT_TRUE(api->RegisterObserver(*observer));
    Messages::PumpUntilIdle();
    observer->Take();
    qzref::UndoControl::Clear();
    auto inspector = qzref::Inspect(*scene);

    qzk::ecad::SublayerPCB_CVSet const boardBefore = inspector.GetColorVisInfo();
    auto const sheetBefore = inspector.GetSublayerColorVisInfo();
    qzk::ecad::SublayerPCB_CVSet boardSet;
    api->GetColorVisInfo(boardSet);
    qzk::ecad::SublayerPCB_CV changed = *boardSet.begin();
    boardSet.erase(boardSet.begin());
    changed.color = 0x01123456;
    boardSet.insert(changed);
    qzkapp::ecad::SchSceneHelper::SublayerMap sheetMap;
    api->GetSublayerColorVisInfo(sheetMap);
    sheetMap[12].color = 0x01654321;

    std::size_t const mark = Journal::Size();
    auto op = NewOperation(scene);
    api->SetColorVisInfo(boardSet, op, qzkapp::ecad::ChangeSourceUndo);
    api->SetSublayerColorVisInfo(sheetMap, op, qzkapp::ecad::ChangeSourceOverlapColor);
    // Each form of the full setter hands on its own family and nothing else.
    qzk::ecad::GroupCVInfoSet groups(false);
    api->SetFullColorVisInfo(groups, boardSet, {}, {}, op, qzkapp::ecad::ChangeSourceScene);
    api->SetFullColorVisInfo(groups, {}, sheetMap, op, qzkapp::ecad::ChangeSourceScene);
    qzk::RecordOperation(op);
    Messages::PumpUntilIdle();
    EXPECT_EQ(observer->Take(), (std::vector<std::string>{"PCBSublayerCV 3", "SchSublayerCV 2",
                                                          "PCBSublayerCV 1", "SchSublayerCV 1"}));
    std::vector<std::string> const lines = Journal::Since(mark);
    EXPECT_EQ(Count(lines, ".SetColorVisInfo("), 2);
    EXPECT_EQ(Count(lines, ".SetSublayerColorVisInfo("), 2);
    EXPECT_EQ(Count(lines, "Group"), 0);
    EXPECT_EQ(Count(lines, "Image"), 0);
    EXPECT_EQ(inspector.GetSublayerColorVisInfo().at(12).color, 0x01654321u);
    EXPECT_EQ(inspector.GetColorVisInfo().find(changed)->color, 0x01123456u);

    // One undo puts both sides back as they were, last change first.
    ASSERT_TRUE(qzref::UndoControl::Undo());
    Messages::PumpUntilIdle();
    EXPECT_EQ(observer->Take(), (std::vector<std::string>{"SchSublayerCV 3", "PCBSublayerCV 3",
                                                          "SchSublayerCV 3", "PCBSublayerCV 3"}));
    EXPECT_EQ(SheetText(inspector.GetSublayerColorVisInfo()), SheetText(sheetBefore));
    EXPECT_EQ(qzk::ecad::SublayerPCB_CV::AreDifferent(inspector.GetColorVisInfo(), boardBefore),
              false);

    // The schematic's apply takes known handles only, and posts even when it took none.
    api->ApplySublayerColorVisInfo({{12, qzk::ecad::ColorVisInfo(0x01000001, false)},
                                    {99, qzk::ecad::ColorVisInfo(0x01000002, true)}},
                                   nullptr);
    api->ApplySublayerColorVisInfo({{99, qzk::ecad::ColorVisInfo(0x01000002, true)}}, nullptr);
    Messages::PumpUntilIdle();
    EXPECT_EQ(observer->Take(), (std::vector<std::string>{"SchSublayerCV 1", "SchSublayerCV 1"}));
    auto const applied = inspector.GetSublayerColorVisInfo();
    EXPECT_EQ(applied.count(99), 0u);
    EXPECT_EQ(applied.at(12).color, 0x01000001u);
    EXPECT_FALSE(applied.at(12).visible);
    api->UnregisterObserver(*observer);
}

TEST_F(PCBSchCompareSceneTest, SwitchesOrientationAndSheetsAreToldUnderTheFamilysIds) {
    auto scene = MakeLoaded(false);
    auto* api = Api(scene);
    auto observer = du::MakeCounted<BoardSchematicObserver>();
    ASSERT_TRUE(api->RegisterObserver(*observer));
    Messages::PumpUntilIdle();
    observer->Take();
    qzref::UndoControl::Clear();
    std::vector<short> const pcbBefore = PCBOrder(*api);
    std::vector<short> const schBefore = SchOrder(*api);

    std::size_t const mark = Journal::Size();
    api->SetHighlightOnlyVisible(true, qzkapp::ecad::ChangeSourceScene);
    api->SetHighlightOnlyVisible(true, qzkapp::ecad::ChangeSourceScene);
    api->SetIsolateOnlyVisible(true, qzkapp::ecad::ChangeSourceUndo);
    api->SetRotation(-90, nullptr, true);
    auto flip = NewOperation(scene);
    api->SetFlip(true, flip, true);
    qzk::RecordOperation(flip);
    auto view = qzk::ecad::SchematicView::Create(*scene, 3);
    api->PageNav(1, du::SmartPtr<qzk::ecad::BaseView>(view));
    Messages::PumpUntilIdle();
    EXPECT_EQ(observer->Take(), (std::vector<std::string>{
                                    "HighlightOnlyVisible true 1", "IsolateOnlyVisible true 3",
                                    "Rotation -90", "PcbDrawOrder", "Orientation 1", "Page 1"}));
    auto inspector = qzref::Inspect(*scene);
    EXPECT_TRUE(inspector.GetHighlightOnlyVisible());
    EXPECT_TRUE(inspector.GetIsolateOnlyVisible());
    // The flip turned the board's list alone, and its operation holds no step of the list's.
    std::vector<short> reversed(pcbBefore.rbegin(), pcbBefore.rend());
    EXPECT_EQ(PCBOrder(*api), reversed);
    EXPECT_EQ(SchOrder(*api), schBefore);
    EXPECT_TRUE(api->GetInvertLayers());
    EXPECT_EQ(flip->GetSteps().size(), 1u);
    // A sheet change of this scene leaves the crosshair alone.
    EXPECT_EQ(Count(Journal::Since(mark), "SetCrosshairVisibility"), 0);

    ASSERT_TRUE(qzref::UndoControl::Undo());
    EXPECT_EQ(PCBOrder(*api), pcbBefore);
    EXPECT_FALSE(api->GetFlip());
    EXPECT_FALSE(api->GetInvertLayers());
    api->UnregisterObserver(*observer);
}

TEST_F(PCBSchCompareSceneTest, ViewsOfEitherSideGetTheirObserverAndOtherViewsNone) {
    auto scene = MakeLoaded(true);
    auto factory = du::MakeCounted<qzkapp::ecad::SceneApiFactory>();
    auto board = qzk::ecad::PCBView::Create(*scene, 1);
    auto sheets = qzk::ecad::SchematicView::Create(*scene, 3);
    auto other = qzk::ecad::PCBCompareView::Create(*scene, 1);
    for (du::SmartPtr<qzk::View> const& view :
         {du::SmartPtr<qzk::View>(board), du::SmartPtr<qzk::View>(sheets),
          du::SmartPtr<qzk::View>(other)}) {
        factory->ViewCreated(du::SmartPtr<qzk::Scene>(scene), view);
    }
    auto manager = qzkapp::QzkApp::Get()->GetSceneManager();
    auto activated = [&](qzk::View2D& view) {
        qzref::Inspect(*manager).Reset();
        qzref::Inspect(view).NotifyActivate();
        Messages::PumpUntilIdle();
        return qzref::Inspect(*manager).GetActiveView().Get() == &view;
    };
    EXPECT_TRUE(activated(*board));
    EXPECT_TRUE(activated(*sheets));
    EXPECT_FALSE(activated(*other));
    // Unlike a schematic scene's, a new view is not fitted.
    EXPECT_EQ(qzref::Inspect(*sheets).GetFitCount(), 0u);
}

TEST_F(PCBSchCompareSceneTest, SavedComparisonOfKind171IsThisScene) {
    auto factory = du::MakeCounted<qzkapp::ecad::SceneApiFactory>();
    auto entry = qzk::AnnoSetTableEntry::Create(du::Symbol("saved board and schematic"));
    auto made = factory->CreateScene(qzk::World::GetWorld(), entry, 171);
    auto scene = du::DynamicCast<qzk::ecad::PCBSchCompareScene>(made);
    ASSERT_TRUE(scene);
    compares_.push_back(scene);
    ASSERT_NE(Api(scene), nullptr);
    EXPECT_EQ(Api(scene)->GetClassType().GetId(), 172u);
    EXPECT_FALSE(Api(scene)->IsDesignLoaded());
}

// Builds one message with the id consumed, as the kernel's EventHandler leaves it.
dom::MessageData Message(std::function<void(dom::ObserverProxy&)> const& push) {
    dom::ObserverProxy proxy;
    proxy.Begin();
    push(proxy);
    proxy.End();
    return proxy.TakeMessage();
}

std::string ErrorOf(BoardSchematicObserver& observer, unsigned char tag) {
    auto empty = Message([](dom::ObserverProxy&) {});
    dom::MessageReader reader(empty);
    try {
        observer.HandleEvent(tag, reader);
    } catch (std::runtime_error const& e) {
        return e.what();
    }
    return "no error";
}

TEST(PCBSchCompareObserverDecoding, TagsDecodeInTheirOwnOrderAndFailWithTheirOwnTexts) {
    unsigned char const c = qzkapp::ecad::PCBSchCompareScene::GetBaseEventId();
    BoardSchematicObserver observer;
    auto word = [](unsigned int value) {
        return Message([value](dom::ObserverProxy& p) { p.PushUInt32Value(value); });
    };
    auto onlyVisible = Message([](dom::ObserverProxy& p) {
        p.PushUInt32Value(3);
        p.PushBooleanValue(true);
    });
    auto none = Message([](dom::ObserverProxy&) {});
    std::vector<std::pair<unsigned char, dom::MessageData>> messages;
    messages.emplace_back(c + 8, onlyVisible);
    messages.emplace_back(c + 3, word(2));
    messages.emplace_back(c + 4, word(3));
    messages.emplace_back(c + 5, word(1));
    messages.emplace_back(c + 6, none);
    messages.emplace_back(c + 7, none);
    messages.emplace_back(c + 2, word(0xFFFFFFA6u));
    messages.emplace_back(c + 9, none);
    for (auto& [tag, message] : messages) {
        dom::MessageReader reader(message);
        observer.HandleEvent(tag, reader);
    }
    EXPECT_EQ(observer.Take(),
              (std::vector<std::string>{"IsolateOnlyVisible true 3", "Page 2", "PCBSublayerCV 3",
                                        "SchSublayerCV 1", "PcbDrawOrder", "SchDrawOrder",
                                        "Rotation -90"}));
    EXPECT_EQ(ErrorOf(observer, c), "Failed to retrieve the ChangeSource value");
    EXPECT_EQ(ErrorOf(observer, c + 1), "Failed to retrieve orientation");
    EXPECT_EQ(ErrorOf(observer, c + 3), "Failed to retrieve page number.");
    EXPECT_EQ(ErrorOf(observer, c + 4), "Failed to retrieve pcb colorvis change source.");
    EXPECT_EQ(ErrorOf(observer, c + 5), "Failed to retrieve schematic colorvis change source.");
    EXPECT_EQ(ErrorOf(observer, c + 8), "Failed to retrieve the ChangeSource value");
    EXPECT_EQ(ErrorOf(observer, c + 9), "no error");
}

} // namespace
} // namespace qztest
