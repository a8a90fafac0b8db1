// A Gerber film's own picture: clear objects erase what the film drew before them, a macro's
// exposure-off parts are holes in that flash alone, and the window and resolution put each
// millimetre where they say.
#include "qzk/ecad/EcadPCBData.h"
#include "qzref/DesignFile.h"
#include "qzref/Renderer.h"

#include <cairo.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <utility>
#include <vector>

namespace {

class FilmRenderTest : public ::testing::Test {
protected:
    void SetUp() override {
        dir_ =
            std::filesystem::temp_directory_path() /
            ("qz-film-test-" + std::to_string(::testing::UnitTest::GetInstance()->random_seed()));
        std::filesystem::create_directories(dir_);
    }
    void TearDown() override { std::filesystem::remove_all(dir_); }

    du::SmartPtr<qzk::ecad::EcadPCBData> Film(std::string const& text) {
        std::string const path = (dir_ / "film.gbr").string();
        std::ofstream(path) << text;
        auto const read = qzref::ReadDesignFile(path, {}, "overlay");
        EXPECT_EQ(read.status, 0) << read.errorText;
        return du::DynamicCast<qzk::ecad::EcadPCBData>(read.data);
    }

    // The colours (0xRRGGBB) at points given in millimetres, for a picture 10 pixels a
    // millimetre whose lower left corner is (-1, -1) mm.
    std::vector<unsigned int> At(qzk::ecad::EcadPCBData const& film,
                                 std::vector<std::pair<double, double>> const& points) {
        qzref::Renderer::FilmView view;
        view.dpi = 254;
        view.left = -1;
        view.bottom = -1;
        view.width = 200;
        view.height = 120;
        std::string const path = (dir_ / "film.png").string();
        std::string error;
        EXPECT_TRUE(qzref::Renderer::RenderFilm(film, view, path, error)) << error;
        cairo_surface_t* surface = cairo_image_surface_create_from_png(path.c_str());
        std::vector<unsigned int> out;
        if (cairo_surface_status(surface) == CAIRO_STATUS_SUCCESS) {
            EXPECT_EQ(cairo_image_surface_get_width(surface), 200);
            EXPECT_EQ(cairo_image_surface_get_height(surface), 120);
            for (auto const& [x, y] : points) {
                int const px = static_cast<int>((x + 1) * 10);
                int const py = 120 - static_cast<int>((y + 1) * 10) - 1;
                auto const* row =
                    cairo_image_surface_get_data(surface) +
                    static_cast<std::ptrdiff_t>(py) * cairo_image_surface_get_stride(surface);
                out.push_back(reinterpret_cast<std::uint32_t const*>(row)[px] & 0xFFFFFF);
            }
        }
        cairo_surface_destroy(surface);
        return out;
    }

    std::filesystem::path dir_;
};

TEST_F(FilmRenderTest, ClearObjectsEraseTheFilmAndMacroHolesDoNot) {
    auto const film = Film("%FSLAX26Y26*%\n%MOMM*%\n%ADD10C,1*%\n"
                           "%AMHOLE*\n21,1,4,4,0,0,0*\n1,0,2,0,0*%\n%ADD11HOLE*%\n"
                           "G36*\nX0Y0D02*\nX10000000Y0D01*\nX10000000Y10000000D01*\n"
                           "X0Y10000000D01*\nX0Y0D01*\nG37*\n"
                           "%LPC*%\nD10*\nX2000000Y2000000D03*\n"
                           "%LPD*%\nD11*\nX7000000Y7000000D03*\nX15000000Y5000000D03*\nM02*\n");
    ASSERT_TRUE(film);
    unsigned int const ink = 0xFFFFFF;
    unsigned int const none = 0x000000;
    EXPECT_EQ(At(*film, {{2, 2}, {3, 2}, {5, 5}, {7, 7}, {15, 5}, {16.6, 5}, {11, 5}}),
              (std::vector<unsigned int>{none, ink, ink, ink, none, ink, none}))
        << "cleared; beside the clear flash; the region; the macro's hole over the region; the "
           "macro's hole on its own; the macro; beyond the region";
}

TEST_F(FilmRenderTest, StrokesHaveTheirAperturesWidthAndRoundEnds) {
    auto const film = Film("%FSLAX26Y26*%\n%MOMM*%\n%ADD10C,2*%\nD10*\n"
                           "X2000000Y5000000D02*\nX12000000Y5000000D01*\nM02*\n");
    ASSERT_TRUE(film);
    EXPECT_EQ(At(*film, {{7, 5.9}, {7, 6.1}, {12.9, 5}, {13.1, 5}, {12.8, 5.8}}),
              (std::vector<unsigned int>{0xFFFFFF, 0, 0xFFFFFF, 0, 0}))
        << "inside and outside the width; inside and beyond the round end; off the end's corner";
}

} // namespace
