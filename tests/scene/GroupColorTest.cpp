// Group colours and visibility, the fill and overlap switches, and their undo.
#include "SceneFixture.h"

#include "qzk/Operation.h"
#include "qzref/Inspect.h"

namespace scenetest {
namespace {

using qzk::ecad::GroupCVInfo;
using qzk::ecad::GroupCVInfoSet;
using qzkapp::ecad::GroupInfo;

class GroupColors : public SceneTest {
protected:
    void SetUp() override {
        SceneTest::SetUp();
        scene->RegisterObserver(recorder);
        recorder.Take();
    }
    void TearDown() override {
        scene->UnregisterObserver(recorder);
        SceneTest::TearDown();
    }
    static GroupCVInfoSet Colors(std::initializer_list<GroupCVInfo> entries) {
        GroupCVInfoSet set(false);
        set.insert(entries.begin(), entries.end());
        return set;
    }
    unsigned int ColorOf(char const* group) const {
        GroupCVInfoSet groups(false);
        scene->GetGroupColorVisInfo(groups);
        auto found = groups.find(GroupCVInfo(group));
        return found == groups.end() ? 0 : found->color;
    }
    du::SmartPtr<qzk::Operation> NewOperation() {
        return du::SmartPtr<qzk::Operation>(
            new qzk::Operation("groups", du::SmartPtr<qzk::Scene>(kernel), false));
    }
    std::vector<GroupInfo> const groups = {
        GroupInfo("power", false, dg::Color(0x010000FFu, true)),
        GroupInfo("analog", true, dg::Color(0x0100FF00u, true)),
    };
    Recorder recorder;
};

TEST_F(GroupColors, ColoursThatComeFirstWaitForTheGroupsAndALoadedDesign) {
    scene->UpdateGroupCV(Colors({GroupCVInfo("power", 0x01DC0000, true)}),
                         qzkapp::ecad::ChangeSourceScene);
    EXPECT_EQ(scene->Pending().size(), 1u);
    EXPECT_TRUE(recorder.Take().empty());

    // No design yet: the colours are merged, but kept for the next list, and nobody is told.
    scene->UpdateGroups(groups);
    EXPECT_EQ(scene->Pending().size(), 1u);
    EXPECT_EQ(ColorOf("power"), 0x01DC0000u);
    EXPECT_EQ(ColorOf("analog"), 0x0100FF00u);
    EXPECT_TRUE(recorder.Take().empty());

    scene->designLoaded = true;
    qzref::Journal::Clear();
    std::vector<GroupInfo> more = groups;
    more.emplace_back("digital", false, dg::Color(0x01FF0000u, true));
    scene->UpdateGroups(more);
    EXPECT_TRUE(scene->Pending().empty());
    EXPECT_EQ(ColorOf("power"), 0x01DC0000u);
    EXPECT_EQ(Calls({"ClearGroupAppearances"}),
              std::vector<std::string>{"ClearGroupAppearances(2)"});
    EXPECT_EQ(recorder.Take(), std::vector<std::string>{"groups 1"});

    // The same list again changes nothing: no event and no look dropped.
    qzref::Journal::Clear();
    scene->UpdateGroups(more);
    EXPECT_TRUE(recorder.Take().empty());
    EXPECT_TRUE(Calls({"ClearGroupAppearances"}).empty());
}

TEST_F(GroupColors, AnObjectInTwoGroupsShowsTheOverlapColour) {
    scene->designLoaded = true;
    scene->UpdateGroups(groups);
    auto u1 = Item("U1");
    scene->OnGroupContentAdded("power", {u1, Item("R1")});
    scene->OnGroupContentAdded("analog", {u1});
    dg::Color overlap;
    kernel->GetGroupOverlapColor(overlap);
    qzk::ecad::BaseScene::Look look;
    ASSERT_TRUE(qzref::Inspect(*kernel).GetLook(Look(u1), qzk::ecad::BaseScene::GroupLayer, look));
    EXPECT_EQ(look.color, overlap.GetAsHexUI());
    ASSERT_TRUE(
        qzref::Inspect(*kernel).GetLook(Look(Item("R1")), qzk::ecad::BaseScene::GroupLayer, look));
    EXPECT_EQ(look.color, 0x010000FFu);

    qzref::Journal::Clear();
    scene->OnGroupContentAdded("nobody", {u1});
    EXPECT_TRUE(qzref::Journal::Lines().empty());

    // Members leaving: the layer is cleared whatever the list says.
    scene->OnGroupContentDeleted({});
    EXPECT_EQ(qzref::Inspect(*kernel).GetLookCount(qzk::ecad::BaseScene::GroupLayer), 0u);
    recorder.Take();
    scene->OnGroupContentDeleted({});
    EXPECT_EQ(recorder.Take(), std::vector<std::string>{"groups 2"});
}

TEST_F(GroupColors, UndoOfAGroupChangePostsOnlyWhenTheMergeChangedSomething) {
    scene->designLoaded = true;
    scene->UpdateGroups(groups);
    recorder.Take();
    auto op = NewOperation();
    scene->ApplyGroupColorVisInfo(Colors({GroupCVInfo("power", 0x01123456, true)}), op);
    EXPECT_EQ(ColorOf("power"), 0x01123456u);
    EXPECT_EQ(recorder.Take(), std::vector<std::string>{"groups 1"});
    qzk::RecordOperation(op);
    ASSERT_TRUE(qzref::UndoControl::Undo());
    EXPECT_EQ(ColorOf("power"), 0x010000FFu);
    EXPECT_EQ(recorder.Take(), std::vector<std::string>{"groups 3"});
    ASSERT_TRUE(qzref::UndoControl::Redo());
    EXPECT_EQ(ColorOf("power"), 0x01123456u);
    EXPECT_EQ(recorder.Take(), std::vector<std::string>{"groups 3"});

    // A merge that finds nothing new is silent.
    scene->UpdateGroupCV(Colors({GroupCVInfo("power", 0x01123456, true)}),
                         qzkapp::ecad::ChangeSourceUndo);
    EXPECT_TRUE(recorder.Take().empty());

    // The reset to defaults goes back to the colours the groups came with.
    scene->LoadColorVisInfo(du::SmartPtr<qzk::Operation>());
    EXPECT_EQ(ColorOf("power"), 0x010000FFu);
    EXPECT_EQ(recorder.Take(), std::vector<std::string>{"groups 1"});

    // Replacing the whole set posts the caller's source, even with nothing different.
    GroupCVInfoSet present(false);
    scene->GetGroupColorVisInfo(present);
    scene->SetGroupColorVisInfo(present, du::SmartPtr<qzk::Operation>(),
                                static_cast<qzkapp::ecad::ChangeSource>(7));
    EXPECT_EQ(recorder.Take(), std::vector<std::string>{"groups 7"});
}

// Fault guarded: the step of a whole-set replacement held the new colours, so undo kept them.
TEST_F(GroupColors, UndoOfAReplacedSetBringsTheFormerColoursBack) {
    scene->designLoaded = true;
    scene->UpdateGroups(groups);
    auto op = NewOperation();
    scene->SetGroupColorVisInfo(
        Colors({GroupCVInfo("power", 0x01123456, true), GroupCVInfo("analog", 0x01654321, false)}),
        op, qzkapp::ecad::ChangeSourceScene);
    EXPECT_EQ(ColorOf("power"), 0x01123456u);
    qzk::RecordOperation(op);
    ASSERT_TRUE(qzref::UndoControl::Undo());
    EXPECT_EQ(ColorOf("power"), 0x010000FFu);
    EXPECT_EQ(ColorOf("analog"), 0x0100FF00u);
    ASSERT_TRUE(qzref::UndoControl::Redo());
    EXPECT_EQ(ColorOf("analog"), 0x01654321u);
}

TEST_F(GroupColors, SwitchesRecordOnlyRealChangesAndOverlapNever) {
    auto op = NewOperation();
    scene->LoadColorVisInfo(op); // no groups: nothing at all
    scene->SetFillShapes(false, op);
    scene->ToggleOverlapColor(op);
    EXPECT_EQ(qzref::Inspect(*op).GetStepCount(), 0u);
    EXPECT_TRUE(scene->GetOverlapColor());
    EXPECT_TRUE(qzref::Inspect(*kernel).GetOverlapColor());

    scene->SetFillShapes(true, op);
    EXPECT_EQ(qzref::Inspect(*op).GetStepCount(), 1u);
    EXPECT_TRUE(qzref::Inspect(*kernel).GetFillShapes());
    qzk::RecordOperation(op);
    ASSERT_TRUE(qzref::UndoControl::Undo());
    EXPECT_FALSE(scene->GetFillShapes());
    EXPECT_FALSE(qzref::Inspect(*kernel).GetFillShapes());
    ASSERT_TRUE(qzref::UndoControl::Redo());
    EXPECT_TRUE(scene->GetFillShapes());
    EXPECT_TRUE(recorder.Take().empty()); // the switches post nothing
}

} // namespace
} // namespace scenetest
