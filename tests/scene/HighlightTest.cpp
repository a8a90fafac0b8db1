// Highlights and the selection channels that share the kernel's appearance layers.
#include "SceneFixture.h"

#include "qzk/ObjectSelectionItem.h"
#include "qzk/Operation.h"
#include "qzref/Inspect.h"

namespace scenetest {
namespace {

using Layer = qzk::ecad::BaseScene::AppearanceLayer;

class Highlights : public SceneTest {
protected:
    void SetUp() override {
        SceneTest::SetUp();
        scene->RegisterObserver(recorder);
        recorder.Take();
        qzref::UndoControl::Clear();
    }
    void TearDown() override {
        scene->UnregisterObserver(recorder);
        SceneTest::TearDown();
    }
    du::SmartPtr<qzk::Operation> NewOperation() {
        return du::SmartPtr<qzk::Operation>(
            new qzk::Operation("highlight", du::SmartPtr<qzk::Scene>(kernel), false));
    }
    unsigned int ShownColor(du::SmartPtr<qzk::SelectionItem> const& item, Layer layer) {
        qzk::ecad::BaseScene::Look look;
        return qzref::Inspect(*kernel).GetLook(Look(item), layer, look) ? look.color : 0;
    }
    Recorder recorder;
};

TEST_F(Highlights, HighlightSkipsForeignItemsAndUndoSwapsTheWholeSet) {
    auto u1 = Item("U1");
    auto r1 = Item("R1");
    scene->Highlight({}, NewOperation());
    EXPECT_EQ(qzref::UndoControl::GetUndoCount(), 0u);

    du::SmartPtr<qzk::SelectionItem> foreign(new qzk::ObjectSelectionItem(kernel));
    scene->Highlight({u1, nullptr, foreign}, NewOperation());
    EXPECT_EQ(recorder.Take(), std::vector<std::string>{"highlight 1"});
    EXPECT_EQ(ShownColor(u1, Layer::HighlightLayer), 0x01FFFFFFu);

    scene->Highlight({r1}, NewOperation());
    EXPECT_FALSE(scene->IsHighlighted(du::DynamicCast<qzk::ecad::SelectionItem>(u1)));
    EXPECT_EQ(ShownColor(u1, Layer::HighlightLayer), 0u);
    recorder.Take();

    ASSERT_TRUE(qzref::UndoControl::Undo());
    EXPECT_TRUE(scene->IsHighlighted(du::DynamicCast<qzk::ecad::SelectionItem>(u1)));
    EXPECT_FALSE(scene->IsHighlighted(du::DynamicCast<qzk::ecad::SelectionItem>(r1)));
    EXPECT_EQ(recorder.Take(), std::vector<std::string>{"highlight 1"});
    ASSERT_TRUE(qzref::UndoControl::Redo());
    EXPECT_TRUE(scene->IsHighlighted(du::DynamicCast<qzk::ecad::SelectionItem>(r1)));
    EXPECT_EQ(qzref::UndoControl::GetUndoCount(), 2u);
}

TEST_F(Highlights, CountsThatDoNotChangeStillPostAndAnEmptyClearStaysQuiet) {
    auto u1 = Item("U1");
    scene->ClearHighlights(NewOperation());
    EXPECT_EQ(qzref::UndoControl::GetUndoCount(), 1u); // a step, even with nothing to clear
    EXPECT_TRUE(recorder.Take().empty());

    scene->AddToHighlights({u1}, du::SmartPtr<qzk::Operation>());
    scene->AddToHighlights({u1}, du::SmartPtr<qzk::Operation>()); // counted again
    scene->Dehighlight({Item("C1")}, du::SmartPtr<qzk::Operation>());
    EXPECT_EQ(recorder.Take(),
              (std::vector<std::string>{"highlight 1", "highlight 1", "highlight 1"}));
}

TEST_F(Highlights, StoredColoursComeBackOnDehighlightAndThePresentOneOnAssociatedChanges) {
    auto u1 = Item("U1");
    auto r1 = Item("R1");
    auto c1 = Item("C1");
    scene->Highlight({u1, r1}, du::SmartPtr<qzk::Operation>());
    scene->SetHighlightColor(0x010000FF);
    EXPECT_EQ(ShownColor(u1, Layer::HighlightLayer), 0x01FFFFFFu); // the old look stays

    scene->AddToHighlights({c1}, du::SmartPtr<qzk::Operation>());
    scene->Dehighlight({c1}, du::SmartPtr<qzk::Operation>());
    EXPECT_EQ(ShownColor(u1, Layer::HighlightLayer), 0x01FFFFFFu);

    // An associated highlight leaving rewrites highlights in the scene's present colour.
    scene->OnSelectionChanged(4, false, {}, {u1});
    EXPECT_EQ(ShownColor(u1, Layer::HighlightLayer), scene->Secondary().GetAsHexUI());
    scene->OnSelectionChanged(4, false, {u1}, {});
    EXPECT_EQ(ShownColor(u1, Layer::HighlightLayer), 0x010000FFu);
    EXPECT_EQ(ShownColor(r1, Layer::HighlightLayer), 0x010000FFu);

    // After a clear, an associated object keeps the associated colour.
    scene->OnSelectionChanged(4, false, {}, {r1});
    scene->ClearHighlights(du::SmartPtr<qzk::Operation>());
    EXPECT_EQ(ShownColor(r1, Layer::HighlightLayer), scene->Secondary().GetAsHexUI());
    EXPECT_EQ(ShownColor(u1, Layer::HighlightLayer), 0u);
}

TEST_F(Highlights, ARefusedBracketChangesNothingAndRecordsNothing) {
    qzref::Inspect(*kernel).SetRefuseAppearanceUpdate(true);
    scene->Highlight({Item("U1")}, NewOperation());
    scene->OnSelectionChanged(0, false, {}, {Item("U1")});
    qzref::Inspect(*kernel).SetRefuseAppearanceUpdate(false);
    EXPECT_EQ(qzref::UndoControl::GetUndoCount(), 0u);
    EXPECT_TRUE(recorder.Take().empty());
    EXPECT_EQ(qzref::Inspect(*kernel).GetUnbalancedEndCount(), 0u);
    EXPECT_EQ(qzref::Inspect(*kernel).GetLookCount(Layer::HighlightLayer), 0u);
    EXPECT_EQ(qzref::Inspect(*kernel).GetLookCount(Layer::SelectionLayer), 0u);
}

TEST_F(Highlights, SelectionRewritesEveryEntryAndPreselectionGivesTheSelectionLookBack) {
    qzref::PreferencesControl::SetColorWord("General/Navigation/highlight_color", 0x010000FF);
    qzref::PreferencesControl::SetColorWord("General/Navigation/preselection_color", 0x0100FF00);
    qzref::PreferencesControl::NotifyChanged();
    qzref::Messages::PumpUntilIdle();
    auto u1 = Item("U1");
    auto r1 = Item("R1");
    scene->OnSelectionChanged(0, false, {}, {u1});
    qzref::Journal::Clear();
    // Removal runs first, so an item both removed and added ends up selected.
    scene->OnSelectionChanged(0, false, {u1}, {u1, r1});
    EXPECT_EQ(Calls({"SetItemSelectionAppearance"}).size(), 2u);
    EXPECT_EQ(ShownColor(u1, Layer::SelectionLayer), 0x010000FFu);

    scene->OnSelectionChanged(1, false, {}, {u1});
    EXPECT_EQ(ShownColor(u1, Layer::SelectionLayer), 0x0100FF00u);
    scene->OnSelectionChanged(1, false, {u1}, {});
    EXPECT_EQ(ShownColor(u1, Layer::SelectionLayer), 0x010000FFu);

    // A clear with nothing in it clears all the selection writes nothing.
    qzref::Journal::Clear();
    scene->OnSelectionChanged(0, true, {}, {});
    EXPECT_EQ(qzref::Inspect(*kernel).GetLookCount(Layer::SelectionLayer), 0u);
    EXPECT_TRUE(Calls({"SetItemSelectionAppearance"}).empty());
    // Other channels lock and do nothing.
    qzref::Journal::Clear();
    scene->OnSelectionChanged(2, false, {}, {u1});
    EXPECT_TRUE(qzref::Journal::Lines().empty());
}

} // namespace
} // namespace scenetest
