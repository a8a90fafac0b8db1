// Display priority: moves, previews, resets, applied orders and inversion, with their undo.
#include "SceneFixture.h"

#include "qzk/Operation.h"
#include "qzref/Inspect.h"

namespace scenetest {
namespace {

using Layers = std::vector<short>;

class DisplayPriority : public SceneTest {
protected:
    void SetUp() override {
        SceneTest::SetUp();
        scene->RegisterObserver(recorder);
        scene->SetDrawOrder({1, 2, 3, 4, 5}, true, false);
        recorder.Take();
        qzref::UndoControl::Clear();
        qzref::Journal::Clear();
    }
    void TearDown() override {
        scene->UnregisterObserver(recorder);
        SceneTest::TearDown();
    }
    du::SmartPtr<qzk::Operation> NewOperation() {
        return du::SmartPtr<qzk::Operation>(
            new qzk::Operation("apply", du::SmartPtr<qzk::Scene>(kernel), false));
    }
    Recorder recorder;
};

TEST_F(DisplayPriority, MoveRecordsANamedEntryThatUndoesAndRedoes) {
    scene->DrawOrderMoveLayer(4, 1, true);
    EXPECT_EQ(Order(), (Layers{1, 4, 2, 3, 5}));
    EXPECT_EQ(qzref::Inspect(*kernel).GetDrawOrder(), (Layers{1, 4, 2, 3, 5}));
    EXPECT_EQ(Calls({"SetDrawOrder"}),
              std::vector<std::string>{"SetDrawOrder([1 4 2 3 5], false, false)"});
    EXPECT_EQ(qzref::UndoControl::GetUndoNames(),
              std::vector<std::string>{"Display priority of Top"});
    EXPECT_EQ(recorder.Take(), std::vector<std::string>{"draworder"});

    ASSERT_TRUE(qzref::UndoControl::Undo());
    EXPECT_EQ(Order(), (Layers{1, 2, 3, 4, 5}));
    ASSERT_TRUE(qzref::UndoControl::Redo());
    EXPECT_EQ(Order(), (Layers{1, 4, 2, 3, 5}));
    // Undo and redo move without recording.
    EXPECT_EQ(qzref::UndoControl::GetUndoCount(), 1u);
    EXPECT_EQ(recorder.Take(), (std::vector<std::string>{"draworder", "draworder"}));

    // A move to the same place is no special case; an unknown layer or a far index is.
    scene->DrawOrderMoveLayer(4, 1, false);
    EXPECT_EQ(recorder.Take(), std::vector<std::string>{"draworder"});
    scene->DrawOrderMoveLayer(9, 0, true);
    scene->DrawOrderMoveLayer(4, 6, true);
    EXPECT_TRUE(recorder.Take().empty());
    EXPECT_EQ(qzref::UndoControl::GetUndoCount(), 1u);
}

TEST_F(DisplayPriority, PreviewsChangeOnlyWhatTheKernelShows) {
    scene->defaultOrder = {5, 4, 3, 2, 1};
    scene->PreviewDrawOrderTopLayer(1); // already on top
    EXPECT_TRUE(Calls({"SetDrawOrder"}).empty());
    scene->PreviewDrawOrderTopLayer(3);
    EXPECT_EQ(qzref::Inspect(*kernel).GetDrawOrder(), (Layers{3, 1, 2, 4, 5}));
    scene->PreviewDrawOrderTopLayer(9);
    scene->PreviewDrawOrderTopLayer(0);
    EXPECT_EQ(qzref::Inspect(*kernel).GetDrawOrder(), (Layers{1, 2, 3, 4, 5}));
    scene->PreviewDrawOrderTopLayer(-1);
    EXPECT_EQ(qzref::Inspect(*kernel).GetDrawOrder(), (Layers{5, 4, 3, 2, 1}));
    EXPECT_EQ(Calls({"SetDrawOrder"}).size(), 3u);
    EXPECT_EQ(Order(), (Layers{1, 2, 3, 4, 5}));
    EXPECT_TRUE(recorder.Take().empty());
    EXPECT_EQ(qzref::UndoControl::GetUndoCount(), 0u);
}

TEST_F(DisplayPriority, ApplyDropsUnknownAndRepeatedHandlesAndUndoesThroughTheCallersEntry) {
    auto op = NewOperation();
    scene->ApplyDrawOrder({5, 9, 5, 2}, true, op);
    EXPECT_EQ(Order(), (Layers{5, 2, 1, 3, 4}));
    EXPECT_TRUE(scene->GetInvertLayers());
    EXPECT_EQ(qzref::Inspect(*op).GetStepCount(), 1u);
    EXPECT_EQ(qzref::UndoControl::GetUndoCount(), 0u); // the caller records
    EXPECT_EQ(recorder.Take(), std::vector<std::string>{"draworder"});

    qzk::RecordOperation(op);
    ASSERT_TRUE(qzref::UndoControl::Undo());
    EXPECT_EQ(Order(), (Layers{1, 2, 3, 4, 5}));
    EXPECT_FALSE(scene->GetInvertLayers());
    ASSERT_TRUE(qzref::UndoControl::Redo());
    EXPECT_EQ(Order(), (Layers{5, 2, 1, 3, 4}));
    EXPECT_TRUE(scene->GetInvertLayers());

    // An empty order keeps the present one and still sets the inversion and posts.
    recorder.Take();
    scene->ApplyDrawOrder({}, false, du::SmartPtr<qzk::Operation>());
    EXPECT_EQ(Order(), (Layers{5, 2, 1, 3, 4}));
    EXPECT_FALSE(scene->GetInvertLayers());
    EXPECT_EQ(recorder.Take(), std::vector<std::string>{"draworder"});
}

TEST_F(DisplayPriority, InversionIsItsOwnInverseAndResetDropsIt) {
    auto op = NewOperation();
    scene->DrawOrderInvertLayers(op);
    EXPECT_EQ(Order(), (Layers{5, 4, 3, 2, 1}));
    EXPECT_TRUE(scene->GetInvertLayers());
    scene->DrawOrderInvertLayers(du::SmartPtr<qzk::Operation>());
    EXPECT_EQ(Order(), (Layers{1, 2, 3, 4, 5}));
    EXPECT_FALSE(scene->GetInvertLayers());
    qzk::RecordOperation(op);
    ASSERT_TRUE(qzref::UndoControl::Undo());
    EXPECT_TRUE(scene->GetInvertLayers());
    EXPECT_EQ(Order(), (Layers{5, 4, 3, 2, 1}));

    // Reset: the default order, no inversion; its undo brings both back.
    scene->defaultOrder = {2, 1};
    qzref::UndoControl::Clear();
    scene->ResetDrawOrder(true);
    EXPECT_EQ(Order(), (Layers{2, 1}));
    EXPECT_FALSE(scene->GetInvertLayers());
    EXPECT_EQ(qzref::UndoControl::GetUndoNames(),
              std::vector<std::string>{"Reset display priority"});
    ASSERT_TRUE(qzref::UndoControl::Undo());
    EXPECT_EQ(Order(), (Layers{5, 4, 3, 2, 1}));
    EXPECT_TRUE(scene->GetInvertLayers());
    ASSERT_TRUE(qzref::UndoControl::Redo());
    EXPECT_EQ(Order(), (Layers{2, 1}));
    EXPECT_FALSE(scene->GetInvertLayers());
}

} // namespace
} // namespace scenetest
