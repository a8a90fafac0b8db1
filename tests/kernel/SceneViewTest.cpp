// qzk::Scene, qzk::View2D and qzk::View2DObserver: view look-up and removal, the shared lock,
// view state, and the view notices that reach the application through the view observers.
#include "qzk/AnnoSet.h"
#include "qzk/Annotation.h"
#include "qzk/MemoryPoolAllocated.h"
#include "qzk/Scene2D.h"
#include "qzk/SelectionManager.h"
#include "qzk/View2D.h"
#include "qzk/View2DObserver.h"
#include "qzk/WorkflowManager.h"
#include "qzk/World.h"
#include "qzref/Journal.h"
#include "qzref/Messages.h"
#include "qzref/Platform.h"

#include <gtest/gtest.h>

#include "qzref/Inspect.h"
#include <cmath>
#include <string>
#include <vector>

namespace {

using qzref::Messages;

class TestScene : public qzk::Scene2D {
public:
    explicit TestScene(du::SmartPtr<qzk::World> const& world) : qzk::Scene2D(world) {}
    std::vector<std::string> hooks;

protected:
    void OnViewAdded(du::SmartPtr<qzk::View> const& view) override {
        hooks.push_back("added " + view->GetObjectName().str());
    }
    void OnViewRemoved(du::SmartPtr<qzk::View> const& view) override {
        hooks.push_back("removed " + view->GetObjectName().str() +
                        (view->GetScene() == nullptr ? " detached" : " attached"));
    }
};

class RecordingViewObserver : public qzk::View2DObserver {
public:
    explicit RecordingViewObserver(qzk::View* view) : view(view) {}
    ~RecordingViewObserver() override { DetachFromMessageLoop(); }
    void DetachObserver() override { lines.push_back("detached"); }
    void OnViewFocus(bool focused) override { lines.push_back(focused ? "focus" : "blur"); }
    void OnViewActivate() override { lines.push_back("activate"); }
    void OnStatusMessage() override {
        std::string text;
        view->GetStatusMessage(text);
        lines.push_back("status " + text);
    }
    qzk::View* view;
    std::vector<std::string> lines;
};

class SceneViewTest : public ::testing::Test {
protected:
    void SetUp() override { Messages::PumpUntilIdle(); }
    void TearDown() override {
        if (scene) {
            scene->Destroy();
        }
        Messages::PumpUntilIdle();
    }

    qzref::ScopedPlatform platform;
    du::SmartPtr<TestScene> scene{new TestScene(qzk::World::GetWorld())};
};

TEST_F(SceneViewTest, ViewsAreFoundByIndexAndMoveUpWhenOneLeaves) {
    EXPECT_EQ(scene->GetView(0), nullptr) << "a scene starts without views";
    auto main = qzk::View2D::Create(*scene, 1);
    auto second = qzk::View2D::Create(*scene, 1);
    main->SetObjectName(du::Symbol("main"));
    second->SetObjectName(du::Symbol("second"));
    EXPECT_EQ(scene->GetView(0).Get(), main.Get());
    EXPECT_EQ(scene->GetView(1).Get(), second.Get());
    EXPECT_EQ(scene->GetView(2), nullptr);
    EXPECT_FALSE(scene->AddView(main)) << "a view is in its scene once";

    ASSERT_TRUE(scene->RemoveView(main));
    EXPECT_EQ(scene->GetView(0).Get(), second.Get());
    EXPECT_EQ(scene->GetNumViews(), 1u);
    EXPECT_EQ(main->GetScene(), nullptr);
    EXPECT_TRUE(main->IsDestroyed()) << "a view that leaves its scene is closed";
    EXPECT_FALSE(scene->RemoveView(main));
    EXPECT_EQ(scene->hooks.back(), "removed main detached");
}

TEST_F(SceneViewTest, AViewOfAnotherSceneIsRefused) {
    du::SmartPtr<TestScene> other(new TestScene(nullptr));
    auto foreign = qzk::View2D::Create(*other, 1);
    EXPECT_FALSE(scene->AddView(foreign));
    EXPECT_FALSE(scene->AddView(nullptr));
    EXPECT_EQ(scene->GetNumViews(), 0u);
    EXPECT_EQ(foreign->GetScene(), other.Get());
    other->Destroy();
}

TEST_F(SceneViewTest, ViewsShareTheLockOfTheirSceneAndScenesDoNotShare) {
    du::SmartPtr<TestScene> other(new TestScene(nullptr));
    auto view = qzk::View2D::Create(*scene, 1);
    ASSERT_NE(scene->GetRWLock(), nullptr);
    EXPECT_EQ(view->GetRWLock(), scene->GetRWLock());
    EXPECT_NE(other->GetRWLock(), scene->GetRWLock());
    du::SmartPtr<qzk::SelectionManager> mine;
    du::SmartPtr<qzk::SelectionManager> theirs;
    scene->GetSelectionManager(mine);
    other->GetSelectionManager(theirs);
    EXPECT_TRUE(mine);
    EXPECT_NE(mine.Get(), theirs.Get()) << "one selection manager per scene";
    other->Destroy();
}

TEST_F(SceneViewTest, OrthoWidthRefusesWidthsThatCannotBeShownAndJournalsEveryCall) {
    auto view = qzk::View2D::Create(*scene, 1);
    view->SetObjectName(du::Symbol("v"));
    std::size_t const mark = qzref::Journal::Size();
    EXPECT_TRUE(view->SetOrthoWidth(12.5));
    EXPECT_FALSE(view->SetOrthoWidth(0.0));
    EXPECT_FALSE(view->SetOrthoWidth(-3.0));
    EXPECT_FALSE(view->SetOrthoWidth(std::nan("")));
    double width = 0.0;
    view->GetOrthoWidth(width);
    EXPECT_EQ(width, 12.5);
    EXPECT_EQ(qzref::Journal::Since(mark).size(), 4u);
    EXPECT_EQ(qzref::Journal::Since(mark).front(), "v.SetOrthoWidth(" + qzref::Fmt(12.5) + ")");
}

TEST_F(SceneViewTest, PagesStayWithinThePageCount) {
    auto view = qzk::View2D::Create(*scene, 3);
    EXPECT_TRUE(view->StorePage(2));
    EXPECT_FALSE(view->StorePage(3));
    EXPECT_EQ(qzref::Inspect(*view).GetPage(), 2u);
    view->StoreNumPages(2);
    EXPECT_EQ(qzref::Inspect(*view).GetPage(), 1u)
        << "a page that falls off moves to the last page";
    view->StoreNumPages(0);
    EXPECT_EQ(qzref::Inspect(*view).GetNumPages(), 1u);
    EXPECT_EQ(qzref::Inspect(*view).GetPage(), 0u);
}

TEST_F(SceneViewTest, ViewObserverHearsFocusActivationAndStatusInOrderAfterThePost) {
    auto view = qzk::View2D::Create(*scene, 1);
    RecordingViewObserver observer(view.Get());
    ASSERT_TRUE(view->RegisterObserver(observer));
    qzref::Inspect(*view).NotifyFocus(true);
    qzref::Inspect(*view).NotifyActivate();
    qzref::Inspect(*view).PostStatusMessage("12 items");
    qzref::Inspect(*view).NotifyFocus(false);
    EXPECT_TRUE(observer.lines.empty());
    Messages::PumpUntilIdle();
    EXPECT_EQ(observer.lines,
              (std::vector<std::string>{"focus", "activate", "status 12 items", "blur"}));
}

TEST_F(SceneViewTest, ClosingAViewDetachesItsObservers) {
    auto view = qzk::View2D::Create(*scene, 1);
    RecordingViewObserver observer(view.Get());
    ASSERT_TRUE(view->RegisterObserver(observer));
    scene->RemoveView(view);
    EXPECT_EQ(observer.lines, (std::vector<std::string>{"detached"}));
    qzref::Inspect(*view).NotifyActivate();
    Messages::PumpUntilIdle();
    EXPECT_EQ(observer.lines.size(), 1u);
}

TEST_F(SceneViewTest, WorkflowActionsAreKeptWithTheirData) {
    auto view = qzk::View2D::Create(*scene, 1);
    du::SmartPtr<qzk::WorkflowManager> manager;
    ASSERT_TRUE(view->GetWorkflowManager(manager));
    du::SmartPtr<du::RefCounted> data(qzk::Annotation::Create(5).Get());
    manager->RunWorkflowAction("rotate", "Y", 0, nullptr);
    manager->RunWorkflowAction("rotate", "Z", 0, data);
    auto const actions = manager->GetActions();
    ASSERT_EQ(actions.size(), 2u);
    EXPECT_EQ(actions[0].parameter, du::Symbol("Y"));
    EXPECT_EQ(actions[0].data, nullptr);
    EXPECT_EQ(actions[1].data.Get(), data.Get());
}

// Views, selection manager, annotation set and annotations hold each other in several ways; a
// cycle among them would keep a closed scene's blocks alive.
TEST_F(SceneViewTest, AClosedSceneLeavesNoPoolBlocksBehind) {
    scene->Destroy();
    scene = nullptr;
    Messages::PumpUntilIdle();
    uint64 const before = qzk::MemoryPoolAllocated::GetLiveBlockCount();
    {
        du::SmartPtr<TestScene> closing(new TestScene(qzk::World::GetWorld()));
        auto view = qzk::View2D::Create(*closing, 2);
        qzk::View2D::Create(*closing, 1);
        auto set = qzk::AnnoSet::Create();
        closing->SetAnnoSet(set);
        auto annotation = qzk::Annotation::Create(1);
        qzref::Inspect(*set).AddAnnotation(annotation);
        annotation->SetSelected(true, du::SmartPtr<qzk::View>(view.Get()));
        closing->Destroy();
    }
    Messages::PumpUntilIdle();
    EXPECT_EQ(qzk::MemoryPoolAllocated::GetLiveBlockCount(), before);
}

} // namespace
