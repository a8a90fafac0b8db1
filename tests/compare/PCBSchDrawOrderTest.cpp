// The two draw orders of the board-against-schematic compare: each side's moves, previews,
// resets, applied orders and inversion reach only that side's list, kernel call and event, and
// undo and redo through the steps of that side.
#include "compare/PCBSchCompareHarness.h"

#include "du/StringConversion.h"
#include "qzk/OperationStep.h"

namespace qztest {
namespace {

using qzref::Journal;
using qzref::Messages;
using qzref::UndoControl;

class PCBSchDrawOrderTest : public BoardSchematicTest {
protected:
    void SetUp() override {
        BoardSchematicTest::SetUp();
        scene_ = MakeLoaded(true);
        ASSERT_TRUE(scene_);
        api_ = Api(scene_);
        ASSERT_TRUE(api_->IsDesignLoaded());
        observer_ = du::MakeCounted<BoardSchematicObserver>();
        ASSERT_TRUE(api_->RegisterObserver(*observer_));
        Messages::PumpUntilIdle();
        observer_->Take();
        UndoControl::Clear();
        pcb_ = PCBOrder(*api_);
        sch_ = SchOrder(*api_);
        ASSERT_GE(pcb_.size(), 3u);
        ASSERT_GE(sch_.size(), 3u);
    }
    void TearDown() override {
        api_->UnregisterObserver(*observer_);
        BoardSchematicTest::TearDown();
    }

    std::vector<std::string> Events() {
        Messages::PumpUntilIdle();
        return observer_->Take();
    }

    du::SmartPtr<qzk::ecad::PCBSchCompareScene> scene_;
    qzkapp::ecad::PCBSchCompareScene* api_ = nullptr;
    du::SmartPtr<BoardSchematicObserver> observer_;
    std::vector<short> pcb_;
    std::vector<short> sch_;
};

TEST_F(PCBSchDrawOrderTest, MovesStayOnTheirSideAndUndoByTheirOwnSteps) {
    std::size_t const mark = Journal::Size();
    short const sheetLayer = sch_[2];
    api_->DrawOrderMoveLayer(false, sheetLayer, 0, true);
    EXPECT_EQ(Events(), (std::vector<std::string>{"SchDrawOrder"}));
    std::vector<short> moved = sch_;
    moved.erase(moved.begin() + 2);
    moved.insert(moved.begin(), sheetLayer);
    EXPECT_EQ(SchOrder(*api_), moved);
    EXPECT_EQ(qzref::Inspect(*scene_).GetSchDrawOrder(), moved);
    EXPECT_EQ(PCBOrder(*api_), pcb_);
    std::vector<std::string> const told =
        Ops(Journal::Since(mark), {"SetSchDrawOrder", "SetPCBDrawOrder", "SetDrawOrder"});
    ASSERT_EQ(told.size(), 1u);
    EXPECT_EQ(told.front().rfind("SetSchDrawOrder(", 0), 0u);
    // The entry is named for the schematic layer.
    ASSERT_EQ(UndoControl::GetUndoCount(), 1u);
    EXPECT_NE(
        UndoControl::GetUndoNames().back().find(du::WideStrToUtf8(api_->GetLayerName(sheetLayer))),
        std::string::npos);

    // The board's move tells the kernel with the flag set, and is named for the board layer.
    short const boardLayer = pcb_[0];
    api_->DrawOrderMoveLayer(true, boardLayer, 2, true);
    EXPECT_EQ(Events(), (std::vector<std::string>{"PcbDrawOrder"}));
    EXPECT_TRUE(qzref::Inspect(*scene_).GetPCBDrawOrderFlag());
    EXPECT_EQ(PCBOrder(*api_)[2], boardLayer);
    ASSERT_EQ(UndoControl::GetUndoCount(), 2u);
    EXPECT_NE(UndoControl::GetUndoNames().back().find(
                  du::WideStrToUtf8(api_->GetSublayerLabel(boardLayer, 0))),
              std::string::npos);

    ASSERT_TRUE(UndoControl::Undo());
    ASSERT_TRUE(UndoControl::Undo());
    EXPECT_EQ(PCBOrder(*api_), pcb_);
    EXPECT_EQ(SchOrder(*api_), sch_);
    EXPECT_EQ(Events(), (std::vector<std::string>{"PcbDrawOrder", "SchDrawOrder"}));
    ASSERT_TRUE(UndoControl::Redo());
    EXPECT_EQ(SchOrder(*api_), moved);
    // A move without undo, an unknown layer and an index past the end leave no entry.
    api_->DrawOrderMoveLayer(false, sheetLayer, 1, false);
    api_->DrawOrderMoveLayer(false, 999, 0, true);
    api_->DrawOrderMoveLayer(true, boardLayer, pcb_.size() + 1, true);
    EXPECT_EQ(UndoControl::GetUndoCount(), 1u);
    EXPECT_EQ(SchOrder(*api_)[1], sheetLayer);
}

TEST_F(PCBSchDrawOrderTest, PreviewsChangeOnlyWhatTheKernelShows) {
    auto inspector = qzref::Inspect(*scene_);
    api_->PreviewDrawOrderTopLayer(true, pcb_[2]);
    std::vector<short> shown = inspector.GetPCBDrawOrder();
    EXPECT_EQ(shown.front(), pcb_[2]);
    EXPECT_FALSE(inspector.GetPCBDrawOrderFlag());
    EXPECT_EQ(PCBOrder(*api_), pcb_);
    // The first layer is on top already: no call.
    std::size_t const mark = Journal::Size();
    api_->PreviewDrawOrderTopLayer(false, sch_[0]);
    EXPECT_TRUE(Journal::Since(mark).empty());
    api_->PreviewDrawOrderTopLayer(true, 0);
    EXPECT_EQ(inspector.GetPCBDrawOrder(), pcb_);

    api_->DrawOrderMoveLayer(false, sch_[1], 0, false);
    api_->PreviewDrawOrderTopLayer(false, -1);
    EXPECT_EQ(inspector.GetSchDrawOrder(), sch_);
    EXPECT_NE(SchOrder(*api_), sch_);
    EXPECT_EQ(Events(), (std::vector<std::string>{"SchDrawOrder"}));
    EXPECT_EQ(UndoControl::GetUndoCount(), 0u);
}

TEST_F(PCBSchDrawOrderTest, EveryResetMakesAnEntryEvenWhenRedone) {
    api_->DrawOrderMoveLayer(false, sch_[2], 0, false);
    std::vector<short> const moved = SchOrder(*api_);
    ASSERT_EQ(UndoControl::GetUndoCount(), 0u);
    api_->ResetPCBSchDrawOrder(false);
    EXPECT_EQ(SchOrder(*api_), sch_);
    EXPECT_EQ(UndoControl::GetUndoCount(), 1u);
    EXPECT_EQ(Events(), (std::vector<std::string>{"SchDrawOrder", "SchDrawOrder"}));

    ASSERT_TRUE(UndoControl::Undo());
    EXPECT_EQ(SchOrder(*api_), moved);
    EXPECT_EQ(qzref::Inspect(*scene_).GetSchDrawOrder(), moved);
    ASSERT_TRUE(UndoControl::Redo());
    EXPECT_EQ(SchOrder(*api_), sch_);
    // The redone reset recorded a fresh entry besides the one that came back.
    EXPECT_EQ(UndoControl::GetUndoCount(), 2u);
    EXPECT_EQ(PCBOrder(*api_), pcb_);

    // The board's reset drops the inversion; undo brings it back with the order.
    api_->PCBSchDrawOrderInvertLayers(nullptr);
    ASSERT_TRUE(api_->GetInvertLayers());
    api_->ResetPCBSchDrawOrder(true);
    EXPECT_FALSE(api_->GetInvertLayers());
    EXPECT_EQ(PCBOrder(*api_), pcb_);
    ASSERT_TRUE(UndoControl::Undo());
    EXPECT_TRUE(api_->GetInvertLayers());
    EXPECT_EQ(PCBOrder(*api_), std::vector<short>(pcb_.rbegin(), pcb_.rend()));
}

TEST_F(PCBSchDrawOrderTest, InversionTurnsTheBoardsListAloneAndUndoes) {
    auto op = NewOperation(scene_);
    api_->PCBSchDrawOrderInvertLayers(op);
    qzk::RecordOperation(op);
    EXPECT_EQ(PCBOrder(*api_), std::vector<short>(pcb_.rbegin(), pcb_.rend()));
    EXPECT_EQ(SchOrder(*api_), sch_);
    EXPECT_TRUE(api_->GetInvertLayers());
    EXPECT_EQ(Events(), (std::vector<std::string>{"PcbDrawOrder"}));
    ASSERT_EQ(op->GetSteps().size(), 1u);
    EXPECT_EQ(op->GetSteps().front()->GetStepType(),
              du::Symbol("QzkappEcadPCBSchInvertLayersStep"));

    ASSERT_TRUE(UndoControl::Undo());
    EXPECT_EQ(PCBOrder(*api_), pcb_);
    EXPECT_FALSE(api_->GetInvertLayers());
    ASSERT_TRUE(UndoControl::Redo());
    EXPECT_TRUE(api_->GetInvertLayers());
    EXPECT_EQ(SchOrder(*api_), sch_);
}

TEST_F(PCBSchDrawOrderTest, AppliedOrdersMergeIntoTheirSideAndSwapBackOnUndo) {
    // The schematic's list has no inversion: invert is passed and has no effect.
    auto op = NewOperation(scene_);
    api_->ApplyDrawOrder(false, {sch_[2], 999, sch_[2], sch_[1]}, true, op);
    qzk::RecordOperation(op);
    std::vector<short> expected{sch_[2], sch_[1], sch_[0]};
    expected.insert(expected.end(), sch_.begin() + 3, sch_.end());
    EXPECT_EQ(SchOrder(*api_), expected);
    EXPECT_EQ(qzref::Inspect(*scene_).GetSchDrawOrder(), expected);
    EXPECT_FALSE(api_->GetInvertLayers());
    EXPECT_EQ(PCBOrder(*api_), pcb_);
    EXPECT_EQ(Events(), (std::vector<std::string>{"SchDrawOrder"}));
    EXPECT_EQ(op->GetSteps().front()->GetStepType(),
              du::Symbol("QzkappEcadPCBSchDisplayPriorityApplyStep"));

    // The board's, with its inversion.
    auto boardOp = NewOperation(scene_);
    api_->ApplyDrawOrder(true, {pcb_[1]}, true, boardOp);
    qzk::RecordOperation(boardOp);
    EXPECT_EQ(PCBOrder(*api_).front(), pcb_[1]);
    EXPECT_TRUE(api_->GetInvertLayers());
    EXPECT_TRUE(qzref::Inspect(*scene_).GetPCBDrawOrderFlag());

    ASSERT_TRUE(UndoControl::Undo());
    EXPECT_EQ(PCBOrder(*api_), pcb_);
    EXPECT_FALSE(api_->GetInvertLayers());
    ASSERT_TRUE(UndoControl::Undo());
    EXPECT_EQ(SchOrder(*api_), sch_);
    ASSERT_TRUE(UndoControl::Redo());
    EXPECT_EQ(SchOrder(*api_), expected);
    ASSERT_TRUE(UndoControl::Redo());
    EXPECT_EQ(PCBOrder(*api_).front(), pcb_[1]);
    EXPECT_TRUE(api_->GetInvertLayers());
}

} // namespace
} // namespace qztest
