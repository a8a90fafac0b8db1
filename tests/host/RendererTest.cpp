// Pictures of a board scene, checked at chosen pixels: an object's colour, a look over it, a hidden
// sublayer absent, the draw order deciding which of two objects is on top, a flipped board
// mirrored.
#include "CompareSession.h"
#include "SchematicSession.h"
#include "Session.h"

#include "board/PCBScene.h"
#include "compare/PCBCompareScene.h"
#include "component/EntryPoints.h"
#include "dg/DMat33.h"
#include "dg/DPoint2D.h"
#include "qzk/Instance.h"
#include "qzk/ViewableSource.h"
#include "qzk/World.h"
#include "qzk/ecad/EcadPCBData.h"
#include "qzk/ecad/GerberPrefs.h"
#include "qzk/ecad/PCBCompareScene.h"
#include "qzk/ecad/PCBScene.h"
#include "qzk/ecad/PCBView.h"
#include "qzk/ecad/SchematicScene.h"
#include "qzk/ecad/SchematicView.h"
#include "qzkapp/SceneApiFactory.h"
#include "qzref/DesignFile.h"
#include "qzref/Inspect.h"
#include "qzref/LoaderControl.h"
#include "qzref/Messages.h"
#include "qzref/Platform.h"
#include "qzref/Renderer.h"
#include "qzref/UndoControl.h"
#include "schematic/SchematicScene.h"

#include <cairo.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <map>
#include <sstream>

namespace {

// 30 x 10 mm of geometry in a 300 x 100 picture: 9 pixels a millimetre about the centre
// (150, 50), so x = 5 mm lands at pixel 60 and x = 25 mm at pixel 240.
char const* const kBoard = R"({
  "formatVersion": 1, "kind": "board", "top": 5, "bottom": 2,
  "layers": [
    {"handle": 1, "name": "Board", "sublayers": [{"handle": 2, "name": "Outline"}]},
    {"handle": 2, "name": "Bottom", "sublayers": [
      {"handle": 10, "name": "Pads", "color": "0x0100FF00"}]},
    {"handle": 5, "name": "Top", "sublayers": [
      {"handle": 10, "name": "Pads", "color": "0x01FF0000"},
      {"handle": 33, "name": "Signal", "color": "0x010000FF"}]}
  ],
  "components": [
    {"name": "L", "layer": 5, "shapes": [
      {"layer": 5, "sublayer": 33, "geometry": [{"rect": [0, 0, 10, 10]}]}]},
    {"name": "R", "layer": 5, "shapes": [
      {"layer": 5, "sublayer": 10, "geometry": [{"pad": [25, 5, 10, 10]}]}]},
    {"name": "B", "layer": 2, "shapes": [
      {"layer": 2, "sublayer": 10, "geometry": [{"polygon": [0, 0, 10, 0, 10, 10, 0, 10]}]}]}
  ]
})";

unsigned int const kRed = 0xFF0000, kGreen = 0x00FF00, kBlue = 0x0000FF, kBlack = 0;

class RendererTest : public ::testing::Test {
protected:
    void SetUp() override {
        // ctest runs each test as its own process, side by side: one set of files each.
        std::string const stem = testing::TempDir() + "qzhost-render-" +
                                 testing::UnitTest::GetInstance()->current_test_info()->name();
        design_ = stem + ".json";
        picture_ = stem + ".png";
        std::ofstream(design_) << kBoard;
        qzref::Platform::Start();
        du::SmartPtr<du::RefCounted> component;
        ASSERT_TRUE(QZDllCreateComponent("qzapi", nullptr, "sceneapifactory", &component));
        auto* factory = dynamic_cast<qzkapp::SceneApiFactory*>(component.Get());
        ASSERT_NE(factory, nullptr);
        bool flag = false;
        scene_ = du::DynamicCast<qzk::ecad::PCBScene>(
            factory->CreateScene(qzk::World::GetWorld(), qzk::Instance::Create("test"),
                                 qzk::ViewableSource::Create(du::Symbol(design_)), 74, flag));
        ASSERT_TRUE(scene_);
        api_ = static_cast<qzkapp::ecad::PCBScene*>(scene_->GetApiScene());
        qzref::LoaderControl::WaitUntilIdle();
        qzref::Messages::PumpUntilIdle();
        ASSERT_TRUE(api_->IsDesignLoaded());
        session_ = std::make_unique<qzhost::Session>(*api_, scene_, stdout);
    }

    void TearDown() override {
        session_.reset();
        qzref::UndoControl::Clear();
        if (scene_) {
            qzref::Inspect(*scene_).DestroyScene();
        }
        scene_ = nullptr;
        qzref::Messages::PumpUntilIdle();
        qzref::Platform::Stop();
        std::remove(design_.c_str());
        std::remove(picture_.c_str());
    }

    void Run(std::string const& script) {
        std::istringstream in(script);
        std::string error;
        ASSERT_TRUE(session_->Run(in, "t.qzs", error)) << error;
    }

    // The picture's pixels at (x, y) for each given point, as 0xRRGGBB.
    std::vector<unsigned int> Pixels(qzref::Renderer::View view,
                                     std::vector<std::pair<int, int>> const& points) {
        view.width = 300;
        view.height = 100;
        std::string error;
        EXPECT_TRUE(qzref::Renderer::Render(*scene_, view, picture_, error)) << error;
        cairo_surface_t* surface = cairo_image_surface_create_from_png(picture_.c_str());
        std::vector<unsigned int> out;
        if (cairo_surface_status(surface) == CAIRO_STATUS_SUCCESS) {
            EXPECT_EQ(cairo_image_surface_get_width(surface), 300);
            unsigned char const* data = cairo_image_surface_get_data(surface);
            int const stride = cairo_image_surface_get_stride(surface);
            for (auto const& [x, y] : points) {
                auto const* row = reinterpret_cast<std::uint32_t const*>(
                    data + static_cast<std::ptrdiff_t>(y) * stride);
                out.push_back(row[x] & 0xFFFFFF);
            }
        } else {
            ADD_FAILURE() << "no PNG at " << picture_;
        }
        cairo_surface_destroy(surface);
        return out;
    }

    std::string design_;
    std::string picture_;
    du::SmartPtr<qzk::ecad::PCBScene> scene_;
    qzkapp::ecad::PCBScene* api_ = nullptr;
    std::unique_ptr<qzhost::Session> session_;
};

std::vector<std::pair<int, int>> const kLeftRight{{60, 50}, {240, 50}, {150, 50}, {5, 5}};

TEST_F(RendererTest, ColoursLooksVisibilityAndDrawOrder) {
    // L (top signal, red word 0x010000FF) covers B (bottom pads, green) on the left; R (top
    // pads, blue word 0x01FF0000) on the right; nothing between them or in the corner.
    EXPECT_EQ(Pixels({}, kLeftRight), (std::vector<unsigned int>{kRed, kBlue, kBlack, kBlack}));

    Run("sublayer 5 10 visible no\nsublayer 5 33 color 0x0100FFFF\n");
    EXPECT_EQ(Pixels({}, kLeftRight),
              (std::vector<unsigned int>{0xFFFF00, kBlack, kBlack, kBlack}));

    // The bottom layer painted last comes out on top of L.
    Run("draw-order apply 1 5 2\n");
    EXPECT_EQ(Pixels({}, {{60, 50}}), (std::vector<unsigned int>{kGreen}));
    Run("undo\nundo\nundo\n");
    EXPECT_EQ(Pixels({}, kLeftRight), (std::vector<unsigned int>{kRed, kBlue, kBlack, kBlack}));

    // A highlight of the component recolours what it owns in the scene's highlight look.
    Run("highlight R\n");
    unsigned int highlight = 0;
    for (auto const& [item, value] : qzref::Inspect(*scene_).GetLooks(1)) {
        highlight = value.color;
    }
    ASSERT_NE(highlight, 0u);
    unsigned int const rgb =
        ((highlight & 0xFF) << 16) | (highlight & 0xFF00) | ((highlight >> 16) & 0xFF);
    EXPECT_EQ(Pixels({}, kLeftRight), (std::vector<unsigned int>{kRed, rgb, kBlack, kBlack}));
}

// An overlay's film is drawn over the board in the overlay's colour where its transform puts
// it, and not while it is hidden; the crosshair crosses the picture through the marked object.
TEST_F(RendererTest, OverlaysAndTheCrosshairAreDrawnOverTheBoard) {
    auto const film = du::DynamicCast<qzk::ecad::EcadPCBData>(qzref::ReadDesignFile(design_).data);
    ASSERT_TRUE(film);
    // The film's L moved 10 mm to the right covers the gap at 15 mm.
    api_->OverlayCreated(film, L"moved", 0x01FFFFFF, true, qzk::ecad::GerberPrefs(),
                         dg::DPoint2D(15, 5), dg::DMat33::Translation(10, 0), du::Symbol("g"),
                         false);
    EXPECT_EQ(Pixels({}, {{150, 50}, {5, 5}}), (std::vector<unsigned int>{0xFFFFFF, kBlack}));
    Run("overlay visible moved no\n");
    EXPECT_EQ(Pixels({}, {{150, 50}}), (std::vector<unsigned int>{kBlack}));

    auto view = qzk::ecad::PCBView::Create(*scene_, 1);
    Run("select R\ncrosshair on\n");
    qzref::Messages::PumpUntilIdle();
    unsigned int const yellow = 0xFFFF00;
    EXPECT_EQ(Pixels({}, {{240, 5}, {5, 50}, {150, 5}}),
              (std::vector<unsigned int>{yellow, yellow, kBlack}))
        << "through the centre of R, across the whole picture";
    Run("crosshair off\n");
    EXPECT_EQ(Pixels({}, {{240, 5}}), (std::vector<unsigned int>{kBlack}));
    scene_->RemoveView(du::SmartPtr<qzk::View>(view.Get()));
}

TEST_F(RendererTest, FlippedBoardIsMirroredAndSvgIsWritten) {
    qzref::Renderer::View flipped;
    flipped.flip = true;
    EXPECT_EQ(Pixels(flipped, kLeftRight),
              (std::vector<unsigned int>{kBlue, kRed, kBlack, kBlack}));
    qzref::Renderer::View turned;
    turned.rotation = 180;
    EXPECT_EQ(Pixels(turned, kLeftRight), (std::vector<unsigned int>{kBlue, kRed, kBlack, kBlack}));

    std::string const svg = picture_ + ".svg";
    std::string error;
    ASSERT_TRUE(qzref::Renderer::Render(*scene_, {}, svg, error)) << error;
    std::ifstream in(svg);
    std::string const text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    EXPECT_NE(text.find("<svg"), std::string::npos);
    std::remove(svg.c_str());

    EXPECT_FALSE(qzref::Renderer::Render(*scene_, {}, "/nonexistent/dir/x.png", error));
    EXPECT_NE(error.find("/nonexistent/dir/x.png"), std::string::npos) << error;
}

} // namespace

namespace {

// A sheet of the sample schematic: only that sheet's objects, each layer in its colour, a hidden
// layer absent. Checked by the colours the picture holds, not by where.
class SchematicPictureTest : public ::testing::Test {
protected:
    void SetUp() override {
        picture_ = testing::TempDir() + "qzhost-sheet-" +
                   testing::UnitTest::GetInstance()->current_test_info()->name() + ".png";
        qzref::Platform::Start();
        du::SmartPtr<du::RefCounted> component;
        ASSERT_TRUE(QZDllCreateComponent("qzapi", nullptr, "sceneapifactory", &component));
        factory_ = du::DynamicCast<qzkapp::SceneApiFactory>(component);
        ASSERT_TRUE(factory_);
        bool flag = false;
        scene_ = du::DynamicCast<qzk::ecad::SchematicScene>(
            factory_->CreateScene(qzk::World::GetWorld(), qzk::Instance::Create("test"),
                                  qzk::ViewableSource::Create(du::Symbol(
                                      QZ_EXAMPLES_DIR "/designs/three-sheet-schematic.json")),
                                  73, flag));
        ASSERT_TRUE(scene_);
        qzref::LoaderControl::WaitUntilIdle();
        qzref::Messages::PumpUntilIdle();
        auto* api = static_cast<qzkapp::ecad::SchematicScene*>(scene_->GetApiScene());
        ASSERT_TRUE(api->IsDesignLoaded());
        auto view = qzk::ecad::SchematicView::Create(*scene_, 3);
        factory_->ViewCreated(du::SmartPtr<qzk::Scene>(scene_), du::SmartPtr<qzk::View>(view));
        session_ = std::make_unique<qzhost::SchematicSession>(*api, scene_, view, stdout);
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
    du::SmartPtr<qzk::ecad::SchematicScene> scene_;
    std::unique_ptr<qzhost::SchematicSession> session_;
};

// The sample's layer colours: symbols 0x01800000 (blue 0x80), wires 0x010000C0 (red 0xC0),
// ports 0x01808080.
unsigned int const kSymbols = 0x000080, kWires = 0xC00000, kPorts = 0x808080;

TEST_F(SchematicPictureTest, EachSheetShowsItsOwnObjectsInTheirLayersColours) {
    auto first = Colours();
    EXPECT_GT(first[kSymbols], 1000);
    EXPECT_GT(first[kWires], 100);
    EXPECT_EQ(first.count(kPorts), 0u) << "the port lies on the second sheet";

    Run("sheet go 1\n");
    auto second = Colours();
    EXPECT_GT(second[kPorts], 10);

    // A layer's colour and visibility, undone.
    Run("sheet go 0\nsublayer 12 color 0x0100FF00\nsublayer 7 visible no\n");
    auto changed = Colours();
    EXPECT_EQ(changed.count(kWires), 0u);
    EXPECT_GT(changed[0x00FF00], 100);
    EXPECT_EQ(changed.count(kSymbols), 0u);
    Run("undo\nundo\n");
    EXPECT_EQ(Colours(), first);
}

} // namespace

namespace {

// The four-layer board against the six-layer board: each row in its compare colour, the
// second board's objects beside the first's, a hidden row or a mode that leaves a pair out
// taking its objects away.
class ComparePictureTest : public ::testing::Test {
protected:
    void SetUp() override {
        picture_ = testing::TempDir() + "qzhost-compare-" +
                   testing::UnitTest::GetInstance()->current_test_info()->name() + ".png";
        qzref::Platform::Start();
        du::SmartPtr<du::RefCounted> component;
        ASSERT_TRUE(QZDllCreateComponent("qzapi", nullptr, "sceneapifactory", &component));
        factory_ = du::DynamicCast<qzkapp::SceneApiFactory>(component);
        ASSERT_TRUE(factory_);
        scene_ = du::DynamicCast<qzk::ecad::PCBCompareScene>(
            factory_->CreateScene(qzk::World::GetWorld(), qzk::Instance::Create("first"),
                                  qzk::ViewableSource::Create(
                                      du::Symbol(QZ_EXAMPLES_DIR "/designs/four-layer-board.json")),
                                  qzk::Instance::Create("second"),
                                  qzk::ViewableSource::Create(
                                      du::Symbol(QZ_EXAMPLES_DIR "/designs/six-layer-board.json")),
                                  159));
        ASSERT_TRUE(scene_);
        qzref::LoaderControl::WaitUntilIdle();
        qzref::Messages::PumpUntilIdle();
        auto* api = static_cast<qzkapp::ecad::PCBCompareScene*>(scene_->GetApiScene());
        ASSERT_TRUE(api->IsDesignLoaded());
        session_ = std::make_unique<qzhost::CompareSession>(*api, scene_, stdout);
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

    // How many pixels of each colour (0xRRGGBB) the picture holds.
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
    du::SmartPtr<qzk::ecad::PCBCompareScene> scene_;
    std::unique_ptr<qzhost::CompareSession> session_;
};

TEST_F(ComparePictureTest, EachRowInItsCompareColourAndOnlyWhatItsModeShows) {
    // Red words 0x010000DC (first only), blue 0x01DC0000 (second only), green 0x0100DC00 (both).
    Run("scheme red-blue-green\n");
    unsigned int const first = 0xDC0000, second = 0x0000DC, common = 0x00DC00;
    auto colours = Colours();
    EXPECT_GT(colours[first], 100);
    EXPECT_GT(colours[second], 100);
    EXPECT_GT(colours[common], 100);

    // The top signal of the four-layer board pairs with an inner signal of the six-layer board:
    // one row, drawn on both boards in its common colour.
    Run("row 5,33|4,33 common 0x01FFFFFF\n");
    int const white = Colours()[0xFFFFFF];
    EXPECT_GT(white, 100);
    Run("row 5,33|4,33 mode 1\n");
    EXPECT_EQ(Colours()[0xFFFFFF], 0) << "a first-only mode leaves the pair out";
    Run("row 5,33|4,33 mode 3\n");
    EXPECT_EQ(Colours()[0xFFFFFF], white) << "a common-only mode shows it";
    Run("row 5,33|4,33 visible no\n");
    EXPECT_EQ(Colours()[0xFFFFFF], 0);
    Run("undo\nundo\nundo\n");
    EXPECT_EQ(Colours()[0xFFFFFF], white);
    Run("undo\n");
    EXPECT_EQ(Colours(), colours) << "every change undone gives the first picture back";
}

} // namespace
