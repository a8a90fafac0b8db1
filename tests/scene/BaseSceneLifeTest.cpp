// A scene's life through the kernel, its preferences, and the records it only keeps.
#include "SceneFixture.h"

#include "qzk/Kernel.h"
#include "qzk/Operation.h"
#include "qzk/SelectionManager.h"

#include "qzref/Inspect.h"
#include <atomic>
#include <thread>

namespace scenetest {
namespace {

using qzkapp::ecad::SearchQueryInfo;

char const* const kSelection = "General/Navigation/highlight_color";
char const* const kSecondary = "General/Navigation/secondary_color";
char const* const kPreselectionOn = "General/Navigation/enable_preselection_highlighting";

TEST(BaseSceneLife, CreatedBoundHeardAndEndedByTheKernelWithNothingLeft) {
    auto const poolBefore = qzk::MemoryPoolAllocated::GetLiveBlockCount();
    qzref::ScopedPlatform platform;
    du::SmartPtr<qzk::ecad::PCBScene> kernel;
    qzk::ecad::PCBScene::Create(qzk::World::GetWorld(), qzk::Instance::Create("i"),
                                qzk::ViewableSource::Create(Board()), kernel);
    TestScene* scene = nullptr;
    {
        du::SmartPtr<TestScene> made(new TestScene(du::SmartPtr<qzk::ecad::BaseScene>(kernel)));
        scene = made.Get();
        EXPECT_EQ(kernel->GetApiScene(), scene);
        made->Init();
    }
    // The kernel scene alone keeps the API scene.
    EXPECT_EQ(scene->GetReferenceCount(), 1);
    EXPECT_EQ(scene->GetRWLock(), kernel->GetRWLock());

    du::SmartPtr<qzk::SelectionManager> selection;
    kernel->GetSelectionManager(selection);
    EXPECT_EQ(qzref::Inspect(*selection).GetObserverCount(), 1u);
    EXPECT_EQ(qzref::Inspect(*qzk::World::GetWorld()).GetObserverCount(), 1u);

    Recorder recorder;
    ASSERT_TRUE(scene->RegisterObserver(recorder));
    EXPECT_EQ(recorder.log, std::vector<std::string>{"draworder"}); // brought up to date at once
    recorder.log.clear();
    scene->SetDrawOrder({3, 2}, true, false);
    EXPECT_TRUE(recorder.log.empty()); // never inside the poster's call
    EXPECT_EQ(recorder.Take(), std::vector<std::string>{"draworder"});

    qzref::Inspect(*kernel).DestroyScene();
    EXPECT_EQ(kernel->GetApiScene(), nullptr);
    EXPECT_EQ(qzref::Inspect(*selection).GetObserverCount(), 0u);
    selection = nullptr;
    kernel = nullptr;
    qzref::Messages::PumpUntilIdle();
    EXPECT_EQ(qzref::Inspect(*qzk::World::GetWorld()).GetObserverCount(), 0u);
    qzref::Platform::Stop();
    EXPECT_EQ(qzk::MemoryPoolAllocated::GetLiveBlockCount(), poolBefore);
}

TEST(BaseSceneLife, InitReadsPreferencesAndKeepsDefaultsForMissingKeys) {
    qzref::ScopedPlatform platform;
    qzref::PreferencesControl::SetColorWord(kSelection, 0x010000FF);
    qzref::PreferencesControl::SetBool(kPreselectionOn, false);
    du::SmartPtr<qzk::ecad::PCBScene> kernel;
    qzk::ecad::PCBScene::Create(qzk::World::GetWorld(), qzk::Instance::Create("i"),
                                qzk::ViewableSource::Create(Board()), kernel);
    du::SmartPtr<TestScene> scene(new TestScene(du::SmartPtr<qzk::ecad::BaseScene>(kernel)));
    qzref::Journal::Clear();
    scene->Init();
    EXPECT_EQ(scene->Selection().GetAsHexUI(), 0x010000FFu);
    EXPECT_FALSE(scene->PreselectionHighlighting());
    // Missing keys leave the blank default, opaque black.
    EXPECT_EQ(scene->Preselection(), dg::Color(0.0f, 0.0f, 0.0f, 1.0f));
    EXPECT_EQ(Calls({"GetIntUIAsColor", "GetBool"}),
              (std::vector<std::string>{
                  "GetIntUIAsColor(\"General/Navigation/highlight_color\")",
                  "GetIntUIAsColor(\"General/Navigation/preselection_color\")",
                  "GetIntUIAsColor(\"General/Navigation/secondary_color\")",
                  "GetBool(\"General/Navigation/enable_preselection_highlighting\")"}));
    scene = nullptr;
    qzref::Inspect(*kernel).DestroyScene();
}

TEST_F(SceneTest, PreferenceChangesRewriteLooksAndPostOnlyTheSecondaryColour) {
    Recorder recorder;
    scene->RegisterObserver(recorder);
    recorder.log.clear();
    auto u1 = Item("U1");
    scene->OnSelectionChanged(4, false, {}, {u1});
    ASSERT_EQ(scene->Associated().size(), 1u);

    // Nothing changed: no event, no rewrite.
    qzref::PreferencesControl::SetBool(kPreselectionOn, true);
    qzref::Journal::Clear();
    qzref::PreferencesControl::NotifyChanged();
    EXPECT_TRUE(recorder.Take().empty());
    EXPECT_TRUE(Calls({"BeginAppearanceUpdate"}).empty());

    // The switch alone: a rewrite of the preselection, and no event.
    qzref::PreferencesControl::SetBool(kPreselectionOn, false);
    qzref::PreferencesControl::NotifyChanged();
    EXPECT_TRUE(recorder.Take().empty());
    EXPECT_EQ(Calls({"BeginAppearanceUpdate"}).size(), 1u);

    // The secondary colour: the event is posted before the associated looks are rewritten.
    qzref::PreferencesControl::SetColorWord(kSecondary, 0x01DC0000);
    qzref::Journal::Clear();
    qzref::PreferencesControl::NotifyChanged();
    EXPECT_EQ(recorder.Take(), std::vector<std::string>{"assoc 0x01DC0000"});
    auto const calls = Calls({"PostObservableEvent", "SetItemHighlightAppearance"});
    ASSERT_EQ(calls.size(), 2u);
    EXPECT_EQ(calls[0], "PostObservableEvent(" +
                            std::to_string(TestScene::ASSOCHIGHLIGHTCOLOR_CHANGED_EVENT()) + ")");
    EXPECT_EQ(calls[1], "SetItemHighlightAppearance(U1, 0x01DC0000, false)");

    // A key that has gone reads as black now, unlike in Init, and so is a change.
    qzref::PreferencesControl::Remove(kSecondary);
    qzref::PreferencesControl::NotifyChanged();
    EXPECT_EQ(recorder.Take(), std::vector<std::string>{"assoc 0x01000000"});
    scene->UnregisterObserver(recorder);
}

TEST_F(SceneTest, SelectionManagerEndCutsTheTie) {
    du::SmartPtr<qzk::SelectionManager> selection;
    kernel->GetSelectionManager(selection);
    selection->ApplyItems(0, {Item("U1")}, qzk::SelectionManager::replace);
    qzref::Messages::PumpUntilIdle();
    EXPECT_EQ(Calls({"SetItemSelectionAppearance"}).size(), 1u);

    selection->NotifyDestroyed();
    qzref::Messages::PumpUntilIdle();
    qzref::Journal::Clear();
    scene->GetKernelScene(); // the scene itself lives on
    selection->ApplyItems(0, {Item("R1")}, qzk::SelectionManager::add);
    qzref::Messages::PumpUntilIdle();
    EXPECT_TRUE(Calls({"SetItemSelectionAppearance"}).empty());
}

TEST(SearchQueryInfo, CopySharesQueriesAssignmentCopiesTheirContent) {
    SearchQueryInfo original;
    SearchQueryInfo shared(original);
    shared.SetDlgLastConfig(du::MakeCounted<queryinterface::SimpleQuery>("R*"));
    EXPECT_EQ(original.GetDlgLastConfig()->text, "R*");

    SearchQueryInfo assigned;
    auto const keptObject = assigned.GetDlgLastConfig();
    assigned = original;
    EXPECT_EQ(assigned.GetDlgLastConfig(), keptObject); // identity stays
    EXPECT_EQ(assigned.GetDlgLastConfig()->text, "R*");
    assigned.SetDlgLastConfig(du::MakeCounted<queryinterface::SimpleQuery>("C*"));
    EXPECT_EQ(original.GetDlgLastConfig()->text, "R*");

    // Init forgets all.
    original.SetIsDlgVisible(true);
    original.Init();
    EXPECT_FALSE(original.GetIsDlgVisible());
    EXPECT_TRUE(original.GetDlgLastConfig()->IsEmpty());
    EXPECT_EQ(shared.GetDlgLastConfig()->text, "R*");
}

TEST_F(SceneTest, SearchRecordGoesInByContentAndComesOutIndependent) {
    SearchQueryInfo info;
    info.SetIsPanePopulated(true);
    info.SetLastAppliedQuery(du::MakeCounted<queryinterface::SimpleQuery>("net VCC"));
    scene->SetSearchQueryInfo(info);
    info.GetLastAppliedQuery()->text = "changed later";

    SearchQueryInfo out;
    scene->GetSearchQueryInfo(out);
    EXPECT_TRUE(out.GetIsPanePopulated());
    EXPECT_EQ(out.GetLastAppliedQuery()->text, "net VCC");
    out.GetLastAppliedQuery()->text = "mine";
    SearchQueryInfo again;
    scene->GetSearchQueryInfo(again);
    EXPECT_EQ(again.GetLastAppliedQuery()->text, "net VCC");
}

TEST_F(SceneTest, ExpandedStateDefaultsToExpandedWithoutStoring) {
    EXPECT_TRUE(scene->GetCVExpandedState("Layers/Top"));
    scene->AddCVExpandedState("Layers/Top", false);
    EXPECT_FALSE(scene->GetCVExpandedState("Layers/Top"));
    EXPECT_TRUE(scene->GetCVExpandedState("Layers/Bottom"));
}

TEST_F(SceneTest, UnlockedReadersDoNotWaitForTheLock) {
    std::atomic<bool> done{false};
    {
        dp::WriteLocker held(scene->GetRWLock());
        std::thread reader([&] {
            scene->GetFillShapes();
            scene->GetOverlapColor();
            scene->GetHighlightFonted();
            scene->OnGroupContentAdded("no such group", {});
            done = true;
        });
        reader.join();
    }
    EXPECT_TRUE(done.load());
}

// Guards a crash: undoing a recorded fill switch after its scene had ended ran the step against
// a scene whose kernel scene was already gone (a null dereference). The undo list now lets go of
// a scene's operations when the scene ends, so there is nothing left to undo.
TEST_F(SceneTest, FillSwitchRecordedThenSceneEndedLeavesNothingToUndo) {
    du::SmartPtr<qzk::Operation> op(
        new qzk::Operation("fill", du::SmartPtr<qzk::Scene>(kernel), false));
    scene->ToggleFillShapes(op);
    ASSERT_EQ(qzref::Inspect(*op).GetStepCount(), 1u);
    qzk::RecordOperation(op);
    op = nullptr;
    ASSERT_EQ(qzref::UndoControl::GetUndoCount(), 1u);

    qzref::Inspect(*kernel).DestroyScene();
    kernel = nullptr;
    EXPECT_EQ(qzref::UndoControl::GetUndoCount(), 0u);
    EXPECT_FALSE(qzref::UndoControl::Undo());
}

} // namespace
} // namespace scenetest
