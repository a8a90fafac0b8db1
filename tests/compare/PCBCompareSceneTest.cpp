// The board compare scene's frame: its own events reach the observer under the family's ids,
// isolation reaches the kernel's compare scene, and a flip turns the merged layer order.
#include "compare/CompareHarness.h"

#include "IcmApiEcad.h"
#include "dg/DPoint3D.h"
#include "qzk/ecad/EcadDesignData.h"
#include "qzk/ecad/SelectionItem.h"

namespace qztest {
namespace {

using qzref::Messages;

class PCBCompareSceneTest : public CompareTest {
protected:
    void SetUp() override {
        CompareTest::SetUp();
        HoldInMemory(Example("four-layer-board.json"), Example("six-layer-board.json"));
        scene_ = MakeCompare(Example("four-layer-board.json"), Example("six-layer-board.json"));
        api_ = Api(scene_);
        observer_ = du::MakeCounted<CompareObserver>();
        ASSERT_TRUE(api_->RegisterObserver(*observer_));
        Messages::PumpUntilIdle();
        observer_->Take();
        qzref::UndoControl::Clear();
    }

    du::SmartPtr<qzk::ecad::PCBCompareScene> scene_;
    qzkapp::ecad::PCBCompareScene* api_ = nullptr;
    du::SmartPtr<CompareObserver> observer_;
};

TEST_F(PCBCompareSceneTest, SwitchesAndOrientationAreToldUnderTheFamilysIds) {
    api_->SetHighlightOnlyVisible(true, qzkapp::ecad::ChangeSourceScene);
    api_->SetHighlightOnlyVisible(true, qzkapp::ecad::ChangeSourceScene);
    api_->SetIsolateOnlyVisible(true, qzkapp::ecad::ChangeSourceUndo);
    api_->SetRotation(-90, nullptr, true);
    std::vector<short> const before = qzref::Inspect(*scene_).GetDrawOrder();
    api_->SetFlip(true, nullptr, true);
    Messages::PumpUntilIdle();
    EXPECT_EQ(observer_->Take(),
              (std::vector<std::string>{"HighlightOnlyVisible true 1", "IsolateOnlyVisible true 3",
                                        "Rotation -90", "DrawOrder", "Orientation 1"}));
    EXPECT_TRUE(qzref::Inspect(*scene_).GetHighlightOnlyVisible());
    EXPECT_TRUE(qzref::Inspect(*scene_).GetIsolateOnlyVisible());
    // The flip turned the merged order of both boards.
    EXPECT_EQ(before, (std::vector<short>{1, 2, 3, 4, 5, 6, 7, -2}));
    EXPECT_NE(qzref::Inspect(*scene_).GetDrawOrder(), before);
    EXPECT_TRUE(api_->GetInvertLayers());
}

TEST_F(PCBCompareSceneTest, IsolationReachesTheKernelCompareSceneAndUndoes) {
    auto const& data = api_->GetFirstDesignData();
    auto item = du::SmartPtr<qzk::SelectionItem>(
        new qzk::ecad::SelectionItem(data, data->FindObject("U1", IcmApiEcad::COMPONENT), nullptr,
                                     nullptr, dg::DPoint3D(), 5, 0));
    auto op = NewOperation(scene_);
    api_->Isolate({item}, op);
    EXPECT_EQ(api_->GetIsolateCount(), 1u);
    EXPECT_EQ(qzref::Inspect(*scene_).GetIsolated().size(), 1u);
    EXPECT_TRUE(qzref::Inspect(*scene_).IsIsolating());
    ASSERT_TRUE(qzref::UndoControl::Undo());
    EXPECT_EQ(api_->GetIsolateCount(), 0u);
    EXPECT_FALSE(qzref::Inspect(*scene_).IsIsolating());
}

} // namespace
} // namespace qztest
