// The ECAD kernel scenes: appearance layers, the appearance bracket, overlays, draw order, the
// link to the API scene and its end, class types, compare colours and the views' crosshair.
#include "dg/Color.h"
#include "dg/DMat33.h"
#include "dom/MessageReader.h"
#include "qzk/ClassType.h"
#include "qzk/EcadDesign.h"
#include "qzk/Instance.h"
#include "qzk/MemoryPoolAllocated.h"
#include "qzk/Observable.h"
#include "qzk/ViewableSource.h"
#include "qzk/World.h"
#include "qzk/ecad/AppearanceItem.h"
#include "qzk/ecad/BaseSceneObserver.h"
#include "qzk/ecad/Overlay.h"
#include "qzk/ecad/PCBCompareScene.h"
#include "qzk/ecad/PCBCompareSceneObserver.h"
#include "qzk/ecad/PCBScene.h"
#include "qzk/ecad/PCBSceneObserver.h"
#include "qzk/ecad/PCBView.h"
#include "qzk/ecad/PCBViewObserver.h"
#include "qzk/ecad/SchematicScene.h"
#include "qzref/Journal.h"
#include "qzref/Messages.h"
#include "qzref/Platform.h"

#include <gtest/gtest.h>

#include "qzref/Inspect.h"
#include <string>
#include <vector>

// A stand-in for the layer's API scene: the kernel knows the class only by this name.
namespace qzkapp::ecad {
class BaseScene : public qzk::Observable {
public:
    explicit BaseScene(du::SmartPtr<qzk::ecad::BaseScene> const& kernel)
        : qzk::Observable(kernel.Get()), kernel_(kernel) {
        kernel_->SetApiScene(this);
    }
    qzk::ClassType const& GetClassType() const override {
        static qzk::ClassType const type(162);
        return type;
    }
    int destroyCalls = 0;

protected:
    // As the layer's scenes do: give up the link, then the kernel scene.
    void _OnDestroy() override {
        ++destroyCalls;
        kernel_->SetApiScene(nullptr);
        kernel_ = nullptr;
    }

private:
    du::SmartPtr<qzk::ecad::BaseScene> kernel_;
};
} // namespace qzkapp::ecad

namespace {

using qzk::ecad::AppearanceItem;
using qzk::ecad::BaseScene;

int objects[4];
AppearanceItem Item(int i) {
    return AppearanceItem(&objects[i], 1, 2, nullptr);
}

class EcadScene : public ::testing::Test {
protected:
    qzref::ScopedPlatform platform;

    du::SmartPtr<qzk::ecad::PCBScene> MakeBoard(char const* path = "board-a.json") {
        du::SmartPtr<qzk::ecad::PCBScene> scene;
        qzk::ecad::PCBScene::Create(qzk::World::GetWorld(), qzk::Instance::Create("i"),
                                    qzk::ViewableSource::Create(path), scene);
        return scene;
    }
};

struct BoardRecorder : qzk::ecad::PCBSceneObserver {
    void DetachObserver() override {}
    void OnDrawOrderChanged() override { log.push_back("draw"); }
    void OnOverlayCreate(du::SmartPtr<qzk::ecad::Overlay> const& o) override {
        log.push_back("create " + std::to_string(o ? o->GetId() : 0));
    }
    void OnOverlayRemove(du::SmartPtr<qzk::ecad::Overlay> const& o) override {
        log.push_back("remove " + std::to_string(o ? o->GetId() : 0));
    }
    void OnNewerFileWarning(du::Symbol const& url) override { log.push_back("warn " + url.str()); }
    void OnIsolate(std::vector<AppearanceItem> const& items, bool on) override {
        log.push_back("isolate " + std::to_string(items.size()) + (on ? " on" : " off"));
        isolated = items;
    }
    void OnViewCreate(du::SmartPtr<qzk::ecad::PCBView> const& view) override {
        log.push_back(view ? "view" : "view null");
    }
    void OnGroupOverlapColorChanged() override { log.push_back("overlap colour"); }
    std::vector<std::string> log;
    std::vector<AppearanceItem> isolated;
};

TEST_F(EcadScene, AppearanceLayersKeepLastWriteAndClearOnlyTheirOwnLayer) {
    auto scene = MakeBoard();
    scene->SetItemSelectionAppearance(Item(0), dg::Color(0x010000FF, true), true, false);
    scene->SetItemSelectionAppearance(Item(0), dg::Color(0x01DC0000, true), false, true);
    scene->SetItemHighlightAppearance(Item(0), dg::Color(0x0100FF00, true), true);

    BaseScene::Look look;
    ASSERT_TRUE(qzref::Inspect(*scene).GetLook(Item(0), BaseScene::SelectionLayer, look));
    EXPECT_EQ(look, (BaseScene::Look{0x01DC0000, false, true}));
    EXPECT_EQ(qzref::Inspect(*scene).GetLookCount(BaseScene::SelectionLayer), 1u);

    scene->ClearItemAppearance(Item(0), false);
    EXPECT_FALSE(qzref::Inspect(*scene).GetLook(Item(0), BaseScene::SelectionLayer, look));
    ASSERT_TRUE(qzref::Inspect(*scene).GetLook(Item(0), BaseScene::HighlightLayer, look));
    EXPECT_EQ(look.color, 0x0100FF00u);

    // The group layer answers the layer's "already in a group" question.
    EXPECT_FALSE(scene->GetItemAppearanceCount(Item(1), BaseScene::GroupLayer));
    scene->SetItemGroupAppearance(Item(1), dg::Color(0x01DC0000, true));
    EXPECT_TRUE(scene->GetItemAppearanceCount(Item(1), BaseScene::GroupLayer));
    scene->ClearGroupAppearances(BaseScene::GroupLayer);
    EXPECT_FALSE(scene->GetItemAppearanceCount(Item(1), BaseScene::GroupLayer));
    EXPECT_EQ(qzref::Inspect(*scene).GetLookCount(BaseScene::HighlightLayer), 1u);
    qzref::Inspect(*scene).DestroyScene();
}

TEST_F(EcadScene, RefusedAppearanceUpdateOpensNoBracket) {
    auto scene = MakeBoard();
    EXPECT_TRUE(scene->BeginAppearanceUpdate());
    qzref::Inspect(*scene).SetRefuseAppearanceUpdate(true);
    EXPECT_FALSE(scene->BeginAppearanceUpdate());
    EXPECT_EQ(qzref::Inspect(*scene).GetOpenAppearanceUpdates(), 1);
    scene->EndAppearanceUpdate();
    scene->EndAppearanceUpdate();
    EXPECT_EQ(qzref::Inspect(*scene).GetOpenAppearanceUpdates(), 0);
    EXPECT_EQ(qzref::Inspect(*scene).GetUnbalancedEndCount(), 1u);

    std::size_t mark = qzref::Journal::Size();
    qzref::Inspect(*scene).SetRefuseAppearanceUpdate(false);
    EXPECT_TRUE(scene->BeginAppearanceUpdate());
    auto lines = qzref::Journal::Since(mark);
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0], scene->GetObjectName().str() + ".BeginAppearanceUpdate()");
    qzref::Inspect(*scene).DestroyScene();
}

TEST_F(EcadScene, OverlaysAreFoundByIdAndToldToObservers) {
    auto scene = MakeBoard();
    BoardRecorder recorder;
    ASSERT_TRUE(scene->RegisterObserver(recorder));
    EXPECT_TRUE(scene->FindOverlay(7).IsNull());

    auto board = qzk::ecad::EcadPCBData::Create("b", true);
    auto overlay = scene->CreateOverlay(board, 7, true, dg::Color(0x010000FF, true), 1,
                                        dg::DMat33::IDENTITY, dg::DPoint2D(1.0, 0.0), L"top");
    ASSERT_FALSE(overlay.IsNull());
    EXPECT_EQ(scene->FindOverlay(7).Get(), overlay.Get());
    EXPECT_EQ(overlay->overlayKind, 1u);
    EXPECT_EQ(qzref::Inspect(*overlay).GetName(), "top");

    scene->RotateOverlay(7, 90.0);
    EXPECT_EQ(qzref::Inspect(*overlay).GetTransform(),
              dg::DMat33::Rotation(90.0, dg::DPoint2D(1.0, 0.0)));
    scene->RenameOverlay(8, "other"); // unknown: ignored
    scene->RenameOverlay(7, "renamed");
    EXPECT_EQ(qzref::Inspect(*overlay).GetName(), "renamed");
    scene->RemoveOverlay(7);
    EXPECT_TRUE(scene->FindOverlay(7).IsNull());
    scene->RemoveOverlay(7);

    qzref::Messages::PumpUntilIdle();
    EXPECT_EQ(recorder.log, (std::vector<std::string>{"create 7", "remove 7"}));
    scene->UnregisterObserver(recorder);
    qzref::Inspect(*scene).DestroyScene();
}

TEST_F(EcadScene, InvertLayersHoldsTheLastCallsInvert) {
    auto scene = MakeBoard();
    BoardRecorder recorder;
    scene->RegisterObserver(recorder);
    scene->SetDrawOrder({3, 2, 1}, true, true);
    EXPECT_TRUE(scene->invertLayers);
    scene->SetDrawOrder({1, 2}, false, false);
    EXPECT_FALSE(scene->invertLayers);
    EXPECT_EQ(qzref::Inspect(*scene).GetDrawOrder(), (std::vector<short>{1, 2}));
    EXPECT_FALSE(qzref::Inspect(*scene).GetDrawOrderFlag());
    qzref::Messages::PumpUntilIdle();
    EXPECT_EQ(recorder.log, (std::vector<std::string>{"draw", "draw"}));
    scene->UnregisterObserver(recorder);
    qzref::Inspect(*scene).DestroyScene();
}

TEST_F(EcadScene, KernelSceneAloneKeepsTheApiSceneAliveAndEndsIt) {
    uint64 const before = qzk::MemoryPoolAllocated::GetLiveBlockCount();
    {
        auto scene = MakeBoard("board-b.json");
        qzkapp::ecad::BaseScene* api = nullptr;
        {
            du::SmartPtr<qzkapp::ecad::BaseScene> held(new qzkapp::ecad::BaseScene(scene));
            api = held.Get();
        }
        // Only the kernel scene's reference is left, and it keeps the API scene.
        EXPECT_EQ(scene->GetApiScene(), api);
        EXPECT_EQ(api->GetReferenceCount(), 1);
        EXPECT_EQ(qzref::Inspect(*scene).GetApiSceneObservable().Get(),
                  static_cast<qzk::Observable*>(api));

        du::SmartPtr<qzk::Observable> watch = qzref::Inspect(*scene).GetApiSceneObservable();
        qzref::Inspect(*scene).DestroyScene();
        auto const* stand = static_cast<qzkapp::ecad::BaseScene const*>(watch.Get());
        EXPECT_EQ(stand->destroyCalls, 1);
        EXPECT_TRUE(watch->IsDestroyed());
        EXPECT_EQ(scene->GetApiScene(), nullptr);
        EXPECT_EQ(watch->GetReferenceCount(), 1);
    }
    qzref::Messages::PumpUntilIdle();
    EXPECT_EQ(qzk::MemoryPoolAllocated::GetLiveBlockCount(), before);
}

TEST_F(EcadScene, BothSchematicKindsAreClassType73) {
    du::SmartPtr<qzk::ecad::SchematicScene> scene;
    qzk::ecad::SchematicScene::Create(qzk::World::GetWorld(), qzk::Instance::Create("s"),
                                      qzk::ViewableSource::Create("sheet.json"), scene);
    EXPECT_TRUE(scene->IsATypeOf(qzk::ClassType(73)));
    EXPECT_TRUE(scene->IsATypeOf(qzk::ClassType(qzk::classid::EcadScene)));
    EXPECT_TRUE(scene->IsATypeOf(qzk::ClassType(qzk::classid::Scene)));
    EXPECT_FALSE(scene->IsATypeOf(qzk::ClassType(74)));
    auto board = MakeBoard();
    EXPECT_FALSE(board->IsATypeOf(qzk::ClassType(73)));
    EXPECT_TRUE(board->IsATypeOf(qzk::ClassType(74)));
    qzref::Inspect(*scene).DestroyScene();
    qzref::Inspect(*board).DestroyScene();
}

TEST_F(EcadScene, ScenesOfOnePathShareTheirDesign) {
    auto a = MakeBoard("shared.json");
    auto b = MakeBoard("shared.json");
    auto c = MakeBoard("other.json");
    du::SmartPtr<qzk::EcadDesign> da, db, dc;
    a->GetEcadDesign(da, 0);
    b->GetEcadDesign(db, 0);
    c->GetEcadDesign(dc, 0);
    ASSERT_FALSE(da.IsNull());
    EXPECT_EQ(da.Get(), db.Get());
    EXPECT_NE(da.Get(), dc.Get());
    du::SmartPtr<qzk::EcadDesign> none;
    a->GetEcadDesign(none, 1);
    EXPECT_TRUE(none.IsNull());
    for (auto* s : {a.Get(), b.Get(), c.Get()}) {
        qzref::Inspect(*s).DestroyScene();
    }
}

TEST_F(EcadScene, BoardNoticesReachObserversAsMessagesOnly) {
    auto scene = MakeBoard();
    BoardRecorder recorder;
    scene->RegisterObserver(recorder);
    scene->PostNewerFileWarning("new.json");
    scene->SetIsolated({Item(0), Item(1)});
    scene->ClearIsolated();
    qzref::Inspect(*scene).SetGroupOverlapColor(dg::Color(0x01FF00FF, true));
    auto view = qzk::ecad::PCBView::Create(*scene, 1);
    EXPECT_TRUE(recorder.log.empty());
    qzref::Messages::PumpUntilIdle();
    EXPECT_EQ(recorder.log, (std::vector<std::string>{"warn new.json", "isolate 2 on",
                                                      "isolate 0 off", "overlap colour", "view"}));
    EXPECT_TRUE(qzref::Inspect(*scene).GetIsolated().empty());
    EXPECT_FALSE(qzref::Inspect(*scene).IsIsolating());
    dg::Color overlap;
    scene->GetGroupOverlapColor(overlap);
    EXPECT_EQ(overlap.GetAsHexUI(), 0x01FF00FFu);
    scene->UnregisterObserver(recorder);
    qzref::Inspect(*scene).DestroyScene();
}

struct CompareRecorder : qzk::ecad::PCBCompareSceneObserver {
    void DetachObserver() override {}
    void OnCompareColorChanged() override { ++changes; }
    int changes = 0;
};

TEST_F(EcadScene, CompareColourControlStoresAndTells) {
    du::SmartPtr<qzk::ecad::PCBCompareScene> scene;
    qzk::ecad::PCBCompareScene::Create(
        qzk::World::GetWorld(), qzk::Instance::Create("a"), qzk::ViewableSource::Create("a.json"),
        qzk::Instance::Create("b"), qzk::ViewableSource::Create("b.json"), scene);
    CompareRecorder recorder;
    scene->RegisterObserver(recorder);
    scene->SetFirstItemColor(dg::Color(0x010000FF, true));
    EXPECT_EQ(qzref::Inspect(*scene).GetFirstItemColor().GetAsHexUI(), 0x010000FFu);
    qzref::Inspect(*scene).ChangeItemColors(
        dg::Color(0x01000001, true), dg::Color(0x01000002, true), dg::Color(0x01000003, true));
    qzref::Messages::PumpUntilIdle();
    EXPECT_EQ(recorder.changes, 1);
    EXPECT_EQ(qzref::Inspect(*scene).GetSecondItemColor().GetAsHexUI(), 0x01000002u);
    EXPECT_EQ(qzref::Inspect(*scene).GetCommonItemColor().GetAsHexUI(), 0x01000003u);
    du::SmartPtr<qzk::EcadDesign> second;
    scene->GetSecondDesign(second);
    ASSERT_FALSE(second.IsNull());
    EXPECT_EQ(second->GetURL().str(), "b.json");
    scene->UnregisterObserver(recorder);
    qzref::Inspect(*scene).DestroyScene();
}

struct CrosshairRecorder : qzk::ecad::PCBViewObserver {
    void DetachObserver() override {}
    void OnCrosshair(bool visible, dg::DPoint2D const& at, void* object) override {
        last = {visible, at, object};
        ++calls;
    }
    struct {
        bool visible;
        dg::DPoint2D at;
        void* object;
    } last{};
    int calls = 0;
};

TEST_F(EcadScene, CrosshairCallsAreStoredAndToldWithTheWholeState) {
    auto scene = MakeBoard();
    auto view = qzk::ecad::PCBView::Create(*scene, 2);
    CrosshairRecorder recorder;
    ASSERT_TRUE(view->RegisterObserver(recorder));
    view->SetCrosshairObject(&objects[2]);
    view->SetCrosshairPosition(dg::DPoint2D(1.5, -2.25));
    view->SetCrosshairVisibility(true);
    EXPECT_TRUE(qzref::Inspect(*view).GetCrosshairVisibility());
    EXPECT_EQ(qzref::Inspect(*view).GetCrosshairObject(), &objects[2]);
    qzref::Messages::PumpUntilIdle();
    EXPECT_EQ(recorder.calls, 3);
    EXPECT_TRUE(recorder.last.visible);
    EXPECT_EQ(recorder.last.at, dg::DPoint2D(1.5, -2.25));
    EXPECT_EQ(recorder.last.object, &objects[2]);
    EXPECT_TRUE(view->SetViewPage(1, true));
    EXPECT_FALSE(view->SetViewPage(2, true));
    EXPECT_EQ(view->GetCurrentPage(), 1u);
    view->UnregisterObserver(recorder);
    qzref::Inspect(*scene).DestroyScene();
}

} // namespace
