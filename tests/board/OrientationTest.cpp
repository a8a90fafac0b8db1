// The board's orientation: flip and rotation, what the view's workflow is asked to do, the layer
// order a flip inverts, the events and undo.
#include "design/SceneHarness.h"

#include "qzk/Operation.h"
#include "qzk/WorkflowManager.h"
#include "qzk/ecad/PCBView.h"
#include "qzk/ecad/RotateData.h"
#include "qzref/Inspect.h"

namespace qztest {
namespace {

using qzref::Journal;
using qzref::Messages;

class OrientationTest : public SceneTest {
protected:
    void SetUp() override {
        SceneTest::SetUp();
        scene_ = MakeBoard(Example("four-layer-board.json"));
        api_ = Api(scene_);
        Settle();
        ASSERT_TRUE(api_->IsDesignLoaded());
        view_ = qzk::ecad::PCBView::Create(*scene_, 1);
        ASSERT_TRUE(view_->GetWorkflowManager(workflow_));
        observer_ = du::SmartPtr<RecordingObserver>(new RecordingObserver());
        ASSERT_TRUE(api_->RegisterObserver(*observer_));
        Messages::PumpUntilIdle();
        observer_->Take();
        qzref::UndoControl::Clear();
    }
    void TearDown() override {
        api_->UnregisterObserver(*observer_);
        SceneTest::TearDown();
    }

    du::SmartPtr<qzk::Operation> NewOperation() const {
        return du::SmartPtr<qzk::Operation>(
            new qzk::Operation("orientation", du::SmartPtr<qzk::Scene>(scene_), false));
    }
    // What the workflow was asked since the last call: "Y" or "Z <angle>".
    std::vector<std::string> Turns() {
        std::vector<std::string> out;
        for (auto const& action : workflow_->GetActions()) {
            EXPECT_EQ(action.action, du::Symbol("rotate"));
            EXPECT_EQ(action.flags, 0);
            std::string turn = action.parameter.str();
            if (auto const* data = dynamic_cast<qzk::ecad::RotateData const*>(action.data.Get())) {
                turn += " " + std::to_string(data->angle);
            } else {
                EXPECT_EQ(action.data, nullptr);
            }
            out.push_back(turn);
        }
        workflow_->ClearActions();
        return out;
    }
    // The first of every scene's events, before the design scene's three and the board's.
    static int DrawOrderId() { return qzkapp::ecad::PCBScene::GetBaseEventId() - 3 - 4; }
    std::vector<std::string> Events() {
        Messages::PumpUntilIdle();
        return observer_->Take();
    }

    du::SmartPtr<qzk::ecad::PCBScene> scene_;
    qzkapp::ecad::PCBScene* api_ = nullptr;
    du::SmartPtr<qzk::ecad::PCBView> view_;
    du::SmartPtr<qzk::WorkflowManager> workflow_;
    du::SmartPtr<RecordingObserver> observer_;
};

TEST_F(OrientationTest, RotationIsStoredReducedWhileTheViewTurnsByWhatWasAsked) {
    std::size_t const mark = Journal::Size();
    auto const op = NewOperation();
    api_->SetRotation(360, op, true); // 0 again: nothing at all
    EXPECT_TRUE(Journal::Since(mark).empty());
    EXPECT_EQ(qzref::Inspect(*op).GetStepCount(), 0u);

    api_->SetRotation(450, op, true);
    EXPECT_EQ(api_->GetRotation(), 90);
    EXPECT_EQ(
        Ops(Journal::Since(mark), {"AddStep", "RunWorkflowAction"}),
        (std::vector<std::string>{"AddStep(\"orientation\", QzkappEcadRotationOperationStep)",
                                  "RunWorkflowAction(\"rotate\", \"Z\", 0, RotateData(450))"}));
    api_->SetRotation(450, op, true); // 90 already
    api_->AddRotation(-180, op);
    EXPECT_EQ(api_->GetRotation(), -90); // not 270
    api_->SetRotation(270, op, false);   // a change from -90; the view turns all the same
    EXPECT_EQ(api_->GetRotation(), 270);
    EXPECT_EQ(Turns(), (std::vector<std::string>{"Z 450", "Z -180", "Z 360"}));
    EXPECT_EQ(Events(), (std::vector<std::string>{"Rotation 90", "Rotation -90", "Rotation 270"}));
    EXPECT_EQ(qzref::Inspect(*op).GetStepCount(), 3u);
    // The steps go into op; the caller records it.
    EXPECT_EQ(qzref::UndoControl::GetUndoCount(), 0u);

    // Seen from the back the board turns the other way.
    api_->SetFlip(true, nullptr, false);
    api_->SetRotation(0, nullptr, true);
    EXPECT_EQ(Turns(), std::vector<std::string>{"Z 270"});
    EXPECT_EQ(Events(), (std::vector<std::string>{"Orientation 1", "Rotation 0"}));
}

TEST_F(OrientationTest, FlipTurnsTheViewThenInvertsTheLayersThenPosts) {
    std::vector<short> order;
    api_->GetDrawOrder(order);
    ASSERT_GE(order.size(), 2u);
    std::size_t mark = Journal::Size();
    auto const op = NewOperation();
    api_->SetFlip(true, op, true);
    EXPECT_EQ(Ops(Journal::Since(mark), {"AddStep", "RunWorkflowAction", "SetDrawOrder"}),
              (std::vector<std::string>{
                  "AddStep(\"orientation\", QzkappEcadFlipOperationStep)",
                  "RunWorkflowAction(\"rotate\", \"Y\", 0, null)",
                  "AddStep(\"orientation\", QzkappEcadInvertLayersStep)",
                  "SetDrawOrder(" + qzref::Fmt(std::vector<short>(order.rbegin(), order.rend())) +
                      ", true, true)"}));
    EXPECT_EQ(Events(), (std::vector<std::string>{"DrawOrder", "Orientation 1"}));
    EXPECT_TRUE(api_->GetFlip());
    EXPECT_TRUE(scene_->invertLayers);

    // The present value: nothing, not even a step.
    EXPECT_EQ(qzref::UndoControl::GetUndoCount(), 0u); // the caller records
    mark = Journal::Size();
    api_->SetFlip(true, op, true);
    EXPECT_TRUE(Journal::Since(mark).empty());
    EXPECT_EQ(qzref::Inspect(*op).GetStepCount(), 2u);

    // Without the view: the field and the event, a step, but no turn and no inversion.
    Turns();
    mark = Journal::Size();
    api_->SetFlip(false, op, false);
    EXPECT_EQ(Ops(Journal::Since(mark), {"AddStep", "RunWorkflowAction", "SetDrawOrder"}),
              std::vector<std::string>{"AddStep(\"orientation\", QzkappEcadFlipOperationStep)"});
    EXPECT_FALSE(api_->GetFlip());
    EXPECT_TRUE(scene_->invertLayers);
    EXPECT_EQ(Events(), std::vector<std::string>{"Orientation 0"});
}

TEST_F(OrientationTest, UndoOfAFlipAlwaysTurnsAndInvertsAndRedoDoesItAgain) {
    std::vector<short> before;
    api_->GetDrawOrder(before);
    std::vector<short> const reversed(before.rbegin(), before.rend());
    api_->ToggleFlip(nullptr);
    api_->ToggleFlip(nullptr);
    EXPECT_FALSE(api_->GetFlip());
    EXPECT_EQ(qzref::Inspect(*scene_).GetDrawOrder(), before);
    EXPECT_FALSE(scene_->invertLayers);
    EXPECT_EQ(Turns(), (std::vector<std::string>{"Y", "Y"}));

    auto op = NewOperation();
    api_->ToggleFlip(op);
    ASSERT_EQ(qzref::Inspect(*op).GetStepCount(), 2u);
    qzk::RecordOperation(op);
    Turns();
    Events();
    // Undo runs the operation's inversion step (last step first), then the flip step toggles
    // back through the scene, which inverts once more: the flip is off, the order reversed.
    ASSERT_TRUE(qzref::UndoControl::Undo());
    EXPECT_FALSE(api_->GetFlip());
    EXPECT_EQ(qzref::Inspect(*scene_).GetDrawOrder(), reversed);
    EXPECT_EQ(Turns(), std::vector<std::string>{"Y"});
    EXPECT_EQ(Events(), (std::vector<std::string>{"DrawOrder", "DrawOrder", "Orientation 0"}));
    ASSERT_TRUE(qzref::UndoControl::Redo());
    EXPECT_TRUE(api_->GetFlip());
    EXPECT_EQ(qzref::Inspect(*scene_).GetDrawOrder(), reversed);
    EXPECT_EQ(Turns(), std::vector<std::string>{"Y"});
    EXPECT_EQ(qzref::UndoControl::GetUndoCount(), 1u);

    // A flip that left the view alone is undone through the view all the same.
    qzref::UndoControl::Clear();
    op = NewOperation();
    api_->SetFlip(false, op, false);
    qzk::RecordOperation(op);
    Turns();
    ASSERT_TRUE(qzref::UndoControl::Undo());
    EXPECT_TRUE(api_->GetFlip());
    EXPECT_EQ(Turns(), std::vector<std::string>{"Y"});
    EXPECT_EQ(qzref::Inspect(*scene_).GetDrawOrder(), before);
}

TEST_F(OrientationTest, UndoOfARotationGoesBackThroughSetRotationAndRedoForward) {
    auto const op = NewOperation();
    api_->SetRotation(90, op, true);
    qzk::RecordOperation(op);
    Turns();
    Events();
    ASSERT_TRUE(qzref::UndoControl::Undo());
    EXPECT_EQ(api_->GetRotation(), 0);
    ASSERT_TRUE(qzref::UndoControl::Redo());
    EXPECT_EQ(api_->GetRotation(), 90);
    EXPECT_EQ(Turns(), (std::vector<std::string>{"Z -90", "Z 90"}));
    EXPECT_EQ(Events(), (std::vector<std::string>{"Rotation 0", "Rotation 90"}));
    EXPECT_EQ(qzref::UndoControl::GetUndoCount(), 1u);
}

TEST_F(OrientationTest, WithoutAViewTheStateStillChangesAndPosts) {
    scene_->RemoveView(du::SmartPtr<qzk::View>(view_.Get()));
    api_->SetRotation(-450, nullptr, true);
    api_->ToggleFlip(nullptr);
    EXPECT_EQ(api_->GetRotation(), -90);
    EXPECT_TRUE(api_->GetFlip());
    EXPECT_TRUE(Turns().empty());
    EXPECT_EQ(Events(), (std::vector<std::string>{"Rotation -90", "DrawOrder", "Orientation 1"}));
}

} // namespace
} // namespace qztest
