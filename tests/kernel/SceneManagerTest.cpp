// The application layer of the kernel: qzkapp::SceneManager, qzkapp::QzkApp with its plug-in
// interface, and the base qzkapp::SceneApiFactory.
#include "qzkapp/SceneManager.h"
#include "qzk/AnnoSetTableEntry.h"
#include "qzk/Instance.h"
#include "qzk/Scene.h"
#include "qzk/View2D.h"
#include "qzk/ViewableSource.h"
#include "qzk/World.h"
#include "qzkapp/QzkApp.h"
#include "qzkapp/SceneApiFactory.h"
#include "qzplugin/PluginHandlerIf.h"
#include "qzref/Journal.h"
#include "qzref/Messages.h"
#include "qzref/Platform.h"

#include <gtest/gtest.h>

#include "qzref/Inspect.h"
#include <string>
#include <vector>

namespace {

class TestScene : public qzk::Scene {
public:
    TestScene() : qzk::Scene(nullptr) {}
};

class SceneManagerTest : public ::testing::Test {
protected:
    void SetUp() override {
        qzref::Inspect(*qzkapp::QzkApp::Get()).Reset();
        view = qzk::View2D::Create(*scene, 1);
        other = qzk::View2D::Create(*scene, 1);
        view->SetObjectName(du::Symbol("view"));
        other->SetObjectName(du::Symbol("other"));
    }
    void TearDown() override {
        scene->Destroy();
        qzref::Inspect(*qzkapp::QzkApp::Get()).Reset();
        qzref::Messages::PumpUntilIdle();
    }

    qzref::ScopedPlatform platform;
    du::SmartPtr<qzkapp::SceneManager> manager = qzkapp::QzkApp::Get()->GetSceneManager();
    du::SmartPtr<TestScene> scene{new TestScene()};
    du::SmartPtr<qzk::View> view;
    du::SmartPtr<qzk::View> other;
};

TEST_F(SceneManagerTest, RecordsEveryCallInOrderAndLosesFocusOnlyFromTheFocusedView) {
    std::size_t const mark = qzref::Journal::Size();
    EXPECT_TRUE(manager->_SetFocus(view));
    EXPECT_TRUE(manager->SetActiveView(view, false));
    EXPECT_FALSE(manager->_LostFocus(other));
    EXPECT_EQ(qzref::Inspect(*manager).GetFocusedView().Get(), view.Get());
    EXPECT_TRUE(manager->_LostFocus(view));
    EXPECT_EQ(qzref::Inspect(*manager).GetFocusedView(), nullptr);
    EXPECT_EQ(qzref::Inspect(*manager).GetActiveView().Get(), view.Get());
    EXPECT_FALSE(manager->SetActiveView(nullptr, true));
    EXPECT_EQ(qzref::Inspect(*manager).GetActiveView().Get(), view.Get());

    std::vector<std::string> const expected = {
        "SceneManager._SetFocus(view)", "SceneManager.SetActiveView(view, false)",
        "SceneManager._LostFocus(other)", "SceneManager._LostFocus(view)",
        "SceneManager.SetActiveView(null, true)"};
    EXPECT_EQ(qzref::Journal::Since(mark), expected);
    ASSERT_EQ(qzref::Inspect(*manager).GetCalls().size(), 5u);
    EXPECT_EQ(qzref::Inspect(*manager).GetCalls()[1].view, du::Symbol("view"));
}

// The manager holds views by counted reference; without ForgetView a closed view would live on in
// it after its scene ended.
TEST_F(SceneManagerTest, AViewThatLeavesItsSceneIsForgotten) {
    manager->SetActiveView(view, false);
    manager->_SetFocus(other);
    scene->RemoveView(view);
    EXPECT_EQ(qzref::Inspect(*manager).GetActiveView(), nullptr);
    EXPECT_EQ(qzref::Inspect(*manager).GetFocusedView().Get(), other.Get());
    scene->RemoveView(other);
    EXPECT_EQ(qzref::Inspect(*manager).GetFocusedView(), nullptr);
}

TEST_F(SceneManagerTest, StatusMessagesReachThePluginInterfaceWhenThereIsOne) {
    auto plugin = qzkapp::QzkApp::Get()->GetPluginIf();
    ASSERT_TRUE(plugin);
    plugin->SetStatusMessage("ready");
    EXPECT_EQ(plugin->GetStatusMessages(), (std::vector<du::Symbol>{"ready"}));
    qzref::Inspect(*qzkapp::QzkApp::Get()).SetPluginIf(nullptr);
    EXPECT_EQ(qzkapp::QzkApp::Get()->GetPluginIf(), nullptr);
    qzref::Inspect(*qzkapp::QzkApp::Get()).Reset();
    auto fresh = qzkapp::QzkApp::Get()->GetPluginIf();
    ASSERT_TRUE(fresh);
    EXPECT_TRUE(fresh->GetStatusMessages().empty());
}

TEST(SceneApiFactory, BaseMakesNothingAndLeavesTheHostsFlagAlone) {
    du::SmartPtr<qzkapp::SceneApiFactory> factory(new qzkapp::SceneApiFactory());
    bool flag = true;
    std::size_t const mark = qzref::Journal::Size();
    EXPECT_EQ(factory->CreateScene(nullptr, nullptr, nullptr, 74, flag), nullptr);
    EXPECT_EQ(factory->CreateScene(nullptr, nullptr, nullptr, nullptr, nullptr, 159), nullptr);
    EXPECT_EQ(factory->CreateScene(nullptr, nullptr, 177), nullptr);
    factory->DoAdditionalCreateScene(nullptr, nullptr, nullptr, nullptr);
    EXPECT_TRUE(flag);
    EXPECT_EQ(qzref::Journal::Since(mark).size(), 4u);
    EXPECT_EQ(qzref::Journal::Since(mark).back(), "SceneApiFactory.DoAdditionalCreateScene(null)");
}

} // namespace
