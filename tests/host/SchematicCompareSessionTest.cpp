// A host's session on two schematics compared: the picture of a sheet shows each object in the
// colour of what it is (in both designs, only the first, only the second), a record changed by
// the session is undone whole, and bad lines are refused with their place.
#include "SchematicCompareSession.h"

#include "compare/SchematicCompareScene.h"
#include "component/EntryPoints.h"
#include "qzk/Instance.h"
#include "qzk/ViewableSource.h"
#include "qzk/World.h"
#include "qzk/ecad/SchematicCompareScene.h"
#include "qzk/ecad/SchematicCompareView.h"
#include "qzkapp/SceneApiFactory.h"
#include "qzref/Inspect.h"
#include "qzref/LoaderControl.h"
#include "qzref/Messages.h"
#include "qzref/Platform.h"
#include "qzref/UndoControl.h"

#include <cairo.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <map>
#include <sstream>

namespace {

class SchematicCompareSessionTest : public ::testing::Test {
protected:
    void SetUp() override {
        picture_ = testing::TempDir() + "qzhost-compare-" +
                   testing::UnitTest::GetInstance()->current_test_info()->name() + ".png";
        qzref::Platform::Start();
        du::SmartPtr<du::RefCounted> component;
        ASSERT_TRUE(QZDllCreateComponent("qzapi", nullptr, "sceneapifactory", &component));
        factory_ = du::DynamicCast<qzkapp::SceneApiFactory>(component);
        ASSERT_TRUE(factory_);
        scene_ = du::DynamicCast<qzk::ecad::SchematicCompareScene>(factory_->CreateScene(
            qzk::World::GetWorld(), qzk::Instance::Create("first"),
            qzk::ViewableSource::Create(
                du::Symbol(QZ_EXAMPLES_DIR "/designs/three-sheet-schematic.json")),
            qzk::Instance::Create("second"),
            qzk::ViewableSource::Create(
                du::Symbol(QZ_EXAMPLES_DIR "/designs/three-sheet-schematic-rev-b.json")),
            161));
        ASSERT_TRUE(scene_);
        qzref::LoaderControl::WaitUntilIdle();
        qzref::Messages::PumpUntilIdle();
        auto* api = static_cast<qzkapp::ecad::SchematicCompareScene*>(scene_->GetApiScene());
        ASSERT_TRUE(api->IsDesignLoaded());
        auto view = qzk::ecad::SchematicCompareView::Create(*scene_, api->GetNumSheets());
        factory_->ViewCreated(du::SmartPtr<qzk::Scene>(scene_), du::SmartPtr<qzk::View>(view));
        session_ = std::make_unique<qzhost::SchematicCompareSession>(*api, scene_, view, stdout);
    }
    void TearDown() override {
        session_.reset();
        qzref::UndoControl::Clear();
        if (scene_) {
            qzref::Inspect(*scene_).DestroyScene();
        }
        scene_ = nullptr;
        factory_ = nullptr;
        qzref::Messages::PumpUntilIdle();
        qzref::Platform::Stop();
        std::remove(picture_.c_str());
    }

    void Run(std::string const& script) {
        std::istringstream in(script);
        std::string error;
        ASSERT_TRUE(session_->Run(in, "t.qzs", error)) << error;
    }
    std::string Refused(std::string const& line) {
        std::istringstream in(line);
        std::string error;
        EXPECT_FALSE(session_->Run(in, "t.qzs", error)) << line;
        return error;
    }

    // How many pixels of each colour (0xRRGGBB) the picture of the sheet on view holds.
    std::map<unsigned int, int> Colours() {
        std::map<unsigned int, int> out;
        std::string why;
        EXPECT_TRUE(session_->RenderTo(picture_, why)) << why;
        cairo_surface_t* surface = cairo_image_surface_create_from_png(picture_.c_str());
        if (cairo_surface_status(surface) == CAIRO_STATUS_SUCCESS) {
            unsigned char const* data = cairo_image_surface_get_data(surface);
            int const stride = cairo_image_surface_get_stride(surface);
            for (int y = 0; y < cairo_image_surface_get_height(surface); ++y) {
                auto const* row = reinterpret_cast<std::uint32_t const*>(
                    data + static_cast<std::ptrdiff_t>(y) * stride);
                for (int x = 0; x < cairo_image_surface_get_width(surface); ++x) {
                    ++out[row[x] & 0xFFFFFF];
                }
            }
        } else {
            ADD_FAILURE() << "no PNG at " << picture_;
        }
        cairo_surface_destroy(surface);
        return out;
    }

    std::string picture_;
    du::SmartPtr<qzkapp::SceneApiFactory> factory_;
    du::SmartPtr<qzk::ecad::SchematicCompareScene> scene_;
    std::unique_ptr<qzhost::SchematicCompareSession> session_;
};

// Symbols: what both designs have in blue, the first's own in green, the second's own in red.
unsigned int const kCommon = 0x0000FF, kFirstOnly = 0x00FF00, kSecondOnly = 0xFF0000;

TEST_F(SchematicCompareSessionTest, EachSymbolInTheColourOfWhichDesignsHaveIt) {
    Run("row 7 common 0x01FF0000\nrow 7 first 0x0100FF00\nrow 7 second 0x010000FF\n");
    // Sheet 0: U1 in both, C1 in the first alone.
    auto power = Colours();
    EXPECT_GT(power[kCommon], 1000);
    EXPECT_GT(power[kFirstOnly], 1000);
    EXPECT_EQ(power.count(kSecondOnly), 0u);

    // Sheet 3 exists in revision B alone: its R1 is the second's own.
    Run("sheet go 3\nexpect sheet = 3 Sensing\n");
    auto sensing = Colours();
    EXPECT_GT(sensing[kSecondOnly], 1000);
    EXPECT_EQ(sensing.count(kCommon), 0u);
    EXPECT_EQ(sensing.count(kFirstOnly), 0u);

    // A hidden record takes its layer off the picture; each change is undone on its own.
    Run("row 7 visible no\n");
    EXPECT_EQ(Colours().count(kSecondOnly), 0u);
    Run("undo\nsheet go 0\nundo\nundo\n");
    auto undone = Colours();
    EXPECT_EQ(undone.count(kFirstOnly), 0u);
    EXPECT_GT(undone[kCommon], 1000);
    Run("expect row 7 = first 0x01000000 second 0x01000000 common 0x01FF0000 mode 0 flag "
        "visible\n");

    // A cell is drawn in the strip along the foot, framed in its colour, and goes with it.
    Run("cell add 5 0x0100FFFF \"moved\"\n");
    EXPECT_GT(Colours()[0xFFFF00], 10);
    Run("cell visible 5 no\n");
    EXPECT_EQ(Colours().count(0xFFFF00), 0u);
}

TEST_F(SchematicCompareSessionTest, BadLinesAreRefusedWithTheirPlace) {
    std::size_t const undoCount = qzref::UndoControl::GetUndoCount();
    EXPECT_EQ(Refused("row 99 first 0x01000000"), "t.qzs:1:5: no record 99 (see print rows)");
    EXPECT_EQ(Refused("row 7 colour 0x01000000"),
              "t.qzs:1:7: expected first, second, common or visible, not 'colour'");
    EXPECT_EQ(Refused("sheet go 4"), "t.qzs:1:10: no sheet 4; the design has 4");
    EXPECT_EQ(Refused("cell add 0 0x01000000 x"), "t.qzs:1:10: expected an id from 1, not '0'");
    EXPECT_EQ(Refused("grid add 1 2 0x01000000 g shown"),
              "t.qzs:1:27: expected hidden or nothing, not 'shown'");
    EXPECT_EQ(Refused("select U1"),
              "t.qzs:1:1: 'select' is not available on a schematic compare scene; it needs a "
              "board scene");
    EXPECT_EQ(Refused("expect grid x = no"), "t.qzs:1:8: expected a grid number after grid");
    // Nothing was changed by any of them.
    EXPECT_EQ(qzref::UndoControl::GetUndoCount(), undoCount);
}

} // namespace
