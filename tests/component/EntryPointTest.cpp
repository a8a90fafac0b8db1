// The component's door, in process: entry points and the factory's refusals.
#include "component/EntryPoints.h"
#include "component/SceneApiFactory.h"
#include "qzk/Scene.h"
#include "qzk/ViewableSource.h"
#include "qzk/ecad/PCBView.h"
#include "scene/SceneFixture.h"

#include "qzref/Inspect.h"
#include <gtest/gtest.h>

namespace {

using scenetest::SceneTest;

TEST(EntryPoints, OnlyTheExactNamesMakeAFactory) {
    du::SmartPtr<du::RefCounted> out;
    EXPECT_FALSE(QZDllCreateComponent("qzapi", nullptr, "sceneapifactory ", &out));
    EXPECT_FALSE(QZDllCreateComponent("Qzapi", nullptr, "sceneapifactory", &out));
    EXPECT_FALSE(QZDllCreateComponent("", nullptr, "", &out));
    EXPECT_EQ(out, nullptr);
    ASSERT_TRUE(QZDllCreateComponent("qzapi", nullptr, "sceneapifactory", &out));
    du::SmartPtr<du::RefCounted> previous = out;
    ASSERT_TRUE(QZDllCreateComponent("qzapi", nullptr, "sceneapifactory", &out));
    EXPECT_NE(out, previous);
    EXPECT_EQ(previous->GetReferenceCount(), 1); // the old one was released from the result
}

class Factory : public SceneTest {
protected:
    qzkapp::ecad::SceneApiFactory factory;
};

TEST_F(Factory, UnknownKindsGiveNullWithoutTouchingTheKernel) {
    auto world = qzk::World::GetWorld();
    auto instance = qzk::Instance::Create("i");
    auto source = qzk::ViewableSource::Create(scenetest::Board());
    bool flag = true;
    EXPECT_EQ(factory.CreateScene(world, instance, source, 159, flag), nullptr);
    EXPECT_EQ(factory.CreateScene(world, instance, source, 1, flag), nullptr);
    EXPECT_TRUE(flag);
    EXPECT_EQ(factory.CreateScene(world, du::SmartPtr<qzk::AnnoSetTableEntry>(), 74), nullptr);
    EXPECT_EQ(factory.CreateScene(world, instance, source, instance, source, 177), nullptr);
    EXPECT_EQ(factory.CreateScene(world, instance, source, instance, source, 74), nullptr);
    EXPECT_TRUE(qzref::Journal::Lines().empty());
}

TEST_F(Factory, ViewCreatedTellsTheKernelSceneThenTheApiScene) {
    auto view = qzk::ecad::PCBView::Create(*kernel);
    factory.ViewCreated(du::SmartPtr<qzk::Scene>(kernel), du::SmartPtr<qzk::View>(view));
    EXPECT_EQ(qzref::Inspect(*kernel).GetViewCreatedCount(), 1u);
    EXPECT_EQ(scene->viewsCreated, 1);

    // A scene of another kernel is left alone.
    factory.ViewCreated(du::SmartPtr<qzk::Scene>(), du::SmartPtr<qzk::View>(view));
    EXPECT_EQ(qzref::Inspect(*kernel).GetViewCreatedCount(), 1u);
    EXPECT_EQ(scene->viewsCreated, 1);
}

} // namespace
