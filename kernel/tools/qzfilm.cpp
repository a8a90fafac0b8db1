// qzfilm: a film's extent, its picture, and how well two pictures of a film agree.
//
//   qzfilm extent FILM                      prints min x, min y, max x, max y in millimetres
//   qzfilm render FILM OUT.png DPI LEFT BOTTOM WIDTH HEIGHT
//                                           the film's window (corner in millimetres, size in
//                                           pixels), white on black, hard edges
//   qzfilm compare A.png B.png [LEAST [DIFF.png]]
//                                           prints the share of pixels on which both agree
//                                           (dark or light, at half brightness), and of the dark
//                                           pixels of either; fails under LEAST percent (99);
//                                           DIFF shows where: white in both, red in A alone,
//                                           green in B alone
#include "qzk/ecad/EcadPCBData.h"
#include "qzref/DesignFile.h"
#include "qzref/Renderer.h"

#include <cairo.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

namespace {

int Usage() {
    std::fprintf(stderr, "usage: qzfilm extent FILM\n"
                         "       qzfilm render FILM OUT.png DPI LEFT BOTTOM WIDTH HEIGHT\n"
                         "       qzfilm compare A.png B.png [LEAST [DIFF.png]]\n");
    return 2;
}

du::SmartPtr<qzk::ecad::EcadPCBData> Read(std::string const& path) {
    auto const read = qzref::ReadDesignFile(path, {}, "overlay");
    if (read.status != 0) {
        std::fprintf(stderr, "qzfilm: %s\n", read.errorText.c_str());
        return nullptr;
    }
    return du::DynamicCast<qzk::ecad::EcadPCBData>(read.data);
}

bool Number(char const* text, double& out) {
    char* end = nullptr;
    out = std::strtod(text, &end);
    return end != text && *end == '\0';
}

struct SurfaceDeleter {
    void operator()(cairo_surface_t* s) const { cairo_surface_destroy(s); }
};
using Surface = std::unique_ptr<cairo_surface_t, SurfaceDeleter>;

Surface Load(char const* path) {
    Surface surface(cairo_image_surface_create_from_png(path));
    if (cairo_surface_status(surface.get()) != CAIRO_STATUS_SUCCESS) {
        std::fprintf(stderr, "qzfilm: %s: %s\n", path,
                     cairo_status_to_string(cairo_surface_status(surface.get())));
        return nullptr;
    }
    Surface rgb(cairo_image_surface_create(CAIRO_FORMAT_RGB24,
                                           cairo_image_surface_get_width(surface.get()),
                                           cairo_image_surface_get_height(surface.get())));
    cairo_t* cr = cairo_create(rgb.get());
    cairo_set_source_rgb(cr, 0, 0, 0);
    cairo_paint(cr);
    cairo_set_source_surface(cr, surface.get(), 0, 0);
    cairo_paint(cr);
    cairo_destroy(cr);
    cairo_surface_flush(rgb.get());
    return rgb;
}

bool Dark(unsigned char const* row, int x) {
    std::uint32_t const pixel = reinterpret_cast<std::uint32_t const*>(row)[x];
    unsigned const sum = ((pixel >> 16) & 0xFF) + ((pixel >> 8) & 0xFF) + (pixel & 0xFF);
    return sum >= 3 * 128;
}

int Compare(char const* a, char const* b, double least, char const* diff) {
    Surface const first = Load(a);
    Surface const second = Load(b);
    if (!first || !second) {
        return 2;
    }
    int const w = cairo_image_surface_get_width(first.get());
    int const h = cairo_image_surface_get_height(first.get());
    if (w != cairo_image_surface_get_width(second.get()) ||
        h != cairo_image_surface_get_height(second.get())) {
        std::fprintf(stderr, "qzfilm: the pictures differ in size: %dx%d and %dx%d\n", w, h,
                     cairo_image_surface_get_width(second.get()),
                     cairo_image_surface_get_height(second.get()));
        return 1;
    }
    Surface const shown(diff != nullptr ? cairo_image_surface_create(CAIRO_FORMAT_RGB24, w, h)
                                        : nullptr);
    long long agree = 0;
    long long inked = 0;
    long long inkAgree = 0;
    for (int y = 0; y < h; ++y) {
        unsigned char const* ra =
            cairo_image_surface_get_data(first.get()) +
            static_cast<long>(y) * cairo_image_surface_get_stride(first.get());
        unsigned char const* rb =
            cairo_image_surface_get_data(second.get()) +
            static_cast<long>(y) * cairo_image_surface_get_stride(second.get());
        for (int x = 0; x < w; ++x) {
            bool const da = Dark(ra, x);
            bool const db = Dark(rb, x);
            if (shown) {
                auto* out = reinterpret_cast<std::uint32_t*>(
                    cairo_image_surface_get_data(shown.get()) +
                    static_cast<long>(y) * cairo_image_surface_get_stride(shown.get()));
                out[x] = da && db ? 0xFFFFFF : da ? 0xFF0000 : db ? 0x00FF00 : 0;
            }
            agree += da == db ? 1 : 0;
            inked += da || db ? 1 : 0;
            inkAgree += da && db ? 1 : 0;
        }
    }
    if (shown) {
        cairo_surface_mark_dirty(shown.get());
        cairo_surface_write_to_png(shown.get(), diff);
    }
    double const all = 100.0 * static_cast<double>(agree) / (static_cast<double>(w) * h);
    double const ink =
        inked == 0 ? 100.0 : 100.0 * static_cast<double>(inkAgree) / static_cast<double>(inked);
    std::printf("%.3f%% of %d x %d pixels agree; %.3f%% of the dark ones\n", all, w, h, ink);
    return all >= least ? 0 : 1;
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        return Usage();
    }
    std::string const command = argv[1];
    if (command == "extent" && argc == 3) {
        auto const film = Read(argv[2]);
        if (!film) {
            return 1;
        }
        std::printf("%.6f %.6f %.6f %.6f\n", film->minX, film->minY, film->maxX, film->maxY);
        return 0;
    }
    if (command == "render" && argc == 9) {
        qzref::Renderer::FilmView view;
        double width = 0;
        double height = 0;
        if (!Number(argv[4], view.dpi) || !Number(argv[5], view.left) ||
            !Number(argv[6], view.bottom) || !Number(argv[7], width) || !Number(argv[8], height)) {
            return Usage();
        }
        view.width = static_cast<int>(width);
        view.height = static_cast<int>(height);
        auto const film = Read(argv[2]);
        if (!film) {
            return 1;
        }
        std::string error;
        if (!qzref::Renderer::RenderFilm(*film, view, argv[3], error)) {
            std::fprintf(stderr, "qzfilm: %s\n", error.c_str());
            return 1;
        }
        return 0;
    }
    if (command == "compare" && argc >= 4 && argc <= 6) {
        double least = 99;
        if (argc >= 5 && !Number(argv[4], least)) {
            return Usage();
        }
        return Compare(argv[2], argv[3], least, argc == 6 ? argv[5] : nullptr);
    }
    return Usage();
}
