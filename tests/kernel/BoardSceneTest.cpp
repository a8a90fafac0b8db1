// The board operations the four board scenes share (isolation, the two board switches, the
// board's colour set and each scene's own colour notice), compare scenes made from an
// annotation set table entry, and the board-to-schematic scene's two draw orders and first type.
#include "qzk/AnnoSetTableEntry.h"
#include "qzk/EcadDesign.h"
#include "qzk/EcadSource.h"
#include "qzk/Instance.h"
#include "qzk/ViewableSource.h"
#include "qzk/World.h"
#include "qzk/ecad/AppearanceItem.h"
#include "qzk/ecad/CompareColorVis.h"
#include "qzk/ecad/CompareColorVisPtrVec.h"
#include "qzk/ecad/EcadPCBData.h"
#include "qzk/ecad/PCBAppearance.h"
#include "qzk/ecad/PCBCompareScene.h"
#include "qzk/ecad/PCBCompareSceneObserver.h"
#include "qzk/ecad/PCBOvlCompareScene.h"
#include "qzk/ecad/PCBOvlCompareSceneObserver.h"
#include "qzk/ecad/PCBScene.h"
#include "qzk/ecad/PCBSceneObserver.h"
#include "qzk/ecad/PCBSchCompareScene.h"
#include "qzk/ecad/PCBSchCompareSceneObserver.h"
#include "qzk/ecad/SchematicCompareScene.h"
#include "qzk/ecad/SchematicData.h"
#include "qzk/ecad/SublayerPCB_CVSet.h"
#include "qzref/Journal.h"
#include "qzref/Messages.h"
#include "qzref/Platform.h"

#include <gtest/gtest.h>

#include "qzref/Inspect.h"
#include <set>
#include <string>
#include <vector>

namespace {

using qzk::ecad::AppearanceItem;
using qzk::ecad::CompareColorVis;
using qzk::ecad::CompareColorVisPtrVec;
using qzk::ecad::PCBAppearance;
using qzk::ecad::SublayerPCB_CV;
using qzk::ecad::SublayerPCB_CVSet;
using qzref::Messages;

std::string Sample(char const* name) {
    return std::string(QZ_EXAMPLES_DIR) + "/designs/" + name;
}

std::string LookText(std::set<PCBAppearance> const& on, std::set<PCBAppearance> const& off) {
    auto list = [](std::set<PCBAppearance> const& looks) {
        std::string out;
        for (PCBAppearance look : looks) {
            out += (out.empty() ? "" : ",") + std::to_string(static_cast<unsigned int>(look));
        }
        return "{" + out + "}";
    };
    return list(on) + list(off);
}

// What every board scene observer hears alike; the colour notice is each observer's own.
template <class Observer> struct BoardLog : Observer {
    using Observer::OnAppearanceChanged;
    void DetachObserver() override {}
    void OnIsolate(std::vector<AppearanceItem> const& items, bool on) override {
        log.push_back("isolate " + std::to_string(items.size()) + (on ? " on" : " off"));
        isolations.push_back(items);
    }
    void OnIsolateOnlyVisibleChanged(bool onlyVisible) override {
        log.push_back(std::string("only visible ") + (onlyVisible ? "on" : "off"));
    }
    void OnAppearanceChanged(std::set<PCBAppearance> const& on,
                             std::set<PCBAppearance> const& off) override {
        log.push_back("look " + LookText(on, off));
    }
    std::vector<std::string> log;
    std::vector<std::vector<AppearanceItem>> isolations;
};

struct BoardRecorder : BoardLog<qzk::ecad::PCBSceneObserver> {
    void OnSublayerColorVisChanged() override { log.push_back("colours"); }
};
struct BoardCompareRecorder : BoardLog<qzk::ecad::PCBCompareSceneObserver> {
    void OnSublayerColorVisChanged() override { log.push_back("colours"); }
};
struct OverlayCompareRecorder : BoardLog<qzk::ecad::PCBOvlCompareSceneObserver> {
    void OnSublayerVisChanged() override { log.push_back("colours"); }
};
struct BoardSheetRecorder : BoardLog<qzk::ecad::PCBSchCompareSceneObserver> {
    void OnPcbSublayerColorVisChanged() override { log.push_back("colours"); }
    void OnSchSublayerColorVisChanged() override { log.push_back("sheet colours"); }
    void OnDrawOrderChanged() override { log.push_back("draw"); }
    void OnPcbDrawOrderChanged() override { log.push_back("board draw"); }
    void OnSchDrawOrderChanged() override { log.push_back("sheet draw"); }
};

template <class Scene> du::SmartPtr<Scene> MakePair(std::string const& a, std::string const& b) {
    du::SmartPtr<Scene> scene;
    Scene::Create(qzk::World::GetWorld(), qzk::Instance::Create("a"),
                  qzk::ViewableSource::Create(a), qzk::Instance::Create("b"),
                  qzk::ViewableSource::Create(b), scene);
    return scene;
}

du::SmartPtr<qzk::ecad::PCBScene> MakeBoard(std::string const& path) {
    du::SmartPtr<qzk::ecad::PCBScene> scene;
    qzk::ecad::PCBScene::Create(qzk::World::GetWorld(), qzk::Instance::Create("i"),
                                qzk::ViewableSource::Create(path), scene);
    return scene;
}

// One colour set of each kind, and a change to it after the scene was given it.
void Fill(SublayerPCB_CVSet& set, unsigned int color) {
    set.clear();
    set.insert(SublayerPCB_CV(2, 10, color, true));
}
void Fill(CompareColorVisPtrVec& rows, unsigned int color) {
    rows.clear();
    rows.push_back(du::SmartPtr<CompareColorVis>(
        new CompareColorVis(color, 2, 3, CompareColorVis::eShowAll, false, true)));
}
void Repaint(SublayerPCB_CVSet& set, unsigned int color) {
    Fill(set, color);
}
void Repaint(CompareColorVisPtrVec& rows, unsigned int color) {
    rows[0]->firstColor = color; // the record is shared with whoever holds the list
}
unsigned int FirstColour(SublayerPCB_CVSet const& set) {
    return set.empty() ? 0 : set.begin()->color;
}
unsigned int FirstColour(CompareColorVisPtrVec const& rows) {
    return rows.empty() || rows[0].IsNull() ? 0 : rows[0]->firstColor;
}

struct OnBoard {
    using Recorder = BoardRecorder;
    using ColorSet = SublayerPCB_CVSet;
    static du::SmartPtr<qzk::ecad::PCBScene> Make() { return MakeBoard("shared-board.json"); }
};
struct OnBoardCompare {
    using Recorder = BoardCompareRecorder;
    using ColorSet = CompareColorVisPtrVec;
    static du::SmartPtr<qzk::ecad::PCBCompareScene> Make() {
        return MakePair<qzk::ecad::PCBCompareScene>("cmp-a.json", "cmp-b.json");
    }
};
struct OnOverlayCompare {
    using Recorder = OverlayCompareRecorder;
    using ColorSet = SublayerPCB_CVSet;
    static du::SmartPtr<qzk::ecad::PCBOvlCompareScene> Make() {
        return MakePair<qzk::ecad::PCBOvlCompareScene>("ovl-a.json", "ovl-b.gbr");
    }
};
struct OnBoardToSchematic {
    using Recorder = BoardSheetRecorder;
    using ColorSet = SublayerPCB_CVSet;
    static du::SmartPtr<qzk::ecad::PCBSchCompareScene> Make() {
        return MakePair<qzk::ecad::PCBSchCompareScene>("bs-a.json", "bs-b.json");
    }
};

template <class Kind> class SharedBoardOperations : public ::testing::Test {
protected:
    void TearDown() override {
        Messages::PumpUntilIdle();
        EXPECT_TRUE(Messages::TakeHandlerErrors().empty());
    }
    qzref::ScopedPlatform platform;
};

using BoardKinds = ::testing::Types<OnBoard, OnBoardCompare, OnOverlayCompare, OnBoardToSchematic>;
TYPED_TEST_SUITE(SharedBoardOperations, BoardKinds);

int objects[3];

TYPED_TEST(SharedBoardOperations, IsolationIsKeptAndToldWithItsItems) {
    auto scene = TypeParam::Make();
    typename TypeParam::Recorder recorder;
    ASSERT_TRUE(scene->RegisterObserver(recorder));
    EXPECT_FALSE(qzref::Inspect(*scene).IsIsolating());

    std::vector<AppearanceItem> items{
        {&objects[0], -2, 40, nullptr},
        {&objects[1], 3, -32768, reinterpret_cast<IcmApiEcad*>(&objects[2])}};
    scene->SetIsolated(items);
    EXPECT_TRUE(qzref::Inspect(*scene).IsIsolating());
    EXPECT_EQ(qzref::Inspect(*scene).GetIsolated(), items);
    scene->ClearIsolated();
    EXPECT_FALSE(qzref::Inspect(*scene).IsIsolating());
    EXPECT_TRUE(qzref::Inspect(*scene).GetIsolated().empty());

    EXPECT_TRUE(recorder.log.empty());
    Messages::PumpUntilIdle();
    EXPECT_EQ(recorder.log, (std::vector<std::string>{"isolate 2 on", "isolate 0 off"}));
    ASSERT_EQ(recorder.isolations.size(), 2u);
    ASSERT_EQ(recorder.isolations[0].size(), 2u);
    for (std::size_t i = 0; i < items.size(); ++i) {
        EXPECT_EQ(recorder.isolations[0][i].object, items[i].object);
        EXPECT_EQ(recorder.isolations[0][i].firstHandle, items[i].firstHandle);
        EXPECT_EQ(recorder.isolations[0][i].secondHandle, items[i].secondHandle);
        EXPECT_EQ(recorder.isolations[0][i].icm, items[i].icm);
    }
    scene->UnregisterObserver(recorder);
    qzref::Inspect(*scene).DestroyScene();
}

TYPED_TEST(SharedBoardOperations, SwitchesAreToldOnlyWhenTheyChange) {
    auto scene = TypeParam::Make();
    typename TypeParam::Recorder recorder;
    ASSERT_TRUE(scene->RegisterObserver(recorder));
    std::size_t const mark = qzref::Journal::Size();

    scene->SetIsolateOnlyVisible(true);
    scene->SetIsolateOnlyVisible(true);
    scene->SetShowLogicalConnection(true);
    scene->SetShowLogicalConnection(true);
    EXPECT_TRUE(qzref::Inspect(*scene).GetIsolateOnlyVisible());
    EXPECT_TRUE(qzref::Inspect(*scene).GetShowLogicalConnection());
    scene->SetIsolateOnlyVisible(false);
    scene->SetShowLogicalConnection(false);
    scene->SetShowLogicalConnection(false);
    EXPECT_FALSE(qzref::Inspect(*scene).GetIsolateOnlyVisible());
    EXPECT_FALSE(qzref::Inspect(*scene).GetShowLogicalConnection());

    Messages::PumpUntilIdle();
    EXPECT_EQ(recorder.log,
              (std::vector<std::string>{"only visible on", "look {3}{}", "look {1}{}",
                                        "only visible off", "look {}{3}", "look {}{1}"}));
    // Unchanged calls are journalled all the same.
    std::string const prefix = scene->GetObjectName().str() + ".SetShowLogicalConnection(";
    int journalled = 0;
    for (std::string const& line : qzref::Journal::Since(mark)) {
        journalled += line.rfind(prefix, 0) == 0 ? 1 : 0;
    }
    EXPECT_EQ(journalled, 4);
    scene->UnregisterObserver(recorder);
    qzref::Inspect(*scene).DestroyScene();
}

TYPED_TEST(SharedBoardOperations, ColourSetIsKeptAsACopyAndToldOnEveryCall) {
    auto scene = TypeParam::Make();
    typename TypeParam::Recorder recorder;
    ASSERT_TRUE(scene->RegisterObserver(recorder));

    typename TypeParam::ColorSet colours;
    Fill(colours, 0x010000FF);
    scene->SetColorVisInfo(colours);
    scene->SetColorVisInfo(colours); // the same again: still told
    Repaint(colours, 0x0100FF00);
    EXPECT_EQ(FirstColour(qzref::Inspect(*scene).GetColorVisInfo()), 0x010000FFu);
    EXPECT_EQ(qzref::Inspect(*scene).GetColorVisInfo().size(), 1u);

    EXPECT_TRUE(recorder.log.empty());
    Messages::PumpUntilIdle();
    EXPECT_EQ(recorder.log, (std::vector<std::string>{"colours", "colours"}));
    scene->UnregisterObserver(recorder);
    qzref::Inspect(*scene).DestroyScene();
}

class CompareScenes : public ::testing::Test {
protected:
    void TearDown() override {
        Messages::PumpUntilIdle();
        EXPECT_TRUE(Messages::TakeHandlerErrors().empty());
    }

    // Made from an entry, the scene knows no design until the entry is complete, then both.
    template <class Scene> void CheckEntryScene(std::string const& a, std::string const& b) {
        SCOPED_TRACE(a);
        auto entry = qzk::AnnoSetTableEntry::Create("saved " + a);
        du::SmartPtr<Scene> scene;
        Scene::Create(qzk::World::GetWorld(), entry, scene);
        ASSERT_FALSE(scene.IsNull());
        EXPECT_EQ(scene->GetAnnoEntry().Get(), entry.Get());

        du::SmartPtr<qzk::EcadDesign> first, second;
        scene->GetFirstDesign(first);
        EXPECT_TRUE(first.IsNull());
        EXPECT_TRUE(qzref::Inspect(*scene).GetFilePath(0).empty());
        qzref::Inspect(*entry).SetFirst(qzk::Instance::Create("a"), qzk::ViewableSource::Create(a));
        qzref::Inspect(*entry).SetSecond(qzk::Instance::Create("b"),
                                         qzk::ViewableSource::Create(b));
        scene->GetFirstDesign(first);
        scene->GetSecondDesign(second);
        EXPECT_TRUE(first.IsNull()) << "the entry is not complete yet";
        EXPECT_TRUE(second.IsNull());
        EXPECT_TRUE(qzref::Inspect(*scene).GetFilePath(1).empty());

        qzref::Inspect(*entry).Complete();
        scene->GetFirstDesign(first);
        scene->GetSecondDesign(second);
        ASSERT_FALSE(first.IsNull());
        ASSERT_FALSE(second.IsNull());
        EXPECT_EQ(first->GetURL().str(), a);
        EXPECT_EQ(second->GetURL().str(), b);
        EXPECT_EQ(qzref::Inspect(*scene).GetFilePath(0).str(), a);
        EXPECT_EQ(qzref::Inspect(*scene).GetFilePath(1).str(), b);
        du::SmartPtr<qzk::EcadDesign> indexed;
        scene->GetEcadDesign(indexed, 1);
        EXPECT_EQ(indexed.Get(), second.Get());

        // The design learnt from the entry is the one other scenes of the path share.
        auto board = MakeBoard(a);
        du::SmartPtr<qzk::EcadDesign> shared;
        board->GetEcadDesign(shared, 0);
        EXPECT_EQ(shared.Get(), first.Get());
        qzref::Inspect(*board).DestroyScene();
        qzref::Inspect(*scene).DestroyScene();
    }

    qzref::ScopedPlatform platform;
};

TEST_F(CompareScenes, MadeFromAnEntryTheyLearnBothPathsOnceTheEntryIsComplete) {
    CheckEntryScene<qzk::ecad::PCBCompareScene>("entry-b1.json", "entry-b2.json");
    CheckEntryScene<qzk::ecad::PCBOvlCompareScene>("entry-o1.json", "entry-o2.gbr");
    CheckEntryScene<qzk::ecad::PCBSchCompareScene>("entry-p1.json", "entry-s1.json");
    CheckEntryScene<qzk::ecad::SchematicCompareScene>("entry-s2.json", "entry-s3.json");
}

TEST_F(CompareScenes, BoardAndSchematicDrawOrdersAreKeptApartAndToldOnEveryCall) {
    auto scene = OnBoardToSchematic::Make();
    BoardSheetRecorder recorder;
    ASSERT_TRUE(scene->RegisterObserver(recorder));

    scene->SetPCBDrawOrder({3, -2, 1}, true, true);
    EXPECT_EQ(qzref::Inspect(*scene).GetPCBDrawOrder(), (std::vector<short>{3, -2, 1}));
    EXPECT_TRUE(qzref::Inspect(*scene).GetPCBDrawOrderFlag());
    EXPECT_TRUE(scene->invertLayers);
    EXPECT_TRUE(qzref::Inspect(*scene).GetSchDrawOrder().empty());
    EXPECT_TRUE(qzref::Inspect(*scene).GetDrawOrder().empty());

    scene->SetSchDrawOrder({5, 6});
    EXPECT_EQ(qzref::Inspect(*scene).GetSchDrawOrder(), (std::vector<short>{5, 6}));
    EXPECT_EQ(qzref::Inspect(*scene).GetPCBDrawOrder(), (std::vector<short>{3, -2, 1}));
    EXPECT_TRUE(scene->invertLayers);

    scene->SetPCBDrawOrder({3, -2, 1}, false, false); // same order: told again
    EXPECT_FALSE(qzref::Inspect(*scene).GetPCBDrawOrderFlag());
    EXPECT_FALSE(scene->invertLayers);
    scene->SetSchDrawOrder({});
    EXPECT_TRUE(qzref::Inspect(*scene).GetSchDrawOrder().empty());
    EXPECT_EQ(qzref::Inspect(*scene).GetPCBDrawOrder(), (std::vector<short>{3, -2, 1}));

    EXPECT_TRUE(recorder.log.empty());
    Messages::PumpUntilIdle();
    EXPECT_EQ(recorder.log,
              (std::vector<std::string>{"board draw", "sheet draw", "board draw", "sheet draw"}));
    scene->UnregisterObserver(recorder);
    qzref::Inspect(*scene).DestroyScene();
}

TEST_F(CompareScenes, FirstTypeSaysWhichDesignIsTheBoard) {
    auto firstType = [](std::string const& a, std::string const& b) {
        auto scene = MakePair<qzk::ecad::PCBSchCompareScene>(a, b);
        auto type = qzref::Inspect(*scene).GetFirstType();
        qzref::Inspect(*scene).DestroyScene();
        return type;
    };
    std::string const board = Sample("four-layer-board.json");
    std::string const sheets = Sample("three-sheet-schematic.json");
    EXPECT_EQ(firstType(board, sheets), qzk::EcadSource::eBoard);
    EXPECT_EQ(firstType(sheets, board), qzk::EcadSource::eSchematic);
    EXPECT_EQ(firstType(Sample("top-copper.gbr"), board), qzk::EcadSource::eGerber);
    EXPECT_EQ(firstType("/nonexistent/dir/board.json", sheets), qzk::EcadSource::eUnknown);

    // Loaded data wins over the file (which here does not even exist).
    auto scene = MakePair<qzk::ecad::PCBSchCompareScene>("/nonexistent/loaded.json", sheets);
    du::SmartPtr<qzk::EcadDesign> first;
    scene->GetFirstDesign(first);
    ASSERT_FALSE(first.IsNull());
    first->SetEcadDesignData(qzk::ecad::SchematicData::Create("s"));
    EXPECT_EQ(qzref::Inspect(*scene).GetFirstType(), qzk::EcadSource::eSchematic);
    first->SetEcadDesignData(qzk::ecad::EcadPCBData::Create("b", false));
    EXPECT_EQ(qzref::Inspect(*scene).GetFirstType(), qzk::EcadSource::eBoard);
    qzref::Inspect(*scene).DestroyScene();

    // Made from an entry: nothing to say until the entry is complete.
    auto entry = qzk::AnnoSetTableEntry::Create("board first");
    du::SmartPtr<qzk::ecad::PCBSchCompareScene> fromEntry;
    qzk::ecad::PCBSchCompareScene::Create(qzk::World::GetWorld(), entry, fromEntry);
    qzref::Inspect(*entry).SetFirst(qzk::Instance::Create("a"),
                                    qzk::ViewableSource::Create(sheets));
    qzref::Inspect(*entry).SetSecond(qzk::Instance::Create("b"),
                                     qzk::ViewableSource::Create(board));
    EXPECT_EQ(qzref::Inspect(*fromEntry).GetFirstType(), qzk::EcadSource::eUnknown);
    qzref::Inspect(*entry).Complete();
    EXPECT_EQ(qzref::Inspect(*fromEntry).GetFirstType(), qzk::EcadSource::eSchematic);
    qzref::Inspect(*fromEntry).DestroyScene();
}

} // namespace
