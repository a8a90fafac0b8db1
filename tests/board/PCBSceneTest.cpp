// The board scene's colour sets, switches and selection, and its helper's layer model.
#include "design/SceneHarness.h"

#include "IcmApiEcad.h"
#include "board/ColorVisPCBOperationStep.h"
#include "dg/DPoint3D.h"
#include "qzk/Operation.h"
#include "qzk/SelectionManager.h"
#include "qzk/ecad/EcadDesignData.h"
#include "qzk/ecad/SelectionItem.h"
#include "qzref/Inspect.h"
#include "qzref/RecordFmt.h"

namespace qztest {
namespace {

using qzk::ecad::SublayerPCB_CV;
using qzk::ecad::SublayerPCB_CVSet;
using qzk::ecad::SublayerPCBBase;
using qzref::Journal;
using qzref::Messages;

class PCBSceneTest : public SceneTest {
protected:
    void SetUp() override {
        SceneTest::SetUp();
        scene_ = MakeBoard(Example("four-layer-board.json"));
        api_ = Api(scene_);
        observer_ = du::MakeCounted<RecordingObserver>();
        Settle();
        ASSERT_TRUE(api_->IsDesignLoaded());
        ASSERT_TRUE(api_->RegisterObserver(*observer_));
        Messages::PumpUntilIdle();
        observer_->Take();
    }

    SublayerPCB_CVSet Own() const {
        SublayerPCB_CVSet set;
        api_->GetColorVisInfo(set);
        return set;
    }

    du::SmartPtr<qzk::SelectionItem> Item(char const* name, int type) const {
        auto const& data = api_->GetDesignData();
        return du::SmartPtr<qzk::SelectionItem>(new qzk::ecad::SelectionItem(
            data, data->FindObject(name, type), nullptr, nullptr, dg::DPoint3D(), 0, 0));
    }

    du::SmartPtr<qzk::ecad::PCBScene> scene_;
    qzkapp::ecad::PCBScene* api_ = nullptr;
    du::SmartPtr<RecordingObserver> observer_;
};

TEST_F(PCBSceneTest, LoadedColoursReachTheKernelAndSettingTheSameSetPostsAgain) {
    SublayerPCB_CVSet const loaded = Own();
    ASSERT_FALSE(loaded.empty());
    EXPECT_FALSE(SublayerPCB_CV::AreDifferent(loaded, qzref::Inspect(*scene_).GetColorVisInfo()));
    SublayerPCB_CVSet defaults;
    api_->GetDefaultColorVisInfo(defaults, false);
    EXPECT_FALSE(SublayerPCB_CV::AreDifferent(loaded, defaults));

    std::size_t const mark = Journal::Size();
    api_->SetColorVisInfo(loaded, nullptr, static_cast<qzkapp::ecad::ChangeSource>(9));
    api_->SetColorVisInfo(loaded, nullptr, static_cast<qzkapp::ecad::ChangeSource>(9));
    Messages::PumpUntilIdle();
    EXPECT_EQ(observer_->Take(), (std::vector<std::string>{"SublayerCV 9", "SublayerCV 9"}));
    std::vector<std::string> const lines = Journal::Since(mark);
    EXPECT_EQ(std::count_if(lines.begin(), lines.end(),
                            [](std::string const& l) {
                                return l.find(".SetColorVisInfo(") != std::string::npos;
                            }),
              2);
}

TEST_F(PCBSceneTest, ForceVisibilityShowsOnlyWhatIsNamedAndKeepsTheBoardOutline) {
    SublayerPCB_CVSet const before = Own();
    std::size_t const mark = Journal::Size();
    api_->ForceVisibility({});
    Messages::PumpUntilIdle();
    EXPECT_TRUE(observer_->Take().empty());
    EXPECT_TRUE(Journal::Since(mark).empty());

    api_->ForceVisibility({SublayerPCBBase(-1, 14)});
    Messages::PumpUntilIdle();
    EXPECT_EQ(observer_->Take(), (std::vector<std::string>{"SublayerCV 1"}));
    SublayerPCB_CVSet const after = qzref::Inspect(*scene_).GetColorVisInfo();
    ASSERT_EQ(after.size(), before.size());
    int shown = 0;
    for (SublayerPCB_CV const& entry : after) {
        bool const expected = entry.sublayer == 14 || (entry.layer == 1 && entry.sublayer == 2);
        EXPECT_EQ(entry.visible, expected) << entry.layer << "," << entry.sublayer;
        EXPECT_EQ(entry.color, before.find(entry)->color);
        shown += entry.visible ? 1 : 0;
    }
    EXPECT_EQ(shown, 3); // (1,2), (2,14), (5,14)
    // Not undoable.
    EXPECT_EQ(qzref::UndoControl::GetUndoCount(), 0u);

    // A sublayer that the board lacks still hides all else.
    api_->ForceVisibility({SublayerPCBBase(7, 99)});
    for (SublayerPCB_CV const& entry : Own()) {
        EXPECT_EQ(entry.visible, entry.layer == 1 && entry.sublayer == 2);
    }
}

TEST_F(PCBSceneTest, ApplyColorVisInfoTakesOnlyKnownSublayers) {
    SublayerPCB_CVSet const before = Own();
    SublayerPCB_CVSet partial;
    partial.insert(SublayerPCB_CV(5, 14, 0x01123456, false));
    partial.insert(SublayerPCB_CV(9, 9, 0x01ABCDEF, true));
    api_->ApplyColorVisInfo(partial, nullptr);
    SublayerPCB_CVSet const after = Own();
    ASSERT_EQ(after.size(), before.size());
    EXPECT_EQ(after.count(SublayerPCB_CV(9, 9, 0, true)), 0u);
    for (SublayerPCB_CV const& entry : after) {
        SublayerPCB_CV const& old = *before.find(entry);
        if (entry.layer == 5 && entry.sublayer == 14) {
            EXPECT_EQ(entry.color, 0x01123456u);
            EXPECT_FALSE(entry.visible);
        } else {
            EXPECT_TRUE(entry.SameColorVis(old));
        }
    }
    // An empty set is a copy of the own set, applied all the same.
    api_->ApplyColorVisInfo(SublayerPCB_CVSet(), nullptr);
    EXPECT_FALSE(SublayerPCB_CV::AreDifferent(Own(), after));
    Messages::PumpUntilIdle();
    EXPECT_EQ(observer_->Take(), (std::vector<std::string>{"SublayerCV 1", "SublayerCV 1"}));
}

TEST_F(PCBSceneTest, RecordedColourChangeSwapsOnEachUndoAndRedo) {
    SublayerPCB_CVSet const before = Own();
    SublayerPCB_CVSet changed = before;
    SublayerPCB_CV entry = *changed.find(SublayerPCB_CV(5, 10, 0, true));
    changed.erase(entry);
    entry.color = 0x01010203;
    changed.insert(entry);

    du::SmartPtr<qzk::Operation> op(
        new qzk::Operation("colour", du::SmartPtr<qzk::Scene>(scene_), false));
    api_->SetColorVisInfo(changed, op, qzkapp::ecad::ChangeSourceScene);
    ASSERT_EQ(qzref::Inspect(*op).GetStepCount(), 1u);
    EXPECT_EQ(op->GetSteps()[0]->GetStepType(), du::Symbol("QzkappEcadColorVisPCBOperationStep"));
    qzk::RecordOperation(op);

    ASSERT_TRUE(qzref::UndoControl::Undo());
    EXPECT_FALSE(SublayerPCB_CV::AreDifferent(qzref::Inspect(*scene_).GetColorVisInfo(), before));
    ASSERT_TRUE(qzref::UndoControl::Redo());
    EXPECT_FALSE(SublayerPCB_CV::AreDifferent(qzref::Inspect(*scene_).GetColorVisInfo(), changed));
    ASSERT_TRUE(qzref::UndoControl::Undo());
    EXPECT_FALSE(SublayerPCB_CV::AreDifferent(Own(), before));
    Messages::PumpUntilIdle();
    EXPECT_EQ(observer_->Take(), (std::vector<std::string>{"SublayerCV 1", "SublayerCV 3",
                                                           "SublayerCV 3", "SublayerCV 3"}));
    // The undos recorded nothing of their own.
    EXPECT_EQ(qzref::UndoControl::GetUndoCount(), 0u);

    // A step that lost its helper does nothing.
    du::SmartPtr<qzk::OperationStep> orphan(
        new qzkapp::ecad::ColorVisPCBOperationStep(nullptr, changed));
    orphan->Undo();
    EXPECT_FALSE(SublayerPCB_CV::AreDifferent(Own(), before));
}

// Guards a crash: undoing a sublayer colour change after its scene had ended called through the
// colour step's plain helper pointer into the freed board scene ("pure virtual method called").
// The undo list now lets go of the scene's operations when it ends; another scene's stay.
TEST_F(PCBSceneTest, ColourChangeRecordedThenSceneEndedLeavesOnlyOtherScenesOperations) {
    auto other = MakeBoard(Example("four-layer-board.json"));
    Settle();
    ASSERT_TRUE(other);
    SublayerPCB_CVSet changed = Own();
    SublayerPCB_CV entry = *changed.find(SublayerPCB_CV(5, 10, 0, true));
    changed.erase(entry);
    entry.color = 0x01010203;
    changed.insert(entry);

    du::SmartPtr<qzk::Operation> mine(
        new qzk::Operation("colour", du::SmartPtr<qzk::Scene>(scene_), false));
    api_->SetColorVisInfo(changed, mine, qzkapp::ecad::ChangeSourceScene);
    qzk::RecordOperation(mine);
    du::SmartPtr<qzk::Operation> theirs(
        new qzk::Operation("their colour", du::SmartPtr<qzk::Scene>(other), false));
    Api(other)->SetColorVisInfo(changed, theirs, qzkapp::ecad::ChangeSourceScene);
    qzk::RecordOperation(theirs);
    mine = nullptr;
    theirs = nullptr;

    End(scene_);
    scene_ = nullptr;
    api_ = nullptr;
    EXPECT_EQ(qzref::UndoControl::GetUndoNames(), (std::vector<std::string>{"their colour"}));
    ASSERT_TRUE(qzref::UndoControl::Undo());
    EXPECT_FALSE(qzref::UndoControl::Undo());
    SublayerPCB_CVSet restored;
    Api(other)->GetColorVisInfo(restored);
    EXPECT_TRUE(SublayerPCB_CV::AreDifferent(restored, changed));
}

TEST_F(PCBSceneTest, SwitchesPostOnlyWhenTheyChange) {
    api_->SetHighlightOnlyVisible(true, static_cast<qzkapp::ecad::ChangeSource>(7));
    api_->SetHighlightOnlyVisible(true, static_cast<qzkapp::ecad::ChangeSource>(7));
    api_->SetIsolateOnlyVisible(true, qzkapp::ecad::ChangeSourceScene);
    api_->SetIsolateOnlyVisible(true, qzkapp::ecad::ChangeSourceScene);
    api_->SetIsolateOnlyVisible(false, qzkapp::ecad::ChangeSourceUndo);
    std::size_t const mark = Journal::Size();
    api_->ToggleShowLogicalConnection();
    EXPECT_TRUE(qzref::Inspect(*scene_).GetShowLogicalConnection());
    EXPECT_TRUE(api_->GetShowLogicalConnections());
    api_->ToggleShowLogicalConnection();
    std::vector<std::string> const toggles = Journal::Since(mark);
    EXPECT_EQ(std::count_if(toggles.begin(), toggles.end(),
                            [](std::string const& l) {
                                return l.find(".SetShowLogicalConnection(") != std::string::npos;
                            }),
              2);
    Messages::PumpUntilIdle();

    EXPECT_EQ(observer_->Take(),
              (std::vector<std::string>{"HighlightOnlyVisible true 7", "IsolateOnlyVisible true 1",
                                        "IsolateOnlyVisible false 3"}));
    EXPECT_TRUE(api_->GetHighlightOnlyVisible());
    EXPECT_TRUE(qzref::Inspect(*scene_).GetHighlightOnlyVisible());
    EXPECT_FALSE(api_->GetIsolateOnlyVisible());
    EXPECT_FALSE(qzref::Inspect(*scene_).GetIsolateOnlyVisible());
    EXPECT_FALSE(qzref::Inspect(*scene_).GetShowLogicalConnection());
}

TEST_F(PCBSceneTest, SetSelectedItemsReplacesTheKernelSelectionAndItsLooks) {
    du::SmartPtr<qzk::SelectionManager> manager;
    scene_->GetSelectionManager(manager);
    ASSERT_TRUE(manager);
    api_->SetSelectedItems({Item("U1", IcmApiEcad::COMPONENT)});
    EXPECT_EQ(manager->GetItems(0).size(), 1u);
    EXPECT_EQ(qzref::Inspect(*scene_).GetLookCount(qzk::ecad::BaseScene::SelectionLayer), 1u);

    std::size_t const mark = Journal::Size();
    api_->SetSelectedItems({});
    EXPECT_TRUE(Contains(Journal::Since(mark), ".ApplyItems(0, [], replace)"));
    EXPECT_TRUE(manager->GetItems(0).empty());
    // The scene heard of the empty selection: the selected look is gone.
    EXPECT_EQ(qzref::Inspect(*scene_).GetLookCount(qzk::ecad::BaseScene::SelectionLayer), 0u);
}

TEST_F(PCBSceneTest, ComponentSublayersComeFromTheirLayerAndTheirParts) {
    std::set<SublayerPCBBase> out{SublayerPCBBase(9, 9)};
    api_->GetLayersSublayers({Item("MH1", IcmApiEcad::COMPONENT)}, out);
    // Layer 0: only its parts on sublayers 10, 11, 14, 15 count, not (1,3).
    EXPECT_EQ(out, (std::set<SublayerPCBBase>{SublayerPCBBase(2, 10), SublayerPCBBase(5, 10),
                                              SublayerPCBBase(9, 9)}));

    std::set<SublayerPCBBase> top;
    api_->GetLayersSublayers({Item("R1", IcmApiEcad::COMPONENT), Item("U1", IcmApiEcad::COMPONENT)},
                             top);
    // U1's part on sublayer 33 is passed over; R1 and U1 always count (5,14) and (5,15).
    EXPECT_EQ(top, (std::set<SublayerPCBBase>{SublayerPCBBase(5, 10), SublayerPCBBase(5, 11),
                                              SublayerPCBBase(5, 14), SublayerPCBBase(5, 15)}));
    EXPECT_EQ(IcmApiPublicSession::GetLiveIteratorCount(), 0u);

    std::set<SublayerPCBBase> none;
    api_->GetLayersSublayers({Item("GND", IcmApiEcad::NET), nullptr}, none);
    EXPECT_TRUE(none.empty());
}

// Fault guarded: the layer's own (layer, 14) and (layer, 15) were only counted when a child
// shape lay there; the sample boards' parts all have such shapes.
TEST_F(PCBSceneTest, APartCountsItsLayersComponentSublayersWithoutShapesOnThem) {
    auto scene = MakeBoard(std::string(QZ_TESTDATA_DIR) + "/part-without-silkscreen.json");
    Settle();
    auto* api = Api(scene);
    ASSERT_TRUE(api->IsDesignLoaded());
    auto const& data = api->GetDesignData();
    du::SmartPtr<qzk::SelectionItem> part(
        new qzk::ecad::SelectionItem(data, data->FindObject("Q1", IcmApiEcad::COMPONENT), nullptr,
                                     nullptr, dg::DPoint3D(), 0, 0));
    std::set<SublayerPCBBase> out;
    api->GetLayersSublayers({part}, out);
    EXPECT_EQ(out, (std::set<SublayerPCBBase>{SublayerPCBBase(5, 10), SublayerPCBBase(5, 14),
                                              SublayerPCBBase(5, 15)}));
}

// Fault guarded: loading the colours again kept the user's changes instead of the defaults.
TEST_F(PCBSceneTest, LoadingTheColoursAgainBringsTheDefaultsBackAndItsStepTheChange) {
    SublayerPCB_CVSet const defaults = Own();
    SublayerPCB_CVSet changed;
    for (SublayerPCB_CV entry : defaults) {
        entry.color = 0x01010203;
        entry.visible = !entry.visible;
        changed.insert(entry);
    }
    api_->SetColorVisInfo(changed, nullptr, qzkapp::ecad::ChangeSourceScene);
    ASSERT_TRUE(SublayerPCB_CV::AreDifferent(Own(), defaults));

    du::SmartPtr<qzk::Operation> op(
        new qzk::Operation("load", du::SmartPtr<qzk::Scene>(scene_), false));
    api_->LoadColorVisInfo(op);
    EXPECT_FALSE(SublayerPCB_CV::AreDifferent(Own(), defaults));
    EXPECT_FALSE(SublayerPCB_CV::AreDifferent(qzref::Inspect(*scene_).GetColorVisInfo(), defaults));
    qzk::RecordOperation(op);
    ASSERT_TRUE(qzref::UndoControl::Undo());
    EXPECT_FALSE(SublayerPCB_CV::AreDifferent(Own(), changed));
}

TEST_F(PCBSceneTest, BoardQueriesAnswerFromTheDesign) {
    std::vector<short> order{42};
    api_->GetDefaultDrawOrder(order);
    EXPECT_EQ(order, (std::vector<short>{1, 2, 3, 4, 5, -2}));
    EXPECT_EQ(api_->GetTopLayer(), 5);
    EXPECT_EQ(api_->GetBottomLayer(), 2);
    EXPECT_EQ(api_->GetSublayerLabel(1, 2), L"Board outline");
    EXPECT_EQ(api_->GetSublayerHandle(2, "Silkscreen"), 14);
    EXPECT_EQ(api_->GetSublayerHandle(2, "Nothing"), -1);
    EXPECT_EQ(api_->GetClassType().GetId(), 162u);
    EXPECT_FALSE(api_->GetCVExpandedState("Ecad/PCB/sublayer/-2"));
}

TEST_F(PCBSceneTest, DesignThatIsNoBoardGivesTheFallBacks) {
    auto scene = MakeBoard(Example("three-sheet-schematic.json"));
    Settle();
    auto* api = Api(scene);
    ASSERT_TRUE(api->IsDesignLoaded());
    std::vector<short> order{42};
    api->GetDefaultDrawOrder(order);
    EXPECT_TRUE(order.empty());
    SublayerPCB_CVSet defaults;
    defaults.insert(SublayerPCB_CV(3, 3, 0x01333333, true));
    api->GetDefaultColorVisInfo(defaults, false);
    EXPECT_EQ(defaults.size(), 1u);
    api->GetColorVisInfo(defaults);
    EXPECT_TRUE(defaults.empty());
    EXPECT_EQ(api->GetTopLayer(), 4);
    EXPECT_EQ(api->GetBottomLayer(), 0);
    EXPECT_EQ(api->GetSublayerLabel(1, 2), L"");
    EXPECT_EQ(api->GetSublayerHandle(2, "Silkscreen"), -1);
}

TEST_F(PCBSceneTest, ObserverDecodesBoardEventsAndIgnoresLaterTags) {
    unsigned char const first = qzkapp::ecad::PCBScene::GetBaseEventId();
    auto message = [](auto push) {
        dom::ObserverProxy proxy;
        proxy.Begin();
        push(proxy);
        proxy.End();
        return proxy.TakeMessage();
    };
    RecordingObserver observer;
    auto deliver = [&](unsigned char tag, dom::MessageData const& data) {
        dom::MessageReader reader(data);
        observer.HandleEvent(tag, reader);
    };

    deliver(first + 3, message([](dom::ObserverProxy& p) { p.PushUInt32Value(0x0001FFA6u); }));
    deliver(first, message([](dom::ObserverProxy& p) {
                p.PushUInt32Value(5);
                p.PushBooleanValue(true);
            }));
    deliver(first + 5, message([](dom::ObserverProxy& p) { p.PushUInt32Value(1); }));
    EXPECT_EQ(observer.Take(),
              (std::vector<std::string>{"Rotation -90", "HighlightOnlyVisible true 5"}));

    auto error = [&](unsigned char tag, dom::MessageData const& data) {
        try {
            deliver(tag, data);
        } catch (std::runtime_error const& e) {
            return std::string(e.what());
        }
        return std::string("no error");
    };
    auto const sourceOnly = message([](dom::ObserverProxy& p) { p.PushUInt32Value(5); });
    auto const empty = message([](dom::ObserverProxy&) {});
    EXPECT_EQ(error(first + 4, sourceOnly), "Failed to retrieve the Only Visible value");
    EXPECT_EQ(error(first, empty), "Failed to retrieve the ChangeSource value");
    EXPECT_EQ(error(first + 2, empty), "Failed to retrieve orientation");
    EXPECT_EQ(error(first + 3, empty), "Failed to retrieve rotation");
    EXPECT_EQ(error(first + 1, empty), "Failed to retrieve the change source");
    EXPECT_TRUE(observer.Calls().empty());
}

} // namespace
} // namespace qztest
