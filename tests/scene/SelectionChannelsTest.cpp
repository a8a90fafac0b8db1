// The order in which the selection channels and the highlight operations write looks: what is
// written last wins a shared appearance layer, and what a removal wiped is written again.
#include "SceneFixture.h"

#include "dg/DMat33.h"
#include "dg/DPoint2D.h"
#include "qzk/Annotation.h"
#include "qzk/ObjectSelectionItem.h"
#include "qzk/Operation.h"
#include "qzk/View2D.h"
#include "qzk/ecad/EcadPCBData.h"
#include "qzk/ecad/Overlay.h"
#include "qzk/ecad/OverlaySelectionItem.h"
#include "qzk/ecad/PCBView.h"
#include "qzref/Inspect.h"

namespace scenetest {
namespace {

using Layer = qzk::ecad::BaseScene::AppearanceLayer;
using Lines = std::vector<std::string>;
using Items = std::vector<du::SmartPtr<qzk::SelectionItem>>;

char const* const kSelectionKey = "General/Navigation/highlight_color";
char const* const kPreselectionKey = "General/Navigation/preselection_color";
char const* const kSecondaryKey = "General/Navigation/secondary_color";
char const* const kHighlightingKey = "General/Navigation/enable_preselection_highlighting";

class SelectionChannels : public SceneTest {
protected:
    void SetUp() override {
        SceneTest::SetUp();
        qzref::PreferencesControl::SetColorWord(kSelectionKey, 0x010000FF);
        qzref::PreferencesControl::SetColorWord(kPreselectionKey, 0x0100FF00);
        qzref::PreferencesControl::SetColorWord(kSecondaryKey, 0x01FF0000);
        qzref::PreferencesControl::SetBool(kHighlightingKey, true);
        qzref::PreferencesControl::NotifyChanged();
        qzref::Messages::PumpUntilIdle();
        scene->RegisterObserver(recorder);
        recorder.Take();
        qzref::UndoControl::Clear();
        qzref::Journal::Clear();
    }
    void TearDown() override {
        scene->UnregisterObserver(recorder);
        SceneTest::TearDown();
    }
    void Channel(unsigned int channel, bool clear, Items const& removed, Items const& added) {
        scene->OnSelectionChanged(channel, clear, removed, added);
    }
    // The appearance calls since the journal was last cleared; clears it.
    Lines Looks() {
        Lines out = Calls({"BeginAppearanceUpdate", "ClearItemAppearance",
                           "SetItemSelectionAppearance", "SetItemHighlightAppearance",
                           "SetDefaultSelectionAppearance", "EndAppearanceUpdate", "AddStep",
                           "RecordOperation", "PostObservableEvent", "SetViewsDirty"});
        qzref::Journal::Clear();
        return out;
    }
    unsigned int Shown(du::SmartPtr<qzk::SelectionItem> const& item, Layer layer) const {
        qzk::ecad::BaseScene::Look look;
        return qzref::Inspect(*kernel).GetLook(Look(item), layer, look) ? look.color : 0;
    }
    void SetPreference(char const* key, bool value) {
        qzref::PreferencesControl::SetBool(key, value);
        qzref::PreferencesControl::NotifyChanged();
        qzref::Messages::PumpUntilIdle();
    }
    du::SmartPtr<qzk::Operation> NewOperation() const {
        return du::SmartPtr<qzk::Operation>(
            new qzk::Operation("highlight", du::SmartPtr<qzk::Scene>(kernel), false));
    }
    static std::string Event(unsigned char id) {
        return "PostObservableEvent(" + std::to_string(id) + ")";
    }

    Recorder recorder;
};

TEST_F(SelectionChannels, SelectionClearsFirstAndThenWritesEverySelectedEntry) {
    auto u1 = Item("U1");
    auto r1 = Item("R1");
    Channel(0, false, {}, {u1});
    Looks();
    Channel(0, true, {}, {r1});
    EXPECT_EQ(Looks(), (Lines{"BeginAppearanceUpdate()", "ClearItemAppearance(U1, false)",
                              "SetItemSelectionAppearance(R1, 0x010000FF, false, false)",
                              "EndAppearanceUpdate()"}));
    Channel(0, false, {r1}, {u1});
    EXPECT_EQ(Looks(), (Lines{"BeginAppearanceUpdate()", "ClearItemAppearance(R1, false)",
                              "SetItemSelectionAppearance(U1, 0x010000FF, false, false)",
                              "EndAppearanceUpdate()"}));
    EXPECT_EQ(Shown(r1, Layer::SelectionLayer), 0u);
}

// Fault guarded: clearing the preselection left an object that is also selected bare, or in the
// preselection colour.
TEST_F(SelectionChannels, PreselectionEndingGivesSelectedObjectsTheirSelectionLookBack) {
    auto u1 = Item("U1");
    auto r1 = Item("R1");
    Channel(0, false, {}, {u1});
    Channel(1, false, {}, {u1, r1});
    EXPECT_EQ(Shown(u1, Layer::SelectionLayer), 0x0100FF00u);
    Looks();
    Channel(1, true, {}, {});
    EXPECT_EQ(Shown(u1, Layer::SelectionLayer), 0x010000FFu);
    EXPECT_EQ(Shown(r1, Layer::SelectionLayer), 0u);
    Lines const cleared = Looks();
    ASSERT_EQ(cleared.size(), 6u);
    EXPECT_EQ(cleared[3], "SetDefaultSelectionAppearance(0x010000FF, false)");
    EXPECT_EQ(cleared[4], "SetItemSelectionAppearance(U1, 0x010000FF, false, false)");

    // Through removed: the entry is cleared, then the selected ones are written once.
    Channel(1, false, {}, {u1, r1});
    Looks();
    Channel(1, false, {u1, r1}, {});
    EXPECT_EQ(Looks(), (Lines{"BeginAppearanceUpdate()", "ClearItemAppearance(U1, false)",
                              "ClearItemAppearance(R1, false)",
                              "SetItemSelectionAppearance(U1, 0x010000FF, false, false)",
                              "EndAppearanceUpdate()"}));
    EXPECT_EQ(Shown(u1, Layer::SelectionLayer), 0x010000FFu);
}

// Fault guarded: preselecting with highlighting off showed the look, or turning it on later did
// not show what was preselected meanwhile.
TEST_F(SelectionChannels, PreselectionHighlightingTurnedOnShowsWhatWasPreselectedWhileOff) {
    auto r1 = Item("R1");
    SetPreference(kHighlightingKey, false);
    Looks();
    Channel(1, false, {}, {r1});
    EXPECT_EQ(Looks(), (Lines{"BeginAppearanceUpdate()", "EndAppearanceUpdate()"}));
    EXPECT_EQ(Shown(r1, Layer::SelectionLayer), 0u);

    // Another preference changing does not show it.
    qzref::PreferencesControl::SetColorWord(kSelectionKey, 0x01000080);
    qzref::PreferencesControl::NotifyChanged();
    qzref::Messages::PumpUntilIdle();
    EXPECT_EQ(Shown(r1, Layer::SelectionLayer), 0u);

    SetPreference(kHighlightingKey, true);
    EXPECT_EQ(Shown(r1, Layer::SelectionLayer), 0x0100FF00u);
    Looks();
    // Turned off again: nothing is written, the look stays until the entry leaves.
    SetPreference(kHighlightingKey, false);
    EXPECT_EQ(Looks(), (Lines{"BeginAppearanceUpdate()", "EndAppearanceUpdate()"}));
    EXPECT_EQ(Shown(r1, Layer::SelectionLayer), 0x0100FF00u);
}

// Fault guarded: removing an associated highlight cleared the selection layer, so a selected
// object lost its selection look.
TEST_F(SelectionChannels, AssociatedRemovalClearsOnlyTheHighlightLayerAndRewritesHighlights) {
    auto u1 = Item("U1");
    auto r1 = Item("R1");
    Channel(0, false, {}, {r1});
    scene->Highlight({u1}, du::SmartPtr<qzk::Operation>());
    scene->SetHighlightColor(0x01ABCDEF); // stored entries keep the old colour
    Looks();
    Channel(4, false, {}, {r1});
    EXPECT_EQ(
        Looks(),
        (Lines{"BeginAppearanceUpdate()", "SetItemHighlightAppearance(U1, 0x01ABCDEF, false)",
               "SetItemHighlightAppearance(R1, 0x01FF0000, false)", "EndAppearanceUpdate()"}));
    Channel(4, false, {r1}, {});
    EXPECT_EQ(Looks(), (Lines{"BeginAppearanceUpdate()", "ClearItemAppearance(R1, true)",
                              "SetItemHighlightAppearance(U1, 0x01ABCDEF, false)",
                              "EndAppearanceUpdate()"}));
    EXPECT_EQ(Shown(r1, Layer::SelectionLayer), 0x010000FFu);
    EXPECT_EQ(Shown(r1, Layer::HighlightLayer), 0u);

    // A clear ignores removed and wipes every associated entry.
    Channel(4, false, {}, {r1, u1});
    Looks();
    Channel(4, true, {Item("C1")}, {});
    Lines const cleared = Looks();
    EXPECT_EQ(std::count(cleared.begin(), cleared.end(), "ClearItemAppearance(C1, true)"), 0);
    EXPECT_EQ(std::count(cleared.begin(), cleared.end(), "ClearItemAppearance(R1, true)"), 1);
    EXPECT_EQ(Shown(u1, Layer::HighlightLayer), 0x01ABCDEFu);
    EXPECT_TRUE(scene->Associated().empty());
}

TEST_F(SelectionChannels, AColourChangeRewritesEachChannelItNames) {
    auto u1 = Item("U1");
    auto r1 = Item("R1");
    Channel(0, false, {}, {u1});
    Channel(1, false, {}, {r1});
    Channel(4, false, {}, {r1});
    Looks();
    qzref::PreferencesControl::SetColorWord(kSecondaryKey, 0x01101010);
    qzref::PreferencesControl::NotifyChanged();
    qzref::Messages::PumpUntilIdle();
    EXPECT_EQ(
        Looks(),
        (Lines{Event(scene->ASSOCHIGHLIGHTCOLOR_CHANGED_EVENT()), "BeginAppearanceUpdate()",
               "SetItemHighlightAppearance(R1, 0x01101010, false)", "EndAppearanceUpdate()"}));
    qzref::PreferencesControl::SetColorWord(kPreselectionKey, 0x01202020);
    qzref::PreferencesControl::SetColorWord(kSelectionKey, 0x01303030);
    qzref::PreferencesControl::NotifyChanged();
    qzref::Messages::PumpUntilIdle();
    EXPECT_EQ(Looks(), (Lines{"BeginAppearanceUpdate()",
                              "SetItemSelectionAppearance(U1, 0x01303030, false, false)",
                              "SetItemSelectionAppearance(R1, 0x01202020, false, false)",
                              "EndAppearanceUpdate()"}));
    // Refused, the rewrite goes on and the bracket is still closed.
    qzref::Inspect(*kernel).SetRefuseAppearanceUpdate(true);
    qzref::PreferencesControl::SetColorWord(kSelectionKey, 0x01404040);
    qzref::PreferencesControl::NotifyChanged();
    qzref::Messages::PumpUntilIdle();
    qzref::Inspect(*kernel).SetRefuseAppearanceUpdate(false);
    EXPECT_EQ(Shown(u1, Layer::SelectionLayer), 0x01404040u);
}

TEST_F(SelectionChannels, OverlaysAndAnnotationsAnswerInTheirOwnWays) {
    auto board = du::DynamicCast<qzk::ecad::EcadPCBData>(design);
    ASSERT_TRUE(board);
    auto area = kernel->CreateOverlay(board, 7, true, dg::Color(0x01000000u, true), 2, dg::DMat33(),
                                      dg::DPoint2D(), L"area");
    auto layerOverlay = kernel->CreateOverlay(board, 8, true, dg::Color(0x01000000u, true), 1,
                                              dg::DMat33(), dg::DPoint2D(), L"board");
    du::SmartPtr<qzk::SelectionItem> inArea(new qzk::ecad::OverlaySelectionItem(area, 3));
    du::SmartPtr<qzk::SelectionItem> inBoard(new qzk::ecad::OverlaySelectionItem(layerOverlay, 4));

    Channel(0, false, {}, {inArea, inBoard});
    ASSERT_EQ(qzref::Inspect(*area).GetMarks().size(), 1u);
    EXPECT_EQ(qzref::Inspect(*area).GetMarks()[0].color,
              0x010000FFu); // an area takes the selection colour
    ASSERT_EQ(qzref::Inspect(*layerOverlay).GetMarks().size(), 1u);
    EXPECT_EQ(qzref::Inspect(*layerOverlay).GetMarks()[0].color, 0x01000000u);

    // A preselection leaving an area item drops its whole selection, a real one too.
    Channel(1, false, {}, {inArea});
    Channel(1, false, {inArea}, {});
    EXPECT_TRUE(qzref::Inspect(*area).GetMarks().empty());
    // The area stayed among the selected overlays: a selection clear still reaches it (here
    // dropping a new preselection), and leaves the board overlay alone.
    Channel(1, false, {}, {inArea});
    ASSERT_EQ(qzref::Inspect(*area).GetMarks().size(), 1u);
    Channel(0, true, {}, {});
    EXPECT_TRUE(qzref::Inspect(*area).GetMarks().empty());
    EXPECT_EQ(qzref::Inspect(*layerOverlay).GetMarks().size(), 1u);

    // An annotation is selected in the first view of its class; none fits: not selected.
    auto plain = qzk::View2D::Create(*kernel, 1);
    auto boardView = qzk::ecad::PCBView::Create(*kernel, 1);
    auto inBoardView = qzk::Annotation::Create(1, boardView->GetClassType().GetId());
    auto nowhere = qzk::Annotation::Create(2, 4242);
    Channel(0, false, {},
            {du::SmartPtr<qzk::SelectionItem>(new qzk::ObjectSelectionItem(inBoardView)),
             du::SmartPtr<qzk::SelectionItem>(new qzk::ObjectSelectionItem(nowhere))});
    EXPECT_EQ(qzref::Inspect(*inBoardView).GetSelectedView().Get(), boardView.Get());
    EXPECT_EQ(qzref::Inspect(*inBoardView).GetSelectedInSceneCount(), 1u);
    EXPECT_FALSE(qzref::Inspect(*nowhere).IsSelected());
    EXPECT_EQ(qzref::Inspect(*nowhere).GetSelectedInSceneCount(), 0u);
    // A clear deselects in view 0 whatever view the annotation was selected in.
    qzref::Journal::Clear();
    Channel(0, true, {}, {});
    EXPECT_FALSE(qzref::Inspect(*inBoardView).IsSelected());
    EXPECT_EQ(Calls({"SetSelected"}),
              Lines{"SetSelected(false, " + std::string(plain->GetObjectName().str()) + ")"});
    EXPECT_EQ(qzref::Inspect(*inBoardView).GetDeselectedInSceneCount(), 1u);
}

TEST_F(SelectionChannels, HighlightOperationsWriteRecordAndPostInTheirOrder) {
    auto u1 = Item("U1");
    auto r1 = Item("R1");
    scene->Highlight({u1}, du::SmartPtr<qzk::Operation>());
    Channel(4, false, {}, {r1});
    Looks();
    std::string const hl = Event(scene->HIGHLIGHT_CHANGED_EVENT());

    scene->Highlight({r1}, NewOperation());
    EXPECT_EQ(Looks(), (Lines{"BeginAppearanceUpdate()",
                              "AddStep(\"highlight\", QzkappEcadHlightIsolateOperationStep)",
                              "RecordOperation(\"highlight\")", "ClearItemAppearance(U1, true)",
                              "SetItemHighlightAppearance(R1, 0x01FFFFFF, false)",
                              "EndAppearanceUpdate()", hl, "SetViewsDirty()"}));
    // R1 is associated too, and Highlight does not write associated looks again.
    EXPECT_EQ(Shown(r1, Layer::HighlightLayer), 0x01FFFFFFu);

    scene->SetHighlightColor(0x01123456);
    scene->AddToHighlights({u1}, du::SmartPtr<qzk::Operation>());
    Looks();
    scene->Dehighlight({Item("C1")}, du::SmartPtr<qzk::Operation>());
    Lines const dehighlight = Looks();
    ASSERT_EQ(dehighlight.size(), 8u);
    EXPECT_EQ(dehighlight[1], "ClearItemAppearance(C1, true)");
    // The stored colours, then the associated one, then the bracket's end and the event.
    EXPECT_EQ(std::count(dehighlight.begin(), dehighlight.end(),
                         "SetItemHighlightAppearance(U1, 0x01123456, false)"),
              1);
    EXPECT_EQ(std::count(dehighlight.begin(), dehighlight.end(),
                         "SetItemHighlightAppearance(R1, 0x01FFFFFF, false)"),
              1);
    EXPECT_EQ(dehighlight[4], "SetItemHighlightAppearance(R1, 0x01FF0000, false)");
    EXPECT_EQ(dehighlight[5], "EndAppearanceUpdate()");
    EXPECT_EQ(dehighlight[6], hl);

    scene->ClearHighlights(du::SmartPtr<qzk::Operation>());
    Lines const clear = Looks();
    ASSERT_EQ(clear.size(), 7u);
    EXPECT_EQ(clear[3], "SetItemHighlightAppearance(R1, 0x01FF0000, false)");
    EXPECT_EQ(Shown(r1, Layer::HighlightLayer), 0x01FF0000u);
    EXPECT_EQ(recorder.Take(),
              (Lines{"highlight 1", "highlight 1", "highlight 2", "highlight 2", "highlight 0"}));
}

// Fault guarded: restoring an empty set after highlights posted nothing, so a host kept showing
// the old count (the way back from a first highlight is such a restore).
TEST_F(SelectionChannels, RestoringAnEmptySetOverHighlightsPostsZero) {
    auto op = NewOperation();
    scene->Highlight({Item("U1")}, op);
    recorder.Take();
    ASSERT_TRUE(qzref::UndoControl::Undo());
    EXPECT_EQ(recorder.Take(), Lines{"highlight 0"});
    EXPECT_EQ(qzref::Inspect(*kernel).GetLookCount(Layer::HighlightLayer), 0u);
    ASSERT_TRUE(qzref::UndoControl::Redo());
    EXPECT_EQ(recorder.Take(), Lines{"highlight 1"});

    scene->SetItems(qzk::ecad::ItemContainer<qzk::ecad::HighlightItem>(), false);
    EXPECT_EQ(recorder.Take(), Lines{"highlight 0"});
    // Nothing to clear and nothing to set: silent.
    scene->SetItems(qzk::ecad::ItemContainer<qzk::ecad::HighlightItem>(), true);
    EXPECT_TRUE(recorder.Take().empty());
}

} // namespace
} // namespace scenetest
