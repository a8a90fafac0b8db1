// Going from sheet to sheet of the sample schematic: the picture of each sheet is kept and comes
// back, previews keep theirs apart from the current sheet, and only a real change of sheet posts.
#include "SchematicHarness.h"

#include "IcmApiEcad.h"
#include "dg/DPoint3D.h"
#include "qzk/EcadDesign.h"
#include "qzk/Operation.h"
#include "qzk/ecad/SchematicData.h"
#include "qzk/ecad/SelectionItem.h"
#include "qzref/Inspect.h"

namespace qztest {
namespace {

using qzref::Journal;
using qzref::Messages;

class SheetNavigationTest : public SchematicTest {
protected:
    void SetUp() override {
        SchematicTest::SetUp();
        scene_ = Make(Example("three-sheet-schematic.json"));
        ASSERT_TRUE(scene_);
        api_ = Api(scene_);
        Settle();
        ASSERT_TRUE(api_->IsDesignLoaded());
        view_ = MakeView(scene_, 3);
        ASSERT_TRUE(api_->RegisterObserver(*recorder_));
        Messages::PumpUntilIdle();
        recorder_->Take();
    }

    std::vector<std::string> Events() {
        Messages::PumpUntilIdle();
        return recorder_->Take();
    }

    Kernel scene_;
    qzkapp::ecad::SchematicScene* api_ = nullptr;
    View view_;
    du::SmartPtr<SchematicRecorder> recorder_{new SchematicRecorder()};
};

TEST_F(SheetNavigationTest, ASheetNeverVisitedIsFittedAndAFormerSheetComesBackAsItWasLeft) {
    // The new view was fitted once when the scene heard of it.
    EXPECT_EQ(qzref::Inspect(*view_).GetFitCount(), 1u);
    Place(view_, 5.0, 40.0);

    api_->PageNav(2, Base(view_));
    EXPECT_EQ(qzref::Inspect(*view_).GetPage(), 2u);
    EXPECT_EQ(qzref::Inspect(*view_).GetFitCount(), 2u);
    Place(view_, -7.0, 10.0);

    api_->PageNav(0, Base(view_));
    EXPECT_EQ(qzref::Inspect(*view_).GetPage(), 0u);
    EXPECT_EQ(CentreX(view_), 5.0);
    EXPECT_EQ(Width(view_), 40.0);
    EXPECT_EQ(qzref::Inspect(*view_).GetFitCount(), 2u);

    api_->PageNav(2, Base(view_));
    EXPECT_EQ(CentreX(view_), -7.0);
    EXPECT_EQ(Width(view_), 10.0);
    EXPECT_EQ(Events(), (std::vector<std::string>{"Page 2", "Page 0", "Page 2"}));
}

TEST_F(SheetNavigationTest, GoingToTheSheetOnViewPostsWithoutMovingTheView) {
    Place(view_, 3.0, 25.0);
    std::size_t const mark = Journal::Size();
    api_->PageNav(0, Base(view_));
    EXPECT_EQ(Events(), (std::vector<std::string>{"Page 0"}));
    EXPECT_EQ(qzref::Inspect(*view_).GetPage(), 0u);
    EXPECT_EQ(CentreX(view_), 3.0);
    EXPECT_EQ(Width(view_), 25.0);
    for (std::string const& line : Journal::Since(mark)) {
        EXPECT_EQ(line.find(".SetViewPage("), std::string::npos) << line;
        EXPECT_EQ(line.find(".FitView("), std::string::npos) << line;
    }
    // No crosshair object is set, so the sheet change hides it.
    EXPECT_FALSE(qzref::Inspect(*view_).GetCrosshairVisibility());
}

TEST_F(SheetNavigationTest, AnUnknownSheetLeavesTheCurrentSheetAndPostsNothing) {
    api_->PageNav(1, Base(view_));
    Place(view_, 8.0, 12.0);
    Events();

    api_->PageNav(7, Base(view_));
    api_->PageNav(-3, Base(view_));
    api_->PageNav(1, nullptr);
    api_->PreviewPageNav(1, nullptr);
    EXPECT_TRUE(Events().empty());
    EXPECT_EQ(qzref::Inspect(*view_).GetPage(), 1u);
    EXPECT_EQ(CentreX(view_), 8.0);

    // Sheet 1 is still the current one: a sheet change from it saves its picture there.
    api_->PageNav(0, Base(view_));
    api_->PageNav(1, Base(view_));
    EXPECT_EQ(CentreX(view_), 8.0);
    EXPECT_EQ(Events(), (std::vector<std::string>{"Page 0", "Page 1"}));
}

TEST_F(SheetNavigationTest, ConfirmingThePreviewedSheetKeepsTheFormerSheetsPicture) {
    Place(view_, 1.0, 30.0);
    api_->PreviewPageNav(1, Base(view_));
    EXPECT_EQ(qzref::Inspect(*view_).GetPage(), 1u);
    EXPECT_TRUE(Events().empty());
    Place(view_, 11.0, 15.0);

    api_->PageNav(1, Base(view_));
    EXPECT_EQ(Events(), (std::vector<std::string>{"Page 1"}));
    // The previewed picture was not filed under sheet 0 ...
    api_->PageNav(0, Base(view_));
    EXPECT_EQ(CentreX(view_), 1.0);
    EXPECT_EQ(Width(view_), 30.0);
    // ... and sheet 1 kept the picture the preview left.
    api_->PageNav(1, Base(view_));
    EXPECT_EQ(CentreX(view_), 11.0);
    EXPECT_EQ(Width(view_), 15.0);
}

TEST_F(SheetNavigationTest, EndingAPreviewReturnsToTheCurrentSheetAndKeepsEachPreviewsPicture) {
    Place(view_, 2.0, 20.0);
    api_->PreviewPageNav(1, Base(view_));
    Place(view_, 21.0, 5.0);
    // A second preview files the first one's picture under the first previewed sheet.
    api_->PreviewPageNav(2, Base(view_));
    Place(view_, 32.0, 6.0);
    api_->PreviewPageNav(1, Base(view_));
    EXPECT_EQ(CentreX(view_), 21.0);

    api_->PreviewPageNav(-1, Base(view_));
    EXPECT_EQ(qzref::Inspect(*view_).GetPage(), 0u);
    EXPECT_EQ(CentreX(view_), 2.0);
    EXPECT_EQ(Width(view_), 20.0);
    EXPECT_TRUE(Events().empty());

    // With the preview ended, going to sheet 2 saves sheet 0 and finds sheet 2's preview picture.
    Place(view_, 4.0, 20.0);
    api_->PageNav(2, Base(view_));
    EXPECT_EQ(CentreX(view_), 32.0);
    api_->PageNav(0, Base(view_));
    EXPECT_EQ(CentreX(view_), 4.0);
    EXPECT_EQ(Events(), (std::vector<std::string>{"Page 2", "Page 0"}));
}

// A design that comes back with fewer sheets must not keep pictures of sheets it no longer has,
// nor lose those of the sheets it kept.
TEST_F(SheetNavigationTest, AReloadWithFewerSheetsDropsOnlyTheSurplusSheetsPictures) {
    Place(view_, 1.0, 10.0);
    api_->PageNav(1, Base(view_));
    Place(view_, 2.0, 20.0);
    api_->PageNav(2, Base(view_));
    Place(view_, 3.0, 30.0);
    api_->PageNav(0, Base(view_));

    du::SmartPtr<qzk::EcadDesign> design;
    scene_->GetEcadDesign(design, 0);
    ASSERT_TRUE(design);
    du::SmartPtr<qzk::EcadDesignData> const full = design->GetEcadDesignData();
    auto shorter = qzk::ecad::SchematicData::Create(du::Symbol("two sheets"));
    shorter->AddSheet("Power");
    shorter->AddSheet("Controller");
    design->SetEcadDesignData(du::SmartPtr<qzk::EcadDesignData>(shorter));
    api_->LoadEcadDesign();
    design->SetEcadDesignData(full);
    api_->LoadEcadDesign();
    ASSERT_EQ(qzref::Inspect(*view_).GetNumPages(), 3u);

    unsigned int const fits = qzref::Inspect(*view_).GetFitCount();
    api_->PageNav(1, Base(view_));
    EXPECT_EQ(CentreX(view_), 2.0);
    EXPECT_EQ(qzref::Inspect(*view_).GetFitCount(), fits);
    api_->PageNav(2, Base(view_));
    EXPECT_EQ(qzref::Inspect(*view_).GetFitCount(), fits + 1);
}

// A sheet change while the design is still loading must neither crash nor lose the records made
// then: the view knows one page until the load ends, and the view states are sized at its end.
TEST_F(SchematicTest, ASheetChangeWhileTheLoadIsInFlightIsSafeAndItsRecordsSurvive) {
    qzref::LoaderControl::SetHolding(true);
    Kernel scene = Make(Example("three-sheet-schematic.json"));
    ASSERT_TRUE(scene);
    qzkapp::ecad::SchematicScene* api = Api(scene);
    View view = MakeView(scene, 1);
    du::SmartPtr<SchematicRecorder> recorder(new SchematicRecorder());
    ASSERT_TRUE(api->RegisterObserver(*recorder));
    Messages::PumpUntilIdle();
    EXPECT_TRUE(recorder->Take().empty());

    Place(view, 9.0, 14.0);
    api->PageNav(2, Base(view));
    api->PreviewPageNav(2, Base(view));
    api->PreviewPageNav(-1, Base(view));
    api->PageNav(0, Base(view));
    EXPECT_EQ(qzref::Inspect(*view).GetPage(), 0u);

    qzref::LoaderControl::ReleaseHeld();
    Settle();
    ASSERT_TRUE(api->IsDesignLoaded());
    EXPECT_EQ(qzref::Inspect(*view).GetNumPages(), 3u);
    api->PageNav(2, Base(view));
    EXPECT_EQ(qzref::Inspect(*view).GetPage(), 2u);
    api->PageNav(0, Base(view));
    EXPECT_EQ(CentreX(view), 9.0);
    EXPECT_EQ(Width(view), 14.0);

    Messages::PumpUntilIdle();
    std::vector<std::string> const events = recorder->Take();
    ASSERT_GE(events.size(), 4u);
    EXPECT_EQ(events.front(), "Page 0");
    EXPECT_EQ(events[1], "DesignLoaded 0 \"\"");
    EXPECT_EQ(std::vector<std::string>(events.end() - 2, events.end()),
              (std::vector<std::string>{"Page 2", "Page 0"}));
}

// The load's completion may arrive on the dispatcher thread while the host goes from sheet to
// sheet; the completion resizes the view states that navigation and previews read and write.
TEST_F(SchematicTest, SheetChangesRacingTheLoadsCompletionOnAnotherThreadStayConsistent) {
    Kernel scene = Make(Example("three-sheet-schematic.json"));
    ASSERT_TRUE(scene);
    qzkapp::ecad::SchematicScene* api = Api(scene);
    View view = MakeView(scene, 3);
    ASSERT_TRUE(Messages::StartDispatcher());
    for (int i = 0; i < 200 && !api->IsDesignLoaded(); ++i) {
        api->PreviewPageNav(static_cast<short>(i % 3), Base(view));
        api->PreviewPageNav(-1, Base(view));
        api->PageNav(static_cast<short>(i % 3), Base(view));
    }
    qzref::LoaderControl::WaitUntilIdle();
    ASSERT_TRUE(Messages::StopDispatcher());
    Messages::PumpUntilIdle();
    ASSERT_TRUE(api->IsDesignLoaded());
    Place(view, 6.0, 16.0);
    unsigned int const sheet = qzref::Inspect(*view).GetPage();
    api->PageNav(static_cast<short>((sheet + 1) % 3), Base(view));
    api->PageNav(static_cast<short>(sheet), Base(view));
    EXPECT_EQ(CentreX(view), 6.0);
    EXPECT_EQ(Width(view), 16.0);
}

// A net is marked by its pin on the sheet on view, else by its last pin, which shows only when
// the user goes to that pin's sheet.
TEST_F(SheetNavigationTest, TheCrosshairFollowsTheObjectsSheet) {
    auto const& data = api_->GetDesignData();
    auto const item = [&](char const* name, int type) {
        return du::SmartPtr<qzk::SelectionItem>(du::MakeCounted<qzk::ecad::SelectionItem>(
            data, data->FindObject(name, type), nullptr, nullptr, dg::DPoint3D::ORIGIN, 0, 0));
    };
    api_->SetSelectCrossHair(true);
    api_->PageNav(1, view_);
    api_->SetSelectedItems({item("PWM", IcmApiEcad::NET)});
    Messages::PumpUntilIdle();
    EXPECT_EQ(qzref::Inspect(*view_).GetCrosshairObject(), data->FindObject("U2.PWM"));
    EXPECT_TRUE(qzref::Inspect(*view_).GetCrosshairVisibility());

    api_->PageNav(0, view_);
    EXPECT_FALSE(qzref::Inspect(*view_).GetCrosshairVisibility());
    api_->SetSelectedItems({item("PWM", IcmApiEcad::NET)});
    Messages::PumpUntilIdle();
    EXPECT_EQ(qzref::Inspect(*view_).GetCrosshairObject(), data->FindObject("Q1.G"))
        << "no pin on sheet 0: the last pin stands for the net";
    EXPECT_FALSE(qzref::Inspect(*view_).GetCrosshairVisibility());
    api_->PageNav(2, view_);
    EXPECT_TRUE(qzref::Inspect(*view_).GetCrosshairVisibility());
    api_->PageNav(1, view_);
    EXPECT_FALSE(qzref::Inspect(*view_).GetCrosshairVisibility());
}

// Unlike a board's, the schematic's full colour set doesn't compare groups and sublayers.
TEST_F(SheetNavigationTest, FullColourSetAlwaysRecordsGroupsAndSublayers) {
    Events();
    qzk::ecad::GroupCVInfoSet groups(true);
    api_->GetGroupColorVisInfo(groups);
    qzkapp::ecad::SchematicScene::SublayerMap sublayers;
    api_->GetSublayerColorVisInfo(sublayers);
    std::vector<qzk::ecad::AnnoCVInfo> images;
    api_->GetImageColorVisInfo(images);
    auto op = du::MakeCounted<qzk::Operation>("full", du::SmartPtr<qzk::Scene>(scene_), false);
    api_->SetFullColorVisInfo(groups, images, sublayers, op, qzkapp::ecad::ChangeSourceScene);
    EXPECT_EQ(qzref::Inspect(*op).GetStepCount(), 2u) << "no image step: the images are alike";
    EXPECT_EQ(Events(), (std::vector<std::string>{"SublayerCV 1"}))
        << "posted although nothing changed";

    auto changed = sublayers;
    changed.begin()->second.visible = !changed.begin()->second.visible;
    api_->SetFullColorVisInfo(groups, images, changed, op, qzkapp::ecad::ChangeSourceScene);
    qzk::RecordOperation(op);
    ASSERT_TRUE(qzref::UndoControl::Undo());
    qzkapp::ecad::SchematicScene::SublayerMap now;
    api_->GetSublayerColorVisInfo(now);
    EXPECT_EQ(now.begin()->second.visible, sublayers.begin()->second.visible);
}

} // namespace
} // namespace qztest
