// Overlays of a board scene, and the one call that sets all of a board's colours.
#include "../design/SceneHarness.h"

#include "dg/DMat33.h"
#include "dg/DPoint2D.h"
#include "qzk/AnnoSet.h"
#include "qzk/ClassType.h"
#include "qzk/Operation.h"
#include "qzk/ecad/EcadPCBData.h"
#include "qzk/ecad/Overlay.h"
#include "qzk/ecad/OverlayPrefs.h"
#include "qzref/DesignFile.h"

#include <set>

namespace qztest {
namespace {

using qzk::ecad::AnnoCVInfo;
using qzkapp::ecad::ChangeSourceScene;

class OverlayTest : public SceneTest {
protected:
    void SetUp() override {
        SceneTest::SetUp();
        scene_ = MakeBoard(Example("four-layer-board.json"));
        ASSERT_TRUE(scene_);
        api_ = Api(scene_);
        Settle();
        api_->RegisterObserver(observer_);
        Settle();
        observer_.Take();
        auto read = qzref::ReadDesignFile(Example("top-copper.gbr"));
        film_ = du::DynamicCast<qzk::ecad::EcadPCBData>(read.data);
        ASSERT_TRUE(film_) << read.errorText;
    }
    void TearDown() override {
        api_->UnregisterObserver(observer_);
        SceneTest::TearDown();
    }

    uint64 Create(std::wstring const& name, bool visible) {
        api_->OverlayCreated(film_, name, 0x010000FF, visible, qzk::ecad::GerberPrefs(),
                             dg::DPoint2D(1, 2), dg::DMat33::IDENTITY, du::Symbol("gerber"), false);
        Settle();
        return api_->GetOverlayByName(name);
    }
    std::vector<AnnoCVInfo> List() const {
        std::vector<AnnoCVInfo> list;
        api_->GetOverlayColorVisInfo(list);
        return list;
    }
    std::vector<std::string> Events() {
        Settle();
        return observer_.Take();
    }
    bool HasLayerAnnotation() const {
        du::SmartPtr<qzk::AnnoSet> set;
        scene_->GetAnnoSet(set);
        du::SmartPtr<qzk::Annotation> layer;
        return set && set->GetAnnotationByType(qzk::classid::EcadOverlayLayerAnnotation, 0, layer);
    }

    du::SmartPtr<qzk::ecad::PCBScene> scene_;
    qzkapp::ecad::PCBScene* api_ = nullptr;
    du::SmartPtr<qzk::ecad::EcadPCBData> film_;
    RecordingObserver observer_;
};

TEST_F(OverlayTest, ANewVisibleOverlayBecomesCurrentAndHiddenOnesStayHidden) {
    EXPECT_EQ(api_->GetCurOverlay(), 0u);
    uint64 const first = Create(L"top", true);
    EXPECT_NE(first, 0u);
    EXPECT_EQ(api_->GetCurOverlay(), first);
    EXPECT_EQ(Events(), std::vector<std::string>{"Overlay 1"});
    EXPECT_TRUE(HasLayerAnnotation()) << "the kernel brings the overlay layer";

    std::size_t mark = qzref::Journal::Size();
    uint64 const hidden = Create(L"hidden", false);
    EXPECT_NE(hidden, first);
    EXPECT_EQ(api_->GetCurOverlay(), first) << "a hidden overlay doesn't take over";
    EXPECT_TRUE(Ops(qzref::Journal::Since(mark), {"OverlayColorVisChanged"}).empty());

    mark = qzref::Journal::Size();
    uint64 const second = Create(L"bottom", true);
    EXPECT_EQ(api_->GetCurOverlay(), second);
    EXPECT_EQ(Ops(qzref::Journal::Since(mark), {"OverlayColorVisChanged"}).size(), 1u);
    std::vector<AnnoCVInfo> const list = List();
    ASSERT_EQ(list.size(), 3u);
    EXPECT_FALSE(list[0].visible);
    EXPECT_FALSE(list[1].visible);
    EXPECT_TRUE(list[2].visible);
    EXPECT_EQ(list[2].type, AnnoCVInfo::eOverlay);
    EXPECT_FALSE(qzref::Inspect(*scene_->FindOverlay(first)).IsVisible());

    qzkapp::ecad::PCBScene::OverlayInfo info;
    EXPECT_TRUE(api_->GetOverlayInfo(second, info));
    EXPECT_EQ(info.type, du::Symbol("gerber"));
    EXPECT_TRUE(api_->HasOverlay(hidden));
    EXPECT_FALSE(api_->GetOverlayInfo(12345, info));

    Events();
    std::set<std::wstring> names{L"kept"};
    api_->GetOverlayNames(names);
    EXPECT_EQ(names, (std::set<std::wstring>{L"kept", L"top", L"hidden", L"bottom"}));

    api_->OverlayCreated(nullptr, L"empty", 0, true, qzk::ecad::GerberPrefs(), dg::DPoint2D(),
                         dg::DMat33::IDENTITY, du::Symbol(), false);
    EXPECT_TRUE(Events().empty()) << "no data, no overlay";
    EXPECT_EQ(List().size(), 3u);
}

TEST_F(OverlayTest, OperationsOnTheCurrentOverlayAndItsRemoval) {
    uint64 const a = Create(L"a", true);
    uint64 const b = Create(L"b", true);
    Events();

    std::size_t mark = qzref::Journal::Size();
    api_->RenameCurOverlay(L"b");
    auto lines = qzref::Journal::Since(mark);
    EXPECT_LT(IndexOf(lines, "PostObservableEvent"), IndexOf(lines, "RenameOverlay"))
        << "listeners hear of the name before the kernel";
    EXPECT_EQ(Events().size(), 1u) << "the present name still posts";
    api_->RenameCurOverlay(L"b2");
    EXPECT_EQ(api_->GetCurOverlayName(), L"b2");
    EXPECT_EQ(qzref::Inspect(*scene_->FindOverlay(b)).GetName(), "b2");

    mark = qzref::Journal::Size();
    api_->RotateCurOverlay(90);
    api_->FlipHorzCurOverlay();
    api_->FlipVertCurOverlay();
    EXPECT_EQ(
        Ops(qzref::Journal::Since(mark), {"RotateOverlay", "FlipHorzOverlay", "FlipVertOverlay"}),
        (std::vector<std::string>{"RotateOverlay(" + std::to_string(b) + ", 90)",
                                  "FlipHorzOverlay(" + std::to_string(b) + ")",
                                  "FlipVertOverlay(" + std::to_string(b) + ")"}));
    Events();

    api_->RemoveCurOverlay();
    EXPECT_EQ(Events(), std::vector<std::string>{"Overlay 1"});
    EXPECT_EQ(api_->GetCurOverlay(), 0u) << "the other stays hidden";
    EXPECT_EQ(api_->GetCurOverlayName(), L"");
    EXPECT_FALSE(scene_->FindOverlay(b));
    EXPECT_TRUE(HasLayerAnnotation()) << "one overlay is left";

    mark = qzref::Journal::Size();
    api_->RenameCurOverlay(L"x");
    api_->RotateCurOverlay(10);
    api_->RemoveCurOverlay();
    api_->RemoveOverlay(b);
    EXPECT_TRUE(Events().empty()) << "nothing current, nothing known: nothing happens";
    EXPECT_TRUE(
        Ops(qzref::Journal::Since(mark), {"RenameOverlay", "RotateOverlay", "RemoveOverlay"})
            .empty());

    api_->RemoveOverlay(a);
    EXPECT_EQ(Events(), std::vector<std::string>{"Overlay 1"});
    EXPECT_FALSE(HasLayerAnnotation()) << "the layer goes with the last overlay";
    EXPECT_FALSE(api_->HasOverlay(a));
}

TEST_F(OverlayTest, IdsAreNeverZeroAndNeverRepeatAcrossScenes) {
    auto other = MakeBoard(Example("six-layer-board.json"));
    Settle();
    std::set<uint64> ids;
    for (int i = 0; i < 50; ++i) {
        api_->OverlayCreated(film_, L"o", 0, false, qzk::ecad::GerberPrefs(), dg::DPoint2D(),
                             dg::DMat33::IDENTITY, du::Symbol(), false);
        Api(other)->OverlayCreated(film_, L"o", 0, false, qzk::ecad::GerberPrefs(), dg::DPoint2D(),
                                   dg::DMat33::IDENTITY, du::Symbol(), false);
    }
    for (auto* scene : {api_, Api(other)}) {
        std::vector<AnnoCVInfo> list;
        scene->GetOverlayColorVisInfo(list);
        for (AnnoCVInfo const& entry : list) {
            EXPECT_NE(entry.id, 0u);
            ids.insert(entry.id);
        }
    }
    EXPECT_EQ(ids.size(), 100u);
}

TEST_F(OverlayTest, PreferencesPlaceTheOverlayAboutTheFilmsCentre) {
    qzk::ecad::OverlayPrefs prefs;
    prefs.Init();
    api_->OverlayCreated(film_, L"placed", qzk::ecad::GerberPrefs(), prefs, du::Symbol("g"), true);
    Settle();
    uint64 const id = api_->GetOverlayByName(L"placed");
    ASSERT_NE(id, 0u);
    dg::DPoint2D const center = qzref::Inspect(*scene_->FindOverlay(id)).GetCenter();
    dg::DPoint2D const expected = film_->GetRange().GetCenter();
    EXPECT_DOUBLE_EQ(center.x, expected.x);
    EXPECT_DOUBLE_EQ(center.y, expected.y);
}

TEST_F(OverlayTest, FullColourSetRecordsAndPostsOnlyWhatDiffers) {
    Create(L"a", true);
    Create(L"b", false);
    Events();
    qzk::ecad::GroupCVInfoSet groups(false);
    api_->GetGroupColorVisInfo(groups);
    qzk::ecad::SublayerPCB_CVSet sublayers;
    api_->GetColorVisInfo(sublayers);
    std::vector<AnnoCVInfo> const overlays = List();
    std::vector<AnnoCVInfo> images;
    api_->GetImageColorVisInfo(images);
    auto const operation = [&] {
        return du::MakeCounted<qzk::Operation>("full", du::SmartPtr<qzk::Scene>(scene_), false);
    };

    auto op = operation();
    std::size_t const mark = qzref::Journal::Size();
    api_->SetFullColorVisInfo(groups, sublayers, overlays, images, op, ChangeSourceScene);
    EXPECT_EQ(qzref::Inspect(*op).GetStepCount(), 0u);
    EXPECT_TRUE(Events().empty());
    EXPECT_TRUE(
        Ops(qzref::Journal::Since(mark), {"SetColorVisInfo", "OverlayColorVisChanged"}).empty());

    std::vector<AnnoCVInfo> changed = overlays;
    changed[0].visible = false;
    changed[1].visible = true;
    changed[1].color = 0x0100FF00;
    api_->SetFullColorVisInfo(groups, sublayers, changed, images, op, ChangeSourceScene);
    EXPECT_EQ(qzref::Inspect(*op).GetStepCount(), 1u);
    EXPECT_EQ(Events(), std::vector<std::string>{"Overlay 1"});
    EXPECT_EQ(api_->GetCurOverlayName(), L"b") << "the current overlay follows visibility";
    EXPECT_EQ(qzref::Inspect(*scene_->FindOverlay(changed[1].id)).GetColorWord(), 0x0100FF00u);

    qzk::RecordOperation(op);
    ASSERT_TRUE(qzref::UndoControl::Undo());
    EXPECT_FALSE(AnnoCVInfo::AreDifferent(List(), overlays));
    EXPECT_EQ(Events(), std::vector<std::string>{"Overlay 3"});
    ASSERT_TRUE(qzref::UndoControl::Redo());
    EXPECT_FALSE(AnnoCVInfo::AreDifferent(List(), changed));
    ASSERT_TRUE(qzref::UndoControl::Undo());
    EXPECT_EQ(api_->GetCurOverlayName(), L"a");
    Events();

    // Without an operation the same changes are made and posted.
    qzk::ecad::SublayerPCB_CVSet hidden;
    for (auto entry : sublayers) {
        entry.visible = false;
        hidden.insert(entry);
    }
    api_->SetFullColorVisInfo(groups, hidden, overlays, images, nullptr, ChangeSourceScene);
    EXPECT_EQ(Events(), std::vector<std::string>{"SublayerCV 1"});
    qzk::ecad::SublayerPCB_CVSet now;
    api_->GetColorVisInfo(now);
    EXPECT_FALSE(qzk::ecad::SublayerPCB_CV::AreDifferent(now, hidden));
}

} // namespace
} // namespace qztest
