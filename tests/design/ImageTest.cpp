// Images and compare areas of a design scene, heard from the kernel's annotation set, and the
// crosshair over the selection.
#include "SceneHarness.h"

#include "IcmApiEcad.h"
#include "qzk/AnnoSet.h"
#include "qzk/Operation.h"
#include "qzk/ecad/ImageAnnotation.h"
#include "qzk/ecad/Overlay.h"
#include "qzk/ecad/PCBView.h"
#include "qzk/ecad/SelectionItem.h"
#include "qzref/AnnoSetInspector.h"
#include "qzref/ViewInspector.h"

namespace qztest {
namespace {

using qzk::ecad::AnnoCVInfo;

class ImageTest : public SceneTest {
protected:
    void SetUp() override {
        SceneTest::SetUp();
        scene_ = MakeBoard(Example("board-with-images.json"));
        ASSERT_TRUE(scene_);
        api_ = Api(scene_);
        api_->RegisterObserver(observer_);
        Settle();
        scene_->GetAnnoSet(set_);
        ASSERT_TRUE(set_);
    }
    void TearDown() override {
        api_->UnregisterObserver(observer_);
        SceneTest::TearDown();
    }

    std::vector<AnnoCVInfo> Rows() const {
        std::vector<AnnoCVInfo> rows{AnnoCVInfo(9, L"stale", 0, true, AnnoCVInfo::eImage)};
        api_->GetImageColorVisInfo(rows);
        return rows;
    }
    du::SmartPtr<qzk::ecad::Overlay> Overlay(uint64 id) const { return scene_->FindOverlay(id); }
    du::SmartPtr<qzk::ecad::ImageAnnotation> Image(char const* name) const {
        for (auto const& annotation : qzref::Inspect(*set_).GetAnnotations()) {
            auto image = du::DynamicCast<qzk::ecad::ImageAnnotation>(annotation);
            if (image && image->GetImageName() == name) {
                return image;
            }
        }
        return nullptr;
    }
    long ImageEvents() {
        auto const calls = observer_.Take();
        return std::count_if(calls.begin(), calls.end(),
                             [](std::string const& c) { return c.rfind("Image ", 0) == 0; });
    }

    du::SmartPtr<qzk::ecad::PCBScene> scene_;
    qzkapp::ecad::PCBScene* api_ = nullptr;
    du::SmartPtr<qzk::AnnoSet> set_;
    RecordingObserver observer_;
};

TEST_F(ImageTest, ImagesOfTheDesignBecomeRowsAndOverlaysAndAreaImagesShareOneRow) {
    std::vector<AnnoCVInfo> const rows = Rows();
    ASSERT_EQ(rows.size(), 3u) << "two plain images and one row for both areas; none for an "
                                  "image without a picture, and the caller's vector is replaced";
    EXPECT_EQ(rows[0].id, 101u);
    EXPECT_EQ(rows[0].name, L"Logo");
    EXPECT_EQ(rows[0].color, 0x01FFFFFFu);
    EXPECT_NE(rows[1].id, 0u) << "an image with id 0 gets a random one";
    EXPECT_EQ(rows[1].name, L"Assembly photo");
    EXPECT_TRUE(rows[1].visible) << "visibility comes from the preferences, not the image";
    EXPECT_EQ(rows[2].id, api_->GetCompareAreasImageId());
    EXPECT_NE(rows[2].id, 0u);
    EXPECT_EQ(rows[2].name, L"Compare areas");
    EXPECT_EQ(rows[2].color, 0x0100FFFFu) << "the first area image sets the shared colour";
    for (AnnoCVInfo const& row : rows) {
        EXPECT_EQ(row.type, AnnoCVInfo::eImage);
    }

    auto const logo = Overlay(101);
    ASSERT_TRUE(logo);
    EXPECT_EQ(logo->overlayKind, 0u);
    EXPECT_FALSE(logo->kindOneFlag);
    EXPECT_EQ(qzref::Inspect(*logo).GetName(), "Logo overlay");
    EXPECT_TRUE(qzref::Inspect(*logo).GetPictureFlag());
    auto const photo = Overlay(rows[1].id);
    ASSERT_TRUE(photo);
    EXPECT_EQ(photo->overlayKind, 1u);
    EXPECT_TRUE(photo->kindOneFlag);
    EXPECT_EQ(qzref::Inspect(*photo).GetParameter(), 7u);
    for (uint64 const area : {1001u, 1002u}) {
        auto const overlay = Overlay(area);
        ASSERT_TRUE(overlay) << area;
        EXPECT_EQ(overlay->overlayKind, 2u);
        EXPECT_EQ(qzref::Inspect(*overlay).GetColorWord(), 0x0100FFFFu)
            << "every area follows the shared row, whatever its own colour";
    }
    EXPECT_FALSE(Overlay(103)) << "an image without a picture shows nothing";
    EXPECT_FALSE(Overlay(api_->GetCompareAreasImageId())) << "the shared row is no overlay";
}

TEST_F(ImageTest, RemovingAreaImagesPostsOnlyForTheLastAndTakesTheSharedRow) {
    observer_.Take();
    ASSERT_TRUE(set_->RemoveAnnotationFromSet(Image("Compare area A"), nullptr));
    Settle();
    EXPECT_EQ(ImageEvents(), 0);
    EXPECT_FALSE(Overlay(1001));
    EXPECT_EQ(Rows().size(), 3u);

    ASSERT_TRUE(set_->RemoveAnnotationFromSet(Image("Compare area B"), nullptr));
    Settle();
    EXPECT_EQ(ImageEvents(), 1);
    EXPECT_EQ(api_->GetCompareAreasImageId(), 0u);
    std::vector<AnnoCVInfo> const rows = Rows();
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(rows[1].name, L"Assembly photo") << "the others keep their order";

    api_->RemoveImage(12345);
    api_->RenameImage(12345, L"nobody");
    Settle();
    EXPECT_EQ(ImageEvents(), 0) << "unknown ids are ignored";
    api_->RenameImage(101, L"Brand");
    Settle();
    EXPECT_EQ(Rows()[0].name, L"Brand");
    EXPECT_EQ(ImageEvents(), 1);
    EXPECT_EQ(qzref::Inspect(*Overlay(101)).GetName(), "Logo overlay") << "the kernel isn't told";
}

TEST_F(ImageTest, ColourPanelReachesTheImagesAndUndoSwapsTheRows) {
    std::vector<AnnoCVInfo> const before = Rows();
    observer_.Take();
    api_->SetImageColorVisInfo(before, qzkapp::ecad::ChangeSourceScene);
    Settle();
    EXPECT_EQ(ImageEvents(), 0) << "identical rows change nothing";

    std::vector<AnnoCVInfo> changed = before;
    changed[0].color = 0x010000FF;
    changed[0].visible = false;
    changed[2].color = 0x0100FF00;
    auto op = du::MakeCounted<qzk::Operation>("images", du::SmartPtr<qzk::Scene>(scene_), false);
    api_->SetFullColorVisInfo(qzk::ecad::GroupCVInfoSet(false), qzk::ecad::SublayerPCB_CVSet(), {},
                              changed, op, qzkapp::ecad::ChangeSourceScene);
    Settle();
    // Groups and sublayers given empty differ too; only the image step is looked at here.
    auto logo = Image("Logo");
    EXPECT_EQ(logo->imageColor, 0x010000FFu);
    EXPECT_FALSE(logo->IsVisible());
    EXPECT_EQ(Image("Compare area A")->imageColor, 0x0100FFFFu)
        << "the shared row reaches the area overlays, not the area images";
    EXPECT_EQ(qzref::Inspect(*Overlay(1002)).GetColorWord(), 0x0100FF00u);
    EXPECT_EQ(qzref::Inspect(*Overlay(101)).GetColorWord(), 0x010000FFu);
    EXPECT_EQ(Rows()[0].color, 0x010000FFu);

    qzk::RecordOperation(op);
    ASSERT_TRUE(qzref::UndoControl::Undo());
    Settle();
    std::vector<AnnoCVInfo> rows = Rows();
    EXPECT_FALSE(AnnoCVInfo::AreDifferent(rows, before));
    EXPECT_EQ(qzref::Inspect(*Overlay(101)).GetColorWord(), 0x01FFFFFFu);
    ASSERT_TRUE(qzref::UndoControl::Redo());
    Settle();
    EXPECT_FALSE(AnnoCVInfo::AreDifferent(Rows(), changed));
    ASSERT_TRUE(qzref::UndoControl::Undo());
    Settle();
    EXPECT_FALSE(AnnoCVInfo::AreDifferent(Rows(), before)) << "a step undone twice";
}

TEST_F(ImageTest, AChangeNotInPlaceMakesANewOverlayAtTheEnd) {
    auto logo = Image("Logo");
    du::SmartPtr<qzk::ecad::Overlay> const first = Overlay(101);
    logo->SetImageName("Logo two");
    qzref::Inspect(*set_).ChangeAnnotation(logo, false);
    Settle();
    std::vector<AnnoCVInfo> const rows = Rows();
    ASSERT_EQ(rows.size(), 3u);
    EXPECT_EQ(rows.back().id, 101u);
    EXPECT_EQ(rows.back().name, L"Logo two");
    ASSERT_TRUE(Overlay(101));
    EXPECT_NE(Overlay(101).Get(), first.Get());

    // In place: the row follows the image's name and visibility.
    logo->Hide(true, nullptr, false);
    Settle();
    EXPECT_FALSE(Rows().back().visible);
    EXPECT_FALSE(qzref::Inspect(*Overlay(101)).IsVisible());
    auto area = Image("Compare area B");
    area->SetImageName("Area B renamed");
    qzref::Inspect(*set_).ChangeAnnotation(area, true);
    Settle();
    EXPECT_EQ(Rows()[1].name, L"Area B renamed") << "the shared row takes the name changed last";
}

class CrosshairTest : public ImageTest {
protected:
    void SetUp() override {
        ImageTest::SetUp();
        view_ = qzk::ecad::PCBView::Create(*scene_, 1);
        Settle();
    }
    void TearDown() override {
        scene_->RemoveView(du::SmartPtr<qzk::View>(view_.Get()));
        ImageTest::TearDown();
    }
    du::SmartPtr<qzk::SelectionItem> Item(char const* name, int type) const {
        auto const& data = api_->GetDesignData();
        return du::MakeCounted<qzk::ecad::SelectionItem>(
            data, data->FindObject(name, type), nullptr, nullptr, dg::DPoint3D::ORIGIN, 0, 0);
    }
    void Select(std::vector<du::SmartPtr<qzk::SelectionItem>> const& items) {
        api_->SetSelectedItems(items);
        Settle();
    }
    static void* ObjectOf(du::SmartPtr<qzk::SelectionItem> const& item) {
        return static_cast<qzk::ecad::SelectionItem&>(*item).object;
    }
    qzref::ViewInspector View() const { return qzref::Inspect(*view_); }

    du::SmartPtr<qzk::ecad::PCBView> view_;
};

TEST_F(CrosshairTest, SelectionMovesTheCrosshairAndTheFlagShowsIt) {
    auto const d1 = Item("D1", IcmApiEcad::COMPONENT);
    std::size_t const mark = qzref::Journal::Size();
    Select({d1});
    Select({d1});
    EXPECT_EQ(View().GetCrosshairObject(), ObjectOf(d1));
    EXPECT_FALSE(View().GetCrosshairVisibility()) << "the user hasn't asked for it";
    EXPECT_EQ(Ops(qzref::Journal::Since(mark), {"SetCrosshairObject"}).size(), 1u)
        << "the same object twice reaches the view once";

    api_->ToggleSelectCrossHair();
    EXPECT_TRUE(View().GetCrosshairVisibility());
    api_->SetSelectCrossHair(true);
    EXPECT_TRUE(api_->GetSelectCrossHair());

    auto const r1 = Item("D1.A", IcmApiEcad::PIN);
    Select({d1, r1});
    EXPECT_FALSE(View().GetCrosshairVisibility()) << "two objects: no crosshair";
    Select({r1});
    EXPECT_TRUE(View().GetCrosshairVisibility());
    EXPECT_EQ(View().GetCrosshairObject(), ObjectOf(r1));

    Select({Item("LED", IcmApiEcad::NET)});
    qzk::ecad::DesignObject const* marked =
        api_->GetDesignData()->Find(View().GetCrosshairObject());
    ASSERT_NE(marked, nullptr);
    EXPECT_EQ(marked->type, IcmApiEcad::PIN) << "a net is marked by one of its pins";
    EXPECT_TRUE(View().GetCrosshairVisibility());

    api_->SetSelectCrossHair(false);
    Select({});
    api_->SetSelectCrossHair(true);
    EXPECT_FALSE(View().GetCrosshairVisibility()) << "no object, no crosshair";
    api_->SetCrosshairPosition(dg::DPoint2D(3, 4));
    EXPECT_TRUE(View().GetCrosshairVisibility()) << "a position shows it on the flag alone";
    EXPECT_EQ(View().GetCrosshairPosition().x, 3);
}

} // namespace
} // namespace qztest
