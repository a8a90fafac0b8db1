// The tie from the kernel's forwarders back to their scene: a call holds the scene for its
// duration, a cut link calls nothing, a scene already going is refused; and the handlers a late
// call can reach tolerate a scene that has ended.
#include "SceneFixture.h"

#include "qzref/Inspect.h"
#include "scene/SceneLink.h"

namespace scenetest {
namespace {

using qzkapp::ecad::SceneLink;
using qzkapp::ecad::SceneLinks;

// The least a link needs of its scene: a count and a registry.
class FakeScene : public du::RefCounted {
public:
    explicit FakeScene(int* freed) : freed_(freed) {}
    ~FakeScene() override { ++*freed_; }
    SceneLinks& _GetLinks() { return links; }

    SceneLinks links;

private:
    int* freed_;
};

TEST(SceneLinkTest, CallHoldsTheSceneAndCutLinksCallNothing) {
    int freed = 0;
    du::SmartPtr<FakeScene> owner(new FakeScene(&freed));
    SceneLink<FakeScene> first(owner.Get());
    SceneLink<FakeScene> second(owner.Get());

    // The owner lets go during the call: the scene lives until the call is over.
    int calls = 0;
    EXPECT_TRUE(first.Call([&](FakeScene& scene) {
        ++calls;
        EXPECT_EQ(scene.GetReferenceCount(), 2);
        owner = nullptr;
        EXPECT_EQ(freed, 0);
    }));
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(freed, 1);

    // Gone: the registry went with it and cut both links on the way.
    EXPECT_FALSE(second.Call([&](FakeScene&) { ++calls; }));
    EXPECT_EQ(calls, 1);
}

TEST(SceneLinkTest, OneLinkOrAllAreCutAndASceneNobodyHoldsIsRefused) {
    int freed = 0;
    du::SmartPtr<FakeScene> owner(new FakeScene(&freed));
    SceneLink<FakeScene> own(owner.Get());
    SceneLink<FakeScene> shared(owner.Get());
    int calls = 0;
    own.Cut();
    EXPECT_FALSE(own.Call([&](FakeScene&) { ++calls; }));
    EXPECT_TRUE(shared.Call([&](FakeScene&) { ++calls; }));
    owner->links.CutAll();
    EXPECT_FALSE(shared.Call([&](FakeScene&) { ++calls; }));
    // A link made after the cut is up.
    SceneLink<FakeScene> later(owner.Get());
    EXPECT_TRUE(later.Call([&](FakeScene&) { ++calls; }));
    EXPECT_EQ(calls, 2);
    EXPECT_EQ(owner->GetReferenceCount(), 1);

    // Count zero means the scene is being freed: the link must not bring it back.
    FakeScene unheld(&freed);
    SceneLink<FakeScene> toUnheld(&unheld);
    EXPECT_FALSE(toUnheld.Call([&](FakeScene&) { ++calls; }));
    EXPECT_EQ(unheld.GetReferenceCount(), 0);
    EXPECT_EQ(calls, 2);
}

TEST_F(SceneTest, HandlersOfAnEndedSceneDoNothing) {
    du::SmartPtr<TestScene> held(scene);
    qzref::Inspect(*kernel).DestroyScene();
    kernel = nullptr;
    qzref::Messages::PumpUntilIdle();
    ASSERT_EQ(held->GetKernelScene(), nullptr);
    qzref::Journal::Clear();

    // What a notice already on its way could still call.
    for (unsigned int channel : {0u, 1u, 4u}) {
        held->OnSelectionChanged(channel, true, {}, {Item("U1")});
    }
    held->OnGroupOverlapColorChanged();
    held->ClearGroupAppearance();
    qzref::PreferencesControl::SetColorWord("General/Navigation/highlight_color", 0x010000FF);
    held->OnPreferencesChanged();
    qzref::Messages::PumpUntilIdle();
    // The preferences are still read; nothing reaches a kernel scene and nothing is posted.
    std::vector<std::string> others;
    for (std::string const& line : qzref::Journal::Lines()) {
        if (line.rfind("Preferences.", 0) != 0) {
            others.push_back(line);
        }
    }
    EXPECT_TRUE(others.empty()) << ::testing::PrintToString(others);
    EXPECT_EQ(held->Selection().GetAsHexUI(), 0x010000FFu);
    EXPECT_TRUE(qzref::Messages::TakeHandlerErrors().empty());
}

} // namespace
} // namespace scenetest
