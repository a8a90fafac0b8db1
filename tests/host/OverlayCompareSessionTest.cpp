// A board compared with a Gerber film, as the host drives it: the picture shows the board in its
// side's compare colour and the film over it in the other, follows the session's changes and
// their undo, keeps the kernel's colours until the next push, and a film that cannot be read
// anew leaves the board alone.
#include "OverlayCompareSession.h"

#include "compare/PCBOvlCompareScene.h"
#include "component/EntryPoints.h"
#include "qzk/Instance.h"
#include "qzk/ViewableSource.h"
#include "qzk/World.h"
#include "qzk/ecad/PCBOvlCompareScene.h"
#include "qzkapp/SceneApiFactory.h"
#include "qzref/Inspect.h"
#include "qzref/LoaderControl.h"
#include "qzref/Messages.h"
#include "qzref/Platform.h"
#include "qzref/PreferencesControl.h"
#include "qzref/Renderer.h"
#include "qzref/UndoControl.h"

#include <cairo.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <sstream>

namespace {

// 30 x 10 mm of board in a 300 x 100 picture, 9 pixels a millimetre about (150, 50): L at the
// left (pixel 60), R at the right (pixel 240), nothing between them.
char const* const kBoard = R"({
  "formatVersion": 1, "kind": "board", "top": 5, "bottom": 1,
  "layers": [
    {"handle": 1, "name": "Board", "sublayers": [{"handle": 2, "name": "Outline"}]},
    {"handle": 5, "name": "Top", "sublayers": [
      {"handle": 10, "name": "Pads", "color": "0x01FF0000"},
      {"handle": 33, "name": "Signal", "color": "0x010000FF"}]}
  ],
  "components": [
    {"name": "L", "layer": 5, "shapes": [
      {"layer": 5, "sublayer": 33, "geometry": [{"rect": [0, 0, 10, 10]}]}]},
    {"name": "R", "layer": 5, "shapes": [
      {"layer": 5, "sublayer": 10, "geometry": [{"pad": [25, 5, 10, 10]}]}]}
  ]
})";

// A film with one square in the gap between L and R.
char const* const kFilm = R"({
  "formatVersion": 1, "kind": "overlay", "top": 5, "bottom": 5,
  "layers": [{"handle": 5, "name": "Top", "sublayers": [{"handle": 33, "name": "Signal"}]}],
  "components": [
    {"name": "ART", "layer": 5, "shapes": [
      {"layer": 5, "sublayer": 33, "geometry": [{"rect": [13, 3, 17, 7]}]}]}
  ]
})";

unsigned int const kRed = 0xFF0000, kGreen = 0x00FF00, kBlack = 0;
std::vector<std::pair<int, int>> const kLeftGapRight{{60, 50}, {150, 50}, {240, 50}};

class OverlayCompareSessionTest : public ::testing::Test {
protected:
    void SetUp() override {
        std::string const stem = testing::TempDir() + "qzhost-film-" +
                                 testing::UnitTest::GetInstance()->current_test_info()->name();
        board_ = stem + ".json";
        film_ = stem + ".gbr";
        picture_ = stem + ".png";
        std::ofstream(board_) << kBoard;
        std::ofstream(film_) << kFilm;
        qzref::Platform::Start();
        // Red for the first design (the board), green for the second (the film).
        qzref::PreferencesControl::SetColorWord("Compare/Ecad_Compare/compare_color_a", 0x010000FF);
        qzref::PreferencesControl::SetColorWord("Compare/Ecad_Compare/compare_color_b", 0x0100FF00);
        du::SmartPtr<du::RefCounted> component;
        ASSERT_TRUE(QZDllCreateComponent("qzapi", nullptr, "sceneapifactory", &component));
        auto* factory = dynamic_cast<qzkapp::SceneApiFactory*>(component.Get());
        ASSERT_NE(factory, nullptr);
        scene_ = du::DynamicCast<qzk::ecad::PCBOvlCompareScene>(factory->CreateScene(
            qzk::World::GetWorld(), qzk::Instance::Create("board"),
            qzk::ViewableSource::Create(du::Symbol(board_)), qzk::Instance::Create("film"),
            qzk::ViewableSource::Create(du::Symbol(film_)), 159));
        ASSERT_TRUE(scene_);
        api_ = static_cast<qzkapp::ecad::PCBOvlCompareScene*>(scene_->GetApiScene());
        qzref::LoaderControl::WaitUntilIdle();
        qzref::Messages::PumpUntilIdle();
        ASSERT_TRUE(api_->IsDesignLoaded());
        session_ = std::make_unique<qzhost::OverlayCompareSession>(*api_, scene_, stdout);
    }

    void TearDown() override {
        session_.reset();
        qzref::UndoControl::Clear();
        if (scene_) {
            qzref::Inspect(*scene_).DestroyScene();
        }
        scene_ = nullptr;
        qzref::Messages::PumpUntilIdle();
        qzref::PreferencesControl::Clear();
        qzref::Platform::Stop();
        std::remove(board_.c_str());
        std::remove(film_.c_str());
        std::remove(picture_.c_str());
    }

    // Runs the script; returns "" when it ran, else the error.
    std::string Run(std::string const& script) {
        std::istringstream in(script);
        std::string error;
        return session_->Run(in, "t.qzs", error) ? std::string() : error;
    }

    // The picture's pixels at the points, as 0xRRGGBB.
    std::vector<unsigned int> Pixels(std::vector<std::pair<int, int>> const& points) {
        qzref::Renderer::View view;
        view.width = 300;
        view.height = 100;
        std::string error;
        EXPECT_TRUE(qzref::Renderer::Render(*scene_, view, picture_, error)) << error;
        cairo_surface_t* surface = cairo_image_surface_create_from_png(picture_.c_str());
        std::vector<unsigned int> out;
        if (cairo_surface_status(surface) == CAIRO_STATUS_SUCCESS) {
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

    std::string board_;
    std::string film_;
    std::string picture_;
    du::SmartPtr<qzk::ecad::PCBOvlCompareScene> scene_;
    qzkapp::ecad::PCBOvlCompareScene* api_ = nullptr;
    std::unique_ptr<qzhost::OverlayCompareSession> session_;
};

TEST_F(OverlayCompareSessionTest, ThePictureShowsTheBoardInItsColourAndTheFilmOverIt) {
    // Told no sublayers yet: the whole board in the first colour, the film in the second.
    EXPECT_EQ(Pixels(kLeftGapRight), (std::vector<unsigned int>{kRed, kGreen, kRed}));

    EXPECT_EQ(Run("overlay visible no\n"), "");
    EXPECT_EQ(Pixels(kLeftGapRight), (std::vector<unsigned int>{kRed, kBlack, kRed}));
    EXPECT_EQ(Run("undo\nsublayer 5 10 visible no\n"), "");
    EXPECT_EQ(Pixels(kLeftGapRight), (std::vector<unsigned int>{kRed, kGreen, kBlack}));

    // New compare colours stay in the scene: the picture keeps what the kernel was told until
    // the next change of the set carries them there; the film's row keeps its colour.
    EXPECT_EQ(Run("compare-colors 0x01FF0000 0x01FFFFFF\n"), "");
    EXPECT_EQ(Pixels({{60, 50}, {150, 50}}), (std::vector<unsigned int>{kRed, kGreen}));
    EXPECT_EQ(Run("sublayer 5 10 visible yes\n"), "");
    EXPECT_EQ(Pixels(kLeftGapRight), (std::vector<unsigned int>{0x0000FF, kGreen, 0x0000FF}));
    EXPECT_EQ(Run("defaults\n"), "");
    EXPECT_EQ(Pixels({{150, 50}}), (std::vector<unsigned int>{0xFFFFFF}));
}

TEST_F(OverlayCompareSessionTest, BadLinesAndAFilmThatCannotBeReadAnew) {
    EXPECT_EQ(Run("overlay color red\n"),
              "t.qzs:1:15: expected a colour word such as 0x010000FF, not 'red'");
    EXPECT_EQ(Run("overlay rotate left\n"), "t.qzs:1:16: expected an angle in degrees, not 'left'");
    EXPECT_EQ(Run("overlay flip x\n"), "t.qzs:1:14: expected h or v, not 'x'");
    EXPECT_EQ(Run("compare-colors 0x01 blue\n"),
              "t.qzs:1:21: expected a colour word such as 0x010000FF, not 'blue'");
    EXPECT_EQ(Run("sublayer 9 9 visible no\n"), "t.qzs:1:10: no sublayer (9, 9) on this board");
    EXPECT_EQ(Run("expect designs = first board, second overlay\n"), "");

    // The film's file is gone: loaded anew, it is told as a failed load and the board stays.
    std::remove(film_.c_str());
    EXPECT_EQ(Run("overlay reload\nexpect overlay = none\nexpect designs = first board, second "
                  "overlay\n"),
              "");
    EXPECT_EQ(Run("overlay visible no\n"), "t.qzs:1:9: no overlay on this board (see print rows)");
    EXPECT_EQ(Pixels(kLeftGapRight), (std::vector<unsigned int>{kRed, kBlack, kRed}));
}

} // namespace
