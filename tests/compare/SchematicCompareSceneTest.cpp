// The schematic compare scene: its records over the union of both designs' handles in either
// order, the two setters and their steps, the records shared with callers and steps when the
// kernel's compare colours change, and sheet navigation with its page event.
#include "compare/SchematicCompareHarness.h"

#include "dom/MessageReader.h"
#include "dom/ObserverProxy.h"
#include "qz2d/ecad/Design.h"
#include "qzk/MemoryPoolAllocated.h"
#include "qzk/OperationStep.h"
#include "qzk/ecad/EcadSchematicData.h"

#include <stdexcept>

namespace qztest {
namespace {

using qzref::Journal;
using qzref::LoaderControl;
using qzref::Messages;
using qzref::UndoControl;

std::string const kSheets = Example("three-sheet-schematic.json");
std::string const kRevB = Example("three-sheet-schematic-rev-b.json");

// Every record as a fresh load makes it: the kernel's three colours, mode 0, flag, shown.
std::string const kLoaded = "01112233 01445566 01778899 0 1 1";

std::vector<short> Handles(std::map<short, std::string> const& records) {
    std::vector<short> out;
    out.reserve(records.size());
    for (auto const& [handle, text] : records) {
        out.push_back(handle);
    }
    return out;
}

std::vector<std::string> StepTypes(du::SmartPtr<qzk::Operation> const& op) {
    std::vector<std::string> out;
    for (auto const& step : op->GetSteps()) {
        out.push_back(step->GetStepType().str());
    }
    return out;
}

class SchematicCompareSceneTest : public SchematicCompareTest {
protected:
    // A scene of both designs, loaded, with a recorder that has heard everything so far.
    Kernel Loaded(std::string const& first, std::string const& second) {
        Kernel scene = MakeSchematicCompare(first, second);
        Settle();
        if (scene) {
            Api(scene)->RegisterObserver(*recorder_);
            Messages::PumpUntilIdle();
            recorder_->Take();
        }
        return scene;
    }

    std::vector<std::string> Events() {
        Messages::PumpUntilIdle();
        return recorder_->Take();
    }

    du::SmartPtr<SchematicCompareRecorder> recorder_{new SchematicCompareRecorder()};
};

TEST_F(SchematicCompareSceneTest, FactoryMakesItForKind161FromTwoDesignsAndFromAnEntry) {
    Kernel scene = MakeSchematicCompare(kSheets, kRevB);
    ASSERT_TRUE(scene);
    auto* api = Api(scene);
    ASSERT_NE(api, nullptr);
    EXPECT_EQ(api->GetClassType().GetId(), 165u);
    Settle();
    EXPECT_TRUE(api->IsDesignLoaded());
    // Kind 161 from a single design is refused.
    bool flag = false;
    EXPECT_FALSE(factory_->CreateScene(qzk::World::GetWorld(), qzk::Instance::Create("one"),
                                       qzk::ViewableSource::Create(du::Symbol(kSheets)), 161,
                                       flag));

    auto entry = qzk::AnnoSetTableEntry::Create(du::Symbol("saved"));
    Kernel saved = MakeSchematicCompareFromEntry(entry);
    ASSERT_TRUE(saved);
    EXPECT_EQ(Api(saved)->GetClassType().GetId(), 165u);
    // Its designs are still to come: no records, no loads.
    EXPECT_FALSE(Api(saved)->IsDesignLoaded());
    EXPECT_TRUE(ApiRecords(saved).empty());
}

TEST_F(SchematicCompareSceneTest, RecordsCoverTheUnionOfHandlesInEitherOrder) {
    for (bool const swapped : {false, true}) {
        SCOPED_TRACE(swapped ? "revision B first" : "revision B second");
        std::size_t const mark = Journal::Size();
        Kernel scene = swapped ? Loaded(kRevB, kSheets) : Loaded(kSheets, kRevB);
        ASSERT_TRUE(scene);
        auto* api = Api(scene);
        std::map<short, std::string> const records = ApiRecords(scene);
        // 29 only in the three-sheet design, 33 only in revision B, each once.
        EXPECT_EQ(Handles(records), (std::vector<short>{7, 8, 10, 11, 12, 19, 28, 29, 30, 32, 33}));
        for (auto const& [handle, text] : records) {
            EXPECT_EQ(text, kLoaded) << handle;
        }
        EXPECT_EQ(KernelRecords(scene), records);
        EXPECT_TRUE(Contains(Journal::Since(mark), ".SetSublayerColorVisInfo("));

        // The sheet frame has content in revision B alone, and still takes its place; 33 is
        // outside the table of schematic layers and takes none.
        EXPECT_EQ(qzref::Inspect(*scene).GetDrawOrder(),
                  (std::vector<short>{12, 7, 30, 19, 8, 10, 32}));

        // Each design's own name; a handle the chosen design lacks has none, whatever the
        // other design calls it.
        bool const revBIsSecond = !swapped;
        EXPECT_EQ(api->GetSublayerLabel(19, revBIsSecond), L"Labels");
        EXPECT_EQ(api->GetSublayerLabel(19, !revBIsSecond), L"Net labels");
        EXPECT_EQ(api->GetSublayerLabel(33, !revBIsSecond), L"");
        EXPECT_EQ(api->GetSublayerLabel(29, revBIsSecond), L"");
        EXPECT_EQ(api->GetSublayerLabel(29, !revBIsSecond), L"Drawings");
        // As many sheets as the longer design has.
        EXPECT_EQ(api->GetNumSheets(), 4u);
        EndCompare(scene);
        Messages::PumpUntilIdle();
    }
}

TEST_F(SchematicCompareSceneTest, ADesignThatIsNoSchematicMakesNoRecordsAndNoEvent) {
    LoaderControl::SetHolding(true);
    Kernel scene = MakeSchematicCompare(Example("four-layer-board.json"), kSheets);
    auto* api = Api(scene);
    ASSERT_TRUE(api->RegisterObserver(*recorder_));
    std::size_t const mark = Journal::Size();
    LoaderControl::SetHolding(false);
    LoaderControl::ReleaseHeld();
    Settle();
    // Both designs load, each as what it is; the pair is complete but makes no records.
    EXPECT_TRUE(api->IsDesignLoaded());
    EXPECT_TRUE(ApiRecords(scene).empty());
    EXPECT_FALSE(Contains(Journal::Since(mark), ".SetSublayerColorVisInfo("));
    EXPECT_EQ(Events(), (std::vector<std::string>{"DesignLoaded first 0 \"\"", "DrawOrder",
                                                  "DesignLoaded second 0 \"\""}));
    // The board's layers count for nothing in the draw order: the schematic's alone.
    EXPECT_EQ(qzref::Inspect(*scene).GetDrawOrder(), (std::vector<short>{12, 7, 19, 8, 10, 32}));
    EXPECT_EQ(api->GetSublayerLabel(7, false), L"");
    EXPECT_EQ(api->GetSublayerLabel(7, true), L"Symbols");
}

TEST_F(SchematicCompareSceneTest, SettersRecordTheirStepsAndUndoBringsTheMapBack) {
    Kernel scene = Loaded(kSheets, kRevB);
    auto* api = Api(scene);
    std::map<short, std::string> const loaded = ApiRecords(scene);

    // The plain setter: one step, the kernel told, one event.
    Map changed;
    changed[19] = du::MakeCounted<qzk::ecad::CompareColorVis>(
        0x010000DC, 0x01DC0000, 0x0100DC00, qzk::ecad::CompareColorVis::eShowDifferences, false,
        false);
    auto op = NewOperation(scene);
    api->SetSublayerColorVisInfo(changed, op, qzkapp::ecad::ChangeSourceScene);
    EXPECT_EQ(StepTypes(op),
              (std::vector<std::string>{"QzkappEcadColorVisSchematicCompareOperationStep"}));
    qzk::RecordOperation(op);
    std::map<short, std::string> const one{{19, "010000DC 01DC0000 0100DC00 4 0 0"}};
    EXPECT_EQ(ApiRecords(scene), one);
    EXPECT_EQ(KernelRecords(scene), one);
    ASSERT_TRUE(UndoControl::Undo());
    EXPECT_EQ(ApiRecords(scene), loaded);
    EXPECT_EQ(KernelRecords(scene), loaded);
    ASSERT_TRUE(UndoControl::Redo());
    EXPECT_EQ(ApiRecords(scene), one);
    EXPECT_EQ(Events(), (std::vector<std::string>{"SublayerCV 1", "SublayerCV 3", "SublayerCV 3"}));

    // Groups and records that equal the present ones: both steps, both events all the same.
    Map present;
    api->GetSublayerColorVisInfo(present);
    qzk::ecad::GroupCVInfoSet groups(false);
    api->GetGroupColorVisInfo(groups);
    auto both = NewOperation(scene);
    api->SetSublayerColorVisInfo(groups, present, both, qzkapp::ecad::ChangeSourceScene);
    EXPECT_EQ(StepTypes(both),
              (std::vector<std::string>{"QzkappEcadColorVisGroupOperationStep",
                                        "QzkappEcadColorVisSchematicCompareOperationStep"}));
    EXPECT_EQ(Events(), (std::vector<std::string>{"GroupCV 1", "SublayerCV 1"}));

    // Apply records a step of its own ahead of the setter's; undoing posts for each.
    auto applied = NewOperation(scene);
    Map full;
    for (auto const& [handle, text] : loaded) {
        full[handle] = du::MakeCounted<qzk::ecad::CompareColorVis>(
            0x01000001, 0x01000002, 0x01000003, qzk::ecad::CompareColorVis::eShowAll, true, true);
    }
    api->ApplySublayerColorVisInfo(full, applied);
    EXPECT_EQ(StepTypes(applied),
              (std::vector<std::string>{"QzkappEcadColorVisSchematicCompareOperationStep",
                                        "QzkappEcadColorVisSchematicCompareOperationStep"}));
    qzk::RecordOperation(applied);
    EXPECT_EQ(ApiRecords(scene).size(), loaded.size());
    Events();
    ASSERT_TRUE(UndoControl::Undo());
    EXPECT_EQ(ApiRecords(scene), one);
    EXPECT_EQ(Events(), (std::vector<std::string>{"SublayerCV 3", "SublayerCV 3"}));
    // Without an operation: no step anywhere.
    std::size_t const undoCount = UndoControl::GetUndoCount();
    api->ApplySublayerColorVisInfo(full, nullptr);
    EXPECT_EQ(UndoControl::GetUndoCount(), undoCount);
    EXPECT_EQ(Events(), (std::vector<std::string>{"SublayerCV 1"}));
}

TEST_F(SchematicCompareSceneTest, KernelColourChangeReachesSharedRecordsOfCallersAndSteps) {
    Kernel scene = Loaded(kRevB, kSheets);
    auto* api = Api(scene);
    Map fetched;
    api->GetSublayerColorVisInfo(fetched);
    // A step that holds the scene's present records.
    auto op = NewOperation(scene);
    api->SetSublayerColorVisInfo(fetched, op, qzkapp::ecad::ChangeSourceScene);
    qzk::RecordOperation(op);
    Events();
    std::size_t const undoCount = UndoControl::GetUndoCount();

    qzref::Inspect(*scene).ChangeItemColors(
        dg::Color(0x01000011, true), dg::Color(0x01000022, true), dg::Color(0x01000033, true));
    Messages::PumpUntilIdle();
    std::string const recoloured = "01000011 01000022 01000033 0 1 1";
    for (auto const& [handle, record] : fetched) {
        EXPECT_EQ(RecordText(*record), recoloured) << handle;
    }
    EXPECT_EQ(KernelRecords(scene), ApiRecords(scene));
    EXPECT_EQ(KernelRecords(scene).at(30), recoloured);
    EXPECT_EQ(UndoControl::GetUndoCount(), undoCount);
    EXPECT_EQ(Events(), (std::vector<std::string>{"SublayerCV 1"}));

    // Undo brings back the same records, which hold the new colours.
    ASSERT_TRUE(UndoControl::Undo());
    for (auto const& [handle, text] : ApiRecords(scene)) {
        EXPECT_EQ(text, recoloured) << handle;
    }
    EXPECT_EQ(Events(), (std::vector<std::string>{"SublayerCV 3"}));

    // Once the scene has ended, a change of the colours reaches nothing.
    EndCompare(scene);
    Messages::PumpUntilIdle();
    qzref::Inspect(*scene).ChangeItemColors(
        dg::Color(0x01000044, true), dg::Color(0x01000044, true), dg::Color(0x01000044, true));
    Messages::PumpUntilIdle();
    EXPECT_EQ(RecordText(*fetched.begin()->second), recoloured);
    EXPECT_EQ(Events(), (std::vector<std::string>{"Detach"}));
    EXPECT_TRUE(Messages::TakeHandlerErrors().empty());
}

TEST_F(SchematicCompareSceneTest, ViewStatesComeWithTheLaterDesignAndOnlyGrow) {
    LoaderControl::SetHolding(true);
    Kernel scene = MakeSchematicCompare(kSheets, kRevB);
    auto* api = Api(scene);
    auto view = MakeView(scene, 6);
    du::SmartPtr<qzk::ecad::BaseView> const base(view);
    ASSERT_TRUE(api->RegisterObserver(*recorder_));
    // Before the pair is there a sheet never saved is fitted; a picture saved under sheet 5
    // makes room for it.
    view->StoreLocation(dg::Location(dg::DPoint2D(9.0, 0.0), 30.0));
    view->SetOrthoWidth(30.0);
    api->UpdateCurrentViewState(base, 5);

    // The first design alone changes nothing about the sheets.
    ASSERT_EQ(LoaderControl::GetHeldUrl(), kSheets);
    LoaderControl::SetHolding(false);
    ASSERT_TRUE(LoaderControl::CompleteHeld(1, -5, 5, du::Symbol("broken")));
    Messages::PumpUntilIdle();
    LoaderControl::ReleaseHeld();
    Settle();
    EXPECT_FALSE(api->IsDesignLoaded());
    api->LoadEcadDesign();
    Settle();
    ASSERT_TRUE(api->IsDesignLoaded());
    recorder_->Take();

    // Four pages from the kernel, and the record of sheet 5 stays.
    api->PageNav(3, base);
    EXPECT_EQ(qzref::Inspect(*view).GetPage(), 3u);
    unsigned int const fits = qzref::Inspect(*view).GetFitCount();
    api->PageNav(5, base);
    EXPECT_EQ(qzref::Inspect(*view).GetPage(), 5u);
    EXPECT_EQ(qzref::Inspect(*view).GetLocation().center.x, 9.0);
    EXPECT_EQ(qzref::Inspect(*view).GetFitCount(), fits);
    // The view shows the sheet already: the event all the same.
    api->PageNav(5, base);
    EXPECT_EQ(Events(), (std::vector<std::string>{"Page 3", "Page 5", "Page 5"}));

    // A preview posts nothing and leaves the current sheet; going back restores it.
    api->PreviewPageNav(1, base);
    EXPECT_EQ(qzref::Inspect(*view).GetPage(), 1u);
    api->PreviewPageNav(-1, base);
    EXPECT_EQ(qzref::Inspect(*view).GetPage(), 5u);
    EXPECT_TRUE(Events().empty());
    // A page the view cannot show: no event, the sheet stays.
    api->PageNav(7, base);
    EXPECT_EQ(qzref::Inspect(*view).GetPage(), 5u);
    EXPECT_TRUE(Events().empty());
}

TEST_F(SchematicCompareSceneTest, LateObserverIsBroughtUpToDateAndDecodesItsPage) {
    Kernel scene = MakeSchematicCompare(kRevB, kSheets);
    Settle();
    auto* api = Api(scene);
    auto view = MakeView(scene, 4);
    EXPECT_EQ(qzref::Inspect(*view).GetFitCount(), 1u);
    ASSERT_TRUE(api->RegisterObserver(*recorder_));
    EXPECT_EQ(Events(), (std::vector<std::string>{"DesignLoaded first 0 \"\"", "DrawOrder"}));
    // The page event shares its id with a design scene's image event, and is told as a page.
    api->PageNav(2, du::SmartPtr<qzk::ecad::BaseView>(view));
    EXPECT_EQ(Events(), (std::vector<std::string>{"Page 2"}));
    EXPECT_TRUE(Messages::TakeHandlerErrors().empty());
    EXPECT_TRUE(api->UnregisterObserver(*recorder_));
}

// A step holds its scene by a counted reference: the scene's end must take its operations off
// the undo list, or the two would keep each other.
TEST_F(SchematicCompareSceneTest, AnEndedSceneWithStepsAndCellsGivesBackItsMemory) {
    std::uint64_t const before = qzk::MemoryPoolAllocated::GetLiveBlockCount();
    {
        Kernel scene = Loaded(kSheets, kRevB);
        auto* api = Api(scene);
        Map records;
        api->GetSublayerColorVisInfo(records);
        auto op = NewOperation(scene);
        api->ApplySublayerColorVisInfo(records, op);
        qzk::RecordOperation(op);
        api->AddImageDiffCellOrGrid(3, qz2d::ecad::Design::Create("grid", 1, 1, {}, 0),
                                    dg::Color(0x01FFFFFF, true), "grid", 0, true, 1, true);
        ASSERT_GT(UndoControl::GetUndoCount(), 0u);
        EndCompare(scene);
        Messages::PumpUntilIdle();
        EXPECT_EQ(scene->GetApiScene(), nullptr);
    }
    Messages::PumpUntilIdle();
    EXPECT_EQ(qzk::MemoryPoolAllocated::GetLiveBlockCount(), before);
}

TEST(SchematicCompareObserverDecoding, PageTagDecodesAboveTheCompareFamilyAndShortPayloadsRaise) {
    auto message = [](bool withPage) {
        dom::ObserverProxy proxy;
        proxy.Begin();
        if (withPage) {
            proxy.PushUInt32Value(2);
        }
        proxy.End();
        return proxy.TakeMessage();
    };
    unsigned char const page = qzkapp::ecad::SchematicCompareScene::GetBaseEventId();
    SchematicCompareRecorder recorder;
    auto const full = message(true);
    dom::MessageReader reader(full);
    recorder.HandleEvent(page, reader);
    // One below is the compare family's own: the sublayer colours, with the same payload.
    dom::MessageReader below(full);
    recorder.HandleEvent(static_cast<unsigned char>(page - 1), below);
    // Past the family's last event: ignored.
    dom::MessageReader above(full);
    recorder.HandleEvent(static_cast<unsigned char>(page + 1), above);
    EXPECT_EQ(recorder.Take(), (std::vector<std::string>{"Page 2", "SublayerCV 2"}));

    auto const empty = message(false);
    dom::MessageReader shortReader(empty);
    try {
        recorder.HandleEvent(page, shortReader);
        ADD_FAILURE() << "no error";
    } catch (std::runtime_error const& error) {
        EXPECT_STREQ(error.what(), "Failed to retrieve page number.");
    }
    EXPECT_TRUE(recorder.Take().empty());
}

} // namespace
} // namespace qztest
