// The picture of a board against a schematic: the board on the left half, the sheet on view on
// the right, each side's colour changes reaching its own half only, and the same pair opened in
// either order giving the same picture after the same session.
#include "BoardSchematicSession.h"

#include "compare/PCBSchCompareScene.h"
#include "component/EntryPoints.h"
#include "qzk/Instance.h"
#include "qzk/ViewableSource.h"
#include "qzk/World.h"
#include "qzk/ecad/PCBSchCompareScene.h"
#include "qzk/ecad/PCBView.h"
#include "qzk/ecad/SchematicView.h"
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

std::string const kBoard = QZ_EXAMPLES_DIR "/designs/four-layer-board.json";
std::string const kSchematic = QZ_EXAMPLES_DIR "/designs/three-sheet-schematic.json";

// The samples' colours as the picture holds them (0xRRGGBB): the board's top signal
// (0x010000FF), the schematic's wires (0x010000C0) and symbols (0x01800000).
unsigned int const kTopSignal = 0xFF0000, kWires = 0xC00000, kSymbols = 0x000080;

// How many pixels of each colour each half of a picture holds.
struct Halves {
    std::map<unsigned int, int> left;
    std::map<unsigned int, int> right;
    bool operator==(Halves const& other) const {
        return left == other.left && right == other.right;
    }
};

class BoardSchematicPictureTest : public ::testing::Test {
protected:
    void SetUp() override {
        picture_ = testing::TempDir() + "qzhost-board-sheet-" +
                   testing::UnitTest::GetInstance()->current_test_info()->name() + ".png";
        qzref::Platform::Start();
        du::SmartPtr<du::RefCounted> component;
        ASSERT_TRUE(QZDllCreateComponent("qzapi", nullptr, "sceneapifactory", &component));
        factory_ = du::DynamicCast<qzkapp::SceneApiFactory>(component);
        ASSERT_TRUE(factory_);
    }
    void TearDown() override {
        Close();
        factory_ = nullptr;
        qzref::Platform::Stop();
        std::remove(picture_.c_str());
    }

    // Opens the pair as the host does: kind 171, a board view and a schematic view.
    void Open(std::string const& first, std::string const& second) {
        Close();
        scene_ = du::DynamicCast<qzk::ecad::PCBSchCompareScene>(factory_->CreateScene(
            qzk::World::GetWorld(), qzk::Instance::Create("first"),
            qzk::ViewableSource::Create(du::Symbol(first)), qzk::Instance::Create("second"),
            qzk::ViewableSource::Create(du::Symbol(second)), 171));
        ASSERT_TRUE(scene_);
        qzref::LoaderControl::WaitUntilIdle();
        qzref::Messages::PumpUntilIdle();
        auto* api = static_cast<qzkapp::ecad::PCBSchCompareScene*>(scene_->GetApiScene());
        ASSERT_TRUE(api->IsDesignLoaded());
        auto board = qzk::ecad::PCBView::Create(*scene_, 1);
        factory_->ViewCreated(du::SmartPtr<qzk::Scene>(scene_), du::SmartPtr<qzk::View>(board));
        auto sheets = qzk::ecad::SchematicView::Create(*scene_, 3);
        factory_->ViewCreated(du::SmartPtr<qzk::Scene>(scene_), du::SmartPtr<qzk::View>(sheets));
        session_ = std::make_unique<qzhost::BoardSchematicSession>(*api, scene_, sheets, stdout);
    }

    void Close() {
        session_.reset();
        qzref::UndoControl::Clear();
        if (scene_) {
            qzref::Inspect(*scene_).DestroyScene();
        }
        scene_ = nullptr;
        qzref::Messages::PumpUntilIdle();
    }

    void Run(std::string const& script) {
        std::istringstream in(script);
        std::string error;
        ASSERT_TRUE(session_->Run(in, "t.qzs", error)) << error;
    }

    Halves Colours() {
        Halves out;
        std::string why;
        EXPECT_TRUE(session_->RenderTo(picture_, why)) << why;
        cairo_surface_t* surface = cairo_image_surface_create_from_png(picture_.c_str());
        if (cairo_surface_status(surface) == CAIRO_STATUS_SUCCESS) {
            unsigned char const* data = cairo_image_surface_get_data(surface);
            int const stride = cairo_image_surface_get_stride(surface);
            int const width = cairo_image_surface_get_width(surface);
            for (int y = 0; y < cairo_image_surface_get_height(surface); ++y) {
                auto const* row = reinterpret_cast<std::uint32_t const*>(
                    data + static_cast<std::ptrdiff_t>(y) * stride);
                for (int x = 0; x < width; ++x) {
                    ++(x < width / 2 ? out.left : out.right)[row[x] & 0xFFFFFF];
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
    du::SmartPtr<qzk::ecad::PCBSchCompareScene> scene_;
    std::unique_ptr<qzhost::BoardSchematicSession> session_;
};

TEST_F(BoardSchematicPictureTest, EachSideOnItsHalfChangedOnlyByItsOwnColours) {
    Open(kBoard, kSchematic);
    Halves const first = Colours();
    EXPECT_GT(first.left.count(kTopSignal), 0u);
    EXPECT_EQ(first.right.count(kTopSignal), 0u);
    EXPECT_GT(first.right.count(kWires), 0u);
    EXPECT_GT(first.right.count(kSymbols), 0u);
    EXPECT_EQ(first.left.count(kWires), 0u);

    Run("board-sublayer 5 33 visible no\n");
    Halves const boardChanged = Colours();
    EXPECT_EQ(boardChanged.left.count(kTopSignal), 0u);
    EXPECT_EQ(boardChanged.right, first.right);

    Run("undo\nsheet-sublayer 12 color 0x0100FF00\n");
    Halves const sheetChanged = Colours();
    EXPECT_EQ(sheetChanged.left, first.left);
    EXPECT_EQ(sheetChanged.right.count(kWires), 0u);
    EXPECT_GT(sheetChanged.right.count(0x00FF00), 0u);
    Run("undo\n");
    EXPECT_EQ(Colours(), first);
}

TEST_F(BoardSchematicPictureTest, EitherOrderGivesTheSamePictureAfterTheSameSession) {
    std::string const script = "order board move 5 0\norder board invert\nisolate U1\n"
                               "sheet-sublayer 7 visible no\nsheet go 1\n";
    Open(kBoard, kSchematic);
    Run(script);
    Halves const boardFirst = Colours();
    Open(kSchematic, kBoard);
    Run(script);
    Halves const schematicFirst = Colours();
    EXPECT_EQ(boardFirst, schematicFirst);
    // Neither half is empty: both designs were found in both orders.
    EXPECT_GT(boardFirst.left.size(), 2u);
    EXPECT_GT(boardFirst.right.size(), 2u);
}

} // namespace
