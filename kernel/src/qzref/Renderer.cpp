#include "qzref/Renderer.h"

#include "qz2d/ecad/Design.h"
#include "qzk/EcadDesign.h"
#include "qzk/View.h"
#include "qzk/ecad/EcadPCBData.h"
#include "qzk/ecad/Overlay.h"
#include "qzk/ecad/PCBCompareScene.h"
#include "qzk/ecad/PCBOvlCompareScene.h"
#include "qzk/ecad/PCBScene.h"
#include "qzk/ecad/PCBSchCompareScene.h"
#include "qzk/ecad/SchematicCompareScene.h"
#include "qzk/ecad/SchematicData.h"
#include "qzk/ecad/SchematicScene.h"
#include "qzk/ecad/SublayerEcad.h"
#include "qzk/ecad/SublayerPCBCompareCV.h"
#include "qzk/ecad/SublayerPCB_CVSet.h"
#include "qzref/DesignObject.h"
#include "qzref/Inspect.h"
#include "qzref/OverlayInspector.h"
#include "qzref/SchematicCompareSceneInspector.h"
#include "qzref/ViewInspector.h"

#include <cairo-svg.h>
#include <cairo.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <iterator>
#include <limits>
#include <map>
#include <memory>
#include <numbers>
#include <optional>
#include <set>
#include <string>
#include <tuple>
#include <vector>

namespace qzref {

namespace {

struct Rgb {
    double r, g, b;
};

// Red in the low byte, then green, then blue.
Rgb FromWord(unsigned int word) {
    return {(word & 0xFF) / 255.0, ((word >> 8) & 0xFF) / 255.0, ((word >> 16) & 0xFF) / 255.0};
}

Rgb const kBackground{0, 0, 0};

// Isolation leaves the rest at a quarter of its strength over the background.
Rgb Dimmed(Rgb c) {
    return {kBackground.r + (c.r - kBackground.r) * 0.25,
            kBackground.g + (c.g - kBackground.g) * 0.25,
            kBackground.b + (c.b - kBackground.b) * 0.25};
}

void Collect(DesignObject* object, std::vector<DesignObject*>& out, std::set<DesignObject*>& seen) {
    if (object == nullptr || !seen.insert(object).second) {
        return;
    }
    out.push_back(object);
    for (DesignObject* child : object->children) {
        Collect(child, out, seen);
    }
}

void Trace(cairo_t* cr, DesignShape const& shape) {
    auto const& p = shape.points;
    switch (shape.kind) {
    case DesignShape::Line:
        cairo_move_to(cr, p[0], p[1]);
        cairo_line_to(cr, p[2], p[3]);
        cairo_set_line_width(cr, shape.width);
        cairo_stroke(cr);
        break;
    case DesignShape::Arc:
        cairo_new_sub_path(cr);
        cairo_arc(cr, p[0], p[1], p[2], p[3] * std::numbers::pi / 180,
                  p[4] * std::numbers::pi / 180);
        cairo_set_line_width(cr, shape.width);
        cairo_stroke(cr);
        break;
    case DesignShape::Circle:
        cairo_new_sub_path(cr);
        cairo_arc(cr, p[0], p[1], p[2], 0, 2 * std::numbers::pi);
        cairo_fill(cr);
        break;
    case DesignShape::Rectangle:
        cairo_rectangle(cr, std::min(p[0], p[2]), std::min(p[1], p[3]), std::abs(p[2] - p[0]),
                        std::abs(p[3] - p[1]));
        cairo_fill(cr);
        break;
    case DesignShape::Polygon:
        cairo_move_to(cr, p[0], p[1]);
        for (std::size_t i = 2; i + 1 < p.size(); i += 2) {
            cairo_line_to(cr, p[i], p[i + 1]);
        }
        cairo_close_path(cr);
        cairo_fill(cr);
        break;
    case DesignShape::Pad:
        cairo_rectangle(cr, p[0] - p[2] / 2, p[1] - p[3] / 2, p[2], p[3]);
        cairo_fill(cr);
        break;
    }
}

// Traces one contour of a polygon: count x y pairs from points[from].
void TraceContour(cairo_t* cr, std::vector<double> const& p, std::size_t from, std::size_t count) {
    if (count == 0 || from + 2 * count > p.size()) {
        return;
    }
    cairo_move_to(cr, p[from], p[from + 1]);
    for (std::size_t i = 1; i < count; ++i) {
        cairo_line_to(cr, p[from + 2 * i], p[from + 2 * i + 1]);
    }
    cairo_close_path(cr);
}

// A polygon of several contours, some of which erase what the shape's earlier contours cover:
// drawn apart and then put onto the film as one.
void FillContours(cairo_t* cr, DesignShape const& shape) {
    bool erases = false;
    for (int count : shape.contours) {
        erases = erases || count < 0;
    }
    auto const& p = shape.points;
    if (!erases) {
        std::size_t from = 0;
        for (int count : shape.contours) {
            TraceContour(cr, p, from, static_cast<std::size_t>(count));
            cairo_fill(cr);
            from += 2 * static_cast<std::size_t>(count);
        }
        return;
    }
    cairo_operator_t const onto = cairo_get_operator(cr);
    cairo_save(cr);
    // The group need be no larger than the shape.
    dg::DBox2D const range = shape.GetRange();
    cairo_rectangle(cr, range.low.x, range.low.y, range.Width(), range.Height());
    cairo_clip(cr);
    cairo_push_group_with_content(cr, CAIRO_CONTENT_ALPHA);
    cairo_set_source_rgba(cr, 0, 0, 0, 1);
    std::size_t from = 0;
    for (int count : shape.contours) {
        auto const n = static_cast<std::size_t>(std::abs(count));
        cairo_set_operator(cr, count < 0 ? CAIRO_OPERATOR_DEST_OUT : CAIRO_OPERATOR_OVER);
        TraceContour(cr, p, from, n);
        cairo_fill(cr);
        from += 2 * n;
    }
    cairo_pop_group_to_source(cr);
    cairo_set_operator(cr, onto);
    cairo_paint(cr);
    cairo_restore(cr);
}

// Draws a film's objects in the order the film draws them into an alpha group, its clear
// objects erasing, and lays the group onto the picture in the colour given: what a clear object
// erases shows what lies under the film, not a colour.
void PaintFilm(cairo_t* cr, qzk::ecad::EcadPCBData const& film, Rgb colour) {
    cairo_save(cr);
    cairo_push_group_with_content(cr, CAIRO_CONTENT_ALPHA);
    cairo_set_source_rgba(cr, 0, 0, 0, 1);
    cairo_set_line_cap(cr, CAIRO_LINE_CAP_ROUND);
    cairo_set_line_join(cr, CAIRO_LINE_JOIN_ROUND);
    cairo_set_fill_rule(cr, CAIRO_FILL_RULE_WINDING);
    // Runs of lines of one width, and of circles and pads, share one path: a film is mostly
    // such runs, and one stroke or fill for each would cost a pass over the group each.
    enum class Pending { None, Stroke, Fill };
    Pending pending = Pending::None;
    DesignShape::Kind pendingKind = DesignShape::Line;
    double pendingWidth = 0;
    bool pendingClear = false;
    auto const flush = [&] {
        if (pending == Pending::Stroke) {
            cairo_set_line_width(cr, pendingWidth);
            cairo_stroke(cr);
        } else if (pending == Pending::Fill) {
            cairo_fill(cr);
        }
        pending = Pending::None;
    };
    for (std::size_t i = 0; i < film.GetObjectCount(); ++i) {
        for (DesignShape const& shape : film.GetObjectAt(i)->geometry) {
            auto const& p = shape.points;
            bool const strokes = shape.kind == DesignShape::Line || shape.kind == DesignShape::Arc;
            bool const batches = strokes || shape.kind == DesignShape::Circle ||
                                 shape.kind == DesignShape::Pad ||
                                 shape.kind == DesignShape::Rectangle;
            if (pending != Pending::None &&
                (!batches || shape.clear != pendingClear ||
                 (strokes ? pending != Pending::Stroke || shape.width != pendingWidth
                          : pending != Pending::Fill || shape.kind != pendingKind))) {
                flush();
            }
            cairo_set_operator(cr, shape.clear ? CAIRO_OPERATOR_DEST_OUT : CAIRO_OPERATOR_OVER);
            pendingClear = shape.clear;
            pendingKind = shape.kind;
            switch (shape.kind) {
            case DesignShape::Line:
                cairo_move_to(cr, p[0], p[1]);
                cairo_line_to(cr, p[2], p[3]);
                pending = Pending::Stroke;
                pendingWidth = shape.width;
                break;
            case DesignShape::Arc:
                cairo_new_sub_path(cr);
                cairo_arc(cr, p[0], p[1], p[2], p[3] * std::numbers::pi / 180,
                          p[4] * std::numbers::pi / 180);
                pending = Pending::Stroke;
                pendingWidth = shape.width;
                break;
            case DesignShape::Circle:
                cairo_new_sub_path(cr);
                cairo_arc(cr, p[0], p[1], p[2], 0, 2 * std::numbers::pi);
                pending = Pending::Fill;
                break;
            case DesignShape::Rectangle:
                cairo_rectangle(cr, std::min(p[0], p[2]), std::min(p[1], p[3]),
                                std::abs(p[2] - p[0]), std::abs(p[3] - p[1]));
                pending = Pending::Fill;
                break;
            case DesignShape::Pad:
                cairo_rectangle(cr, p[0] - p[2] / 2, p[1] - p[3] / 2, p[2], p[3]);
                pending = Pending::Fill;
                break;
            case DesignShape::Polygon:
                if (shape.contours.empty()) {
                    TraceContour(cr, p, 0, p.size() / 2);
                    cairo_fill(cr);
                } else {
                    FillContours(cr, shape);
                }
                break;
            }
        }
    }
    flush();
    cairo_pattern_t* const group = cairo_pop_group(cr);
    cairo_set_source_rgb(cr, colour.r, colour.g, colour.b);
    cairo_mask(cr, group);
    cairo_pattern_destroy(group);
    cairo_restore(cr);
}

struct SurfaceDeleter {
    void operator()(cairo_surface_t* s) const { cairo_surface_destroy(s); }
};
struct ContextDeleter {
    void operator()(cairo_t* c) const { cairo_destroy(c); }
};

// One object to draw, in the colour it comes out in; painted in the order given. An overlay's
// objects are drawn through its transform.
struct Stroke {
    DesignObject const* object;
    Rgb colour;
    std::optional<dg::DMat33> transform = std::nullopt;
    // An overlay's film, drawn whole in place of object.
    qzk::ecad::EcadPCBData const* film = nullptr;
};

// What is drawn over the design: the pictures of images and compare areas, in a strip along the
// picture's foot (they carry no place on the board), and the crosshair.
struct Extras {
    struct Picture {
        du::SmartPtr<qz2d::ecad::Design> design;
        Rgb colour;
        bool area;
    };
    std::vector<Picture> pictures;
    std::optional<dg::DPoint2D> crosshair;
};

void PaintPictures(cairo_t* cr, std::vector<Extras::Picture> const& pictures, int height) {
    double const size = 48;
    double x = 8;
    for (auto const& picture : pictures) {
        double const y = height - size - 8;
        if (!picture.area) {
            unsigned int const w = picture.design->GetWidth();
            unsigned int const h = picture.design->GetHeight();
            for (unsigned int py = 0; py < h; ++py) {
                for (unsigned int px = 0; px < w; ++px) {
                    Rgb const c = FromWord(picture.design->GetPixel(px, py));
                    cairo_set_source_rgb(cr, c.r, c.g, c.b);
                    cairo_rectangle(cr, x + px * size / w, y + py * size / h, size / w, size / h);
                    cairo_fill(cr);
                }
            }
        }
        // A frame in the row's colour; a compare area is its frame alone.
        cairo_set_source_rgb(cr, picture.colour.r, picture.colour.g, picture.colour.b);
        cairo_set_line_width(cr, 2);
        cairo_rectangle(cr, x, y, size, size);
        cairo_stroke(cr);
        x += size + 8;
    }
}

// The looks of the kernel scene's appearance layers by object: selection over highlight over
// group.
std::map<void const*, unsigned int> LooksOf(qzk::ecad::BaseScene const& scene) {
    std::map<void const*, unsigned int> looks;
    for (int layer = 2; layer >= 0; --layer) {
        for (auto const& [item, look] : qzref::Inspect(scene).GetLooks(layer)) {
            looks[item.object] = look.color;
        }
    }
    return looks;
}

// The look given to the object or to what owns it, if any.
bool LookOf(std::map<void const*, unsigned int> const& looks, DesignObject const* object,
            unsigned int& word) {
    for (DesignObject const* at = object; at != nullptr; at = at->owner) {
        if (auto const look = looks.find(at); look != looks.end()) {
            word = look->second;
            return true;
        }
    }
    return false;
}

bool Valid(Renderer::View const& view, std::string& error) {
    if (view.width < 1 || view.height < 1 || view.width > 16384 || view.height > 16384) {
        error = "a picture size out of range";
        return false;
    }
    return true;
}

// Fits what extent draws to a region of view's size at the origin, less a margin, y up, turned
// about its centre and mirrored left to right when seen from the back, and paints the strokes.
void PaintInto(cairo_t* cr, std::vector<Stroke> const& strokes,
               std::vector<DesignObject*> const& extent, Renderer::View const& view,
               Extras const& extras) {
    dg::DBox2D box;
    for (DesignObject const* object : extent) {
        for (auto const& shape : object->geometry) {
            box.Extend(shape.GetRange());
        }
    }
    cairo_save(cr);
    if (!box.IsEmpty()) {
        double const w = std::max(box.Width(), 1e-6);
        double const h = std::max(box.Height(), 1e-6);
        double const angle = view.rotation * std::numbers::pi / 180;
        double const across = std::abs(w * std::cos(angle)) + std::abs(h * std::sin(angle));
        double const down = std::abs(w * std::sin(angle)) + std::abs(h * std::cos(angle));
        double const scale = 0.9 * std::min(view.width / across, view.height / down);
        cairo_translate(cr, view.width / 2.0, view.height / 2.0);
        cairo_scale(cr, view.flip ? -scale : scale, -scale);
        cairo_rotate(cr, angle);
        cairo_translate(cr, -box.GetCenter().x, -box.GetCenter().y);
        cairo_set_line_cap(cr, CAIRO_LINE_CAP_ROUND);
        for (Stroke const& stroke : strokes) {
            cairo_save(cr);
            if (stroke.transform) {
                auto const& m = stroke.transform->m;
                cairo_matrix_t const matrix{m[0][0], m[1][0], m[0][1], m[1][1], m[0][2], m[1][2]};
                cairo_transform(cr, &matrix);
            }
            if (stroke.film != nullptr) {
                PaintFilm(cr, *stroke.film, stroke.colour);
                cairo_restore(cr);
                continue;
            }
            cairo_set_source_rgb(cr, stroke.colour.r, stroke.colour.g, stroke.colour.b);
            for (auto const& shape : stroke.object->geometry) {
                Trace(cr, shape);
            }
            cairo_restore(cr);
        }
        if (extras.crosshair) {
            // Across the whole board, in the colour of a cursor.
            double const reach = std::max(box.Width(), box.Height());
            cairo_set_source_rgb(cr, 1, 1, 0);
            cairo_set_line_width(cr, 2 / scale);
            cairo_move_to(cr, extras.crosshair->x - reach, extras.crosshair->y);
            cairo_line_to(cr, extras.crosshair->x + reach, extras.crosshair->y);
            cairo_move_to(cr, extras.crosshair->x, extras.crosshair->y - reach);
            cairo_line_to(cr, extras.crosshair->x, extras.crosshair->y + reach);
            cairo_stroke(cr);
        }
    }
    cairo_restore(cr);
    PaintPictures(cr, extras.pictures, view.height);
}

// Makes a picture of view's size on the background, lets draw paint it, and writes it: an SVG
// when the path ends in ".svg", a PNG otherwise.
bool Write(Renderer::View const& view, std::string const& path, std::string& error,
           std::function<void(cairo_t*)> const& draw) {
    bool const svg = path.size() >= 4 && path.compare(path.size() - 4, 4, ".svg") == 0;
    std::unique_ptr<cairo_surface_t, SurfaceDeleter> surface(
        svg ? cairo_svg_surface_create(path.c_str(), view.width, view.height)
            : cairo_image_surface_create(CAIRO_FORMAT_RGB24, view.width, view.height));
    if (cairo_surface_status(surface.get()) != CAIRO_STATUS_SUCCESS) {
        error = path + ": " + cairo_status_to_string(cairo_surface_status(surface.get()));
        return false;
    }
    {
        std::unique_ptr<cairo_t, ContextDeleter> context(cairo_create(surface.get()));
        cairo_t* cr = context.get();
        cairo_set_source_rgb(cr, kBackground.r, kBackground.g, kBackground.b);
        cairo_paint(cr);
        draw(cr);
    }
    cairo_surface_flush(surface.get());
    if (!svg) {
        cairo_status_t const status = cairo_surface_write_to_png(surface.get(), path.c_str());
        if (status != CAIRO_STATUS_SUCCESS) {
            error = path + ": " + cairo_status_to_string(status);
            return false;
        }
    } else {
        cairo_surface_finish(surface.get());
        if (cairo_surface_status(surface.get()) != CAIRO_STATUS_SUCCESS) {
            error = path + ": " + cairo_status_to_string(cairo_surface_status(surface.get()));
            return false;
        }
    }
    return true;
}

// One design's strokes fitted to the whole picture.
bool Paint(std::vector<Stroke> const& strokes, std::vector<DesignObject*> const& extent,
           Renderer::View const& view, std::string const& path, std::string& error,
           Extras const& extras = {}) {
    return Write(view, path, error,
                 [&](cairo_t* cr) { PaintInto(cr, strokes, extent, view, extras); });
}

// The scene's loaded design, or null.
du::SmartPtr<qzk::EcadDesignData> DataOf(qzk::ecad::BaseScene const& scene) {
    du::SmartPtr<qzk::EcadDesign> design;
    scene.GetEcadDesign(design, 0);
    return design ? design->GetEcadDesignData() : nullptr;
}

// Every object of the design that draws, components and nets with what they own.
template <class Data> std::vector<DesignObject*> ObjectsOf(Data const& data) {
    std::vector<DesignObject*> objects;
    std::set<DesignObject*> seen;
    for (DesignObject* object : data.GetComponents()) {
        Collect(object, objects, seen);
    }
    for (DesignObject* object : data.GetNets()) {
        Collect(object, objects, seen);
    }
    return objects;
}

// A board's objects in the draw order, the first entry painted first, each in its sublayer's
// colour with hidden sublayers left out; a look or isolation given to a component or net
// reaches what it owns, and while the scene isolates everything else is dimmed.
std::vector<Stroke> BoardStrokes(std::vector<DesignObject*> const& objects,
                                 std::vector<short> const& order,
                                 qzk::ecad::SublayerPCB_CVSet const& colours,
                                 std::vector<qzk::ecad::AppearanceItem> const& isolatedItems,
                                 bool isolating, std::map<void const*, unsigned int> const& looks) {
    std::set<void const*> isolated;
    for (auto const& item : isolatedItems) {
        isolated.insert(item.object);
    }
    std::map<std::pair<short, short>, std::pair<unsigned int, bool>> sublayers;
    for (auto const& entry : colours) {
        sublayers[{entry.layer, entry.sublayer}] = {entry.color, entry.visible};
    }
    std::vector<Stroke> strokes;
    for (short layer : order) {
        for (DesignObject* object : objects) {
            if (object->layer != layer || object->geometry.empty()) {
                continue;
            }
            auto const found = sublayers.find({object->layer, object->sublayer});
            if (found == sublayers.end() || !found->second.second) {
                continue;
            }
            unsigned int word = found->second.first;
            LookOf(looks, object, word);
            bool inIsolation = false;
            for (DesignObject const* at = object; at != nullptr; at = at->owner) {
                inIsolation = inIsolation || isolated.count(at) != 0;
            }
            Rgb colour = FromWord(word);
            if (isolating && !inIsolation) {
                colour = Dimmed(colour);
            }
            strokes.push_back({object, colour});
        }
    }
    return strokes;
}

// The strip along the foot of a compare's picture: its visible picture overlays, the image
// difference cells and grids among them, each framed in its colour.
Extras PictureStrip(qzk::ecad::BaseScene const& scene) {
    Extras extras;
    for (auto const& overlay : qzref::Inspect(scene).GetOverlays()) {
        auto const inspector = qzref::Inspect(*overlay);
        if (auto const picture = inspector.GetPicture(); picture && inspector.IsVisible()) {
            extras.pictures.push_back(
                {picture, FromWord(inspector.GetColorWord()), overlay->overlayKind == 2});
        }
    }
    return extras;
}

// The objects that lie on the sheet; a pin lies on its symbol's sheet.
std::vector<DesignObject*> OnSheet(std::vector<DesignObject*> const& objects, unsigned int sheet) {
    auto const sheetOf = [](DesignObject const* object) {
        while (object->sheet == 0xFFFFFFFF && object->owner != nullptr) {
            object = object->owner;
        }
        return object->sheet;
    };
    std::vector<DesignObject*> onSheet;
    std::copy_if(objects.begin(), objects.end(), std::back_inserter(onSheet),
                 [&](DesignObject const* object) { return sheetOf(object) == sheet; });
    return onSheet;
}

// The objects of one sheet of a schematic.
std::vector<DesignObject*> ObjectsOnSheet(qzk::ecad::SchematicData const& schematic,
                                          unsigned int sheet) {
    return OnSheet(ObjectsOf(schematic), sheet);
}

// A sheet's objects in the draw order of layers, each in its layer's colour, hidden layers left
// out, looks over them.
std::vector<Stroke> SheetStrokes(std::vector<DesignObject*> const& onSheet,
                                 std::vector<short> const& order,
                                 std::map<short, qzk::ecad::ColorVisInfo> const& layers,
                                 std::map<void const*, unsigned int> const& looks) {
    std::vector<Stroke> strokes;
    for (short layer : order) {
        auto const info = layers.find(layer);
        if (info == layers.end() || !info->second.visible) {
            continue;
        }
        for (DesignObject* object : onSheet) {
            if (object->sublayer != layer) {
                continue;
            }
            unsigned int word = info->second.color;
            LookOf(looks, object, word);
            strokes.push_back({object, FromWord(word)});
        }
    }
    return strokes;
}

// The board of a board scene, and of a board compared with an overlay, with what is drawn over
// it: the scene's looks, isolation, overlays and crosshair.
template <class BoardSceneT>
bool RenderBoard(BoardSceneT const& scene, qzk::ecad::EcadPCBData const* board,
                 qzk::ecad::SublayerPCB_CVSet const& colours, Renderer::View const& view,
                 std::string const& path, std::string& error) {
    if (board == nullptr) {
        error = "the scene holds no loaded board";
        return false;
    }
    if (!Valid(view, error)) {
        return false;
    }
    std::vector<DesignObject*> const objects = ObjectsOf(*board);
    auto const inspector = qzref::Inspect(scene);
    std::vector<Stroke> strokes =
        BoardStrokes(objects, inspector.GetDrawOrder(), colours, inspector.GetIsolated(),
                     inspector.IsIsolating(), LooksOf(scene));
    Extras extras;
    for (auto const& overlay : qzref::Inspect(scene).GetOverlays()) {
        auto const inspector = qzref::Inspect(*overlay);
        if (!inspector.IsVisible()) {
            continue;
        }
        Rgb const colour = FromWord(inspector.GetColorWord());
        if (auto const film = inspector.GetBoard()) {
            // A film in its own colour, over the board, where its transform puts it.
            strokes.push_back({nullptr, colour, inspector.GetTransform(), film.Get()});
        } else if (auto const picture = inspector.GetPicture()) {
            extras.pictures.push_back({picture, colour, overlay->overlayKind == 2});
        }
    }
    if (du::SmartPtr<qzk::View> const view0 = scene.GetView(0)) {
        auto const crosshair = qzref::Inspect(*view0);
        if (crosshair.GetCrosshairVisibility()) {
            DesignObject* const object = board->Find(crosshair.GetCrosshairObject());
            dg::DBox2D range;
            std::vector<DesignObject*> parts;
            std::set<DesignObject*> seen;
            Collect(object, parts, seen);
            for (DesignObject const* part : parts) {
                for (auto const& shape : part->geometry) {
                    range.Extend(shape.GetRange());
                }
            }
            extras.crosshair =
                range.IsEmpty() ? crosshair.GetCrosshairPosition() : range.GetCenter();
        }
    }
    // The picture keeps its frame whatever is hidden: the whole board.
    return Paint(strokes, objects, view, path, error, extras);
}

} // namespace

bool Renderer::Render(qzk::ecad::PCBScene const& scene, View const& view, std::string const& path,
                      std::string& error) {
    auto const data = DataOf(scene);
    return RenderBoard(scene, dynamic_cast<qzk::ecad::EcadPCBData const*>(data.Get()),
                       qzref::Inspect(scene).GetColorVisInfo(), view, path, error);
}

bool Renderer::Render(qzk::ecad::PCBOvlCompareScene const& scene, View const& view,
                      std::string const& path, std::string& error) {
    // The board is whichever design is no overlay's picture; the film is drawn as the scene's
    // overlay.
    du::SmartPtr<qzk::EcadDesignData> data;
    bool boardFirst = true;
    for (int index : {0, 1}) {
        du::SmartPtr<qzk::EcadDesign> design;
        scene.GetEcadDesign(design, index);
        auto candidate = design ? design->GetEcadDesignData() : nullptr;
        auto const* pcb = dynamic_cast<qzk::ecad::EcadPCBData const*>(candidate.Get());
        if (pcb != nullptr && !pcb->IsOverlayData()) {
            data = candidate;
            boardFirst = index == 0;
            break;
        }
    }
    auto const* board = dynamic_cast<qzk::ecad::EcadPCBData const*>(data.Get());
    qzk::ecad::SublayerPCB_CVSet sublayers = qzref::Inspect(scene).GetColorVisInfo();
    if (sublayers.empty() && board != nullptr) {
        // Told no sublayers yet, the kernel shows the whole board in its side's compare colour.
        unsigned int const word =
            (boardFirst ? scene.GetFirstItemColor() : scene.GetSecondItemColor()).GetAsHexUI();
        for (auto const* key : board->sublayers) {
            sublayers.insert(qzk::ecad::SublayerPCB_CV(key->layer, key->sublayer, word, true));
        }
    }
    return RenderBoard(scene, board, sublayers, view, path, error);
}

bool Renderer::RenderFilm(qzk::ecad::EcadPCBData const& film, FilmView const& view,
                          std::string const& path, std::string& error) {
    if (view.width < 1 || view.height < 1 || view.width > 32768 || view.height > 32768 ||
        !(view.dpi > 0) || !std::isfinite(view.dpi)) {
        error = "a picture size or resolution out of range";
        return false;
    }
    std::unique_ptr<cairo_surface_t, SurfaceDeleter> surface(
        cairo_image_surface_create(CAIRO_FORMAT_RGB24, view.width, view.height));
    if (cairo_surface_status(surface.get()) != CAIRO_STATUS_SUCCESS) {
        error = path + ": " + cairo_status_to_string(cairo_surface_status(surface.get()));
        return false;
    }
    auto const rgb = [](unsigned int word) {
        return Rgb{((word >> 16) & 0xFF) / 255.0, ((word >> 8) & 0xFF) / 255.0,
                   (word & 0xFF) / 255.0};
    };
    {
        std::unique_ptr<cairo_t, ContextDeleter> context(cairo_create(surface.get()));
        cairo_t* cr = context.get();
        Rgb const back = rgb(view.background);
        cairo_set_source_rgb(cr, back.r, back.g, back.b);
        cairo_paint(cr);
        cairo_set_antialias(cr, view.antialias ? CAIRO_ANTIALIAS_DEFAULT : CAIRO_ANTIALIAS_NONE);
        double const scale = view.dpi / 25.4;
        cairo_translate(cr, 0, view.height);
        cairo_scale(cr, scale, -scale);
        cairo_translate(cr, -view.left, -view.bottom);
        PaintFilm(cr, film, rgb(view.foreground));
    }
    cairo_surface_flush(surface.get());
    cairo_status_t const status = cairo_surface_write_to_png(surface.get(), path.c_str());
    if (status != CAIRO_STATUS_SUCCESS) {
        error = path + ": " + cairo_status_to_string(status);
        return false;
    }
    return true;
}

bool Renderer::RenderCompare(qzk::ecad::PCBCompareScene const& scene, View const& view,
                             std::string const& path, std::string& error) {
    using qzk::ecad::CompareColorVis;
    du::SmartPtr<qzk::EcadDesign> designs[2];
    scene.GetEcadDesign(designs[0], 0);
    scene.GetEcadDesign(designs[1], 1);
    du::SmartPtr<qzk::EcadDesignData> data[2];
    qzk::ecad::EcadPCBData const* boards[2] = {nullptr, nullptr};
    for (int side = 0; side < 2; ++side) {
        data[side] = designs[side] ? designs[side]->GetEcadDesignData() : nullptr;
        boards[side] = dynamic_cast<qzk::ecad::EcadPCBData const*>(data[side].Get());
    }
    if (boards[0] == nullptr || boards[1] == nullptr) {
        error = "the scene holds no two loaded boards";
        return false;
    }
    if (!Valid(view, error)) {
        return false;
    }
    std::vector<DesignObject*> const objects[2] = {ObjectsOf(*boards[0]), ObjectsOf(*boards[1])};

    // Which sublayer of each board a row draws, and in what colour; a mode leaves out the rows
    // it does not show, and the dimmed mode draws the common rows at a quarter.
    std::map<std::pair<short, short>, Rgb> sides[2];
    for (auto const& row : qzref::Inspect(scene).GetColorVisInfo()) {
        auto const* pair = dynamic_cast<qzk::ecad::SublayerPCBCompare const*>(row.Get());
        if (pair == nullptr || !row->visible) {
            continue;
        }
        bool const first = pair->HasFirst();
        bool const second = pair->HasSecond();
        bool const common = first && second;
        bool shown = true;
        switch (row->showMode) {
        case CompareColorVis::eShowFirstOnly:
            shown = first && !second;
            break;
        case CompareColorVis::eShowSecondOnly:
            shown = second && !first;
            break;
        case CompareColorVis::eShowCommonOnly:
            shown = common;
            break;
        case CompareColorVis::eShowDifferences:
            shown = !common;
            break;
        default:
            break;
        }
        if (!shown) {
            continue;
        }
        Rgb colour =
            FromWord(common ? row->commonColor : (first ? row->firstColor : row->secondColor));
        if (common && row->showMode == CompareColorVis::eShowDimmedCommon) {
            colour = Dimmed(colour);
        }
        if (first) {
            sides[0][{pair->firstSublayer.layer, pair->firstSublayer.sublayer}] = colour;
        }
        if (second) {
            sides[1][{pair->secondSublayer.layer, pair->secondSublayer.sublayer}] = colour;
        }
    }
    // Layers in the scene's draw order; on each, the second board over the first.
    std::vector<Stroke> strokes;
    for (short layer : qzref::Inspect(scene).GetDrawOrder()) {
        for (int side = 0; side < 2; ++side) {
            for (DesignObject* object : objects[side]) {
                if (object->layer != layer || object->geometry.empty()) {
                    continue;
                }
                auto const found = sides[side].find({object->layer, object->sublayer});
                if (found != sides[side].end()) {
                    strokes.push_back({object, found->second});
                }
            }
        }
    }
    std::vector<DesignObject*> extent(objects[0]);
    extent.insert(extent.end(), objects[1].begin(), objects[1].end());
    return Paint(strokes, extent, view, path, error, PictureStrip(scene));
}

bool Renderer::RenderSheet(qzk::ecad::SchematicScene const& scene, unsigned int sheet,
                           View const& view, std::string const& path, std::string& error) {
    auto const data = DataOf(scene);
    auto const* schematic = dynamic_cast<qzk::ecad::SchematicData const*>(data.Get());
    if (schematic == nullptr) {
        error = "the scene holds no loaded schematic";
        return false;
    }
    if (sheet >= schematic->GetNumSheets()) {
        error = "no sheet " + std::to_string(sheet);
        return false;
    }
    if (!Valid(view, error)) {
        return false;
    }
    std::vector<DesignObject*> const onSheet = ObjectsOnSheet(*schematic, sheet);
    std::vector<Stroke> const strokes =
        SheetStrokes(onSheet, qzref::Inspect(scene).GetDrawOrder(),
                     qzref::Inspect(scene).GetSublayerColorVisInfo(), LooksOf(scene));
    // The frame is the whole sheet, whatever is hidden.
    return Paint(strokes, onSheet, view, path, error);
}

bool Renderer::RenderBoardSchematic(qzk::ecad::PCBSchCompareScene const& scene, unsigned int sheet,
                                    View const& view, std::string const& path, std::string& error) {
    du::SmartPtr<qzk::EcadDesign> designs[2];
    scene.GetEcadDesign(designs[0], 0);
    scene.GetEcadDesign(designs[1], 1);
    qzk::ecad::EcadPCBData const* board = nullptr;
    qzk::ecad::SchematicData const* schematic = nullptr;
    du::SmartPtr<qzk::EcadDesignData> data[2];
    for (int i = 0; i < 2; ++i) {
        data[i] = designs[i] ? designs[i]->GetEcadDesignData() : nullptr;
        if (auto const* found = dynamic_cast<qzk::ecad::EcadPCBData const*>(data[i].Get())) {
            board = found;
        } else if (auto const* found =
                       dynamic_cast<qzk::ecad::SchematicData const*>(data[i].Get())) {
            schematic = found;
        }
    }
    if (board == nullptr || schematic == nullptr) {
        error = "the scene holds no loaded board and schematic";
        return false;
    }
    if (sheet >= schematic->GetNumSheets()) {
        error = "no sheet " + std::to_string(sheet);
        return false;
    }
    if (!Valid(view, error) || view.width < 2) {
        error = error.empty() ? "a picture size out of range" : error;
        return false;
    }
    auto const inspector = qzref::Inspect(scene);
    auto const looks = LooksOf(scene);
    std::vector<DesignObject*> const objects = ObjectsOf(*board);
    std::vector<Stroke> const boardStrokes =
        BoardStrokes(objects, inspector.GetPCBDrawOrder(), inspector.GetColorVisInfo(),
                     inspector.GetIsolated(), inspector.IsIsolating(), looks);
    std::vector<DesignObject*> const onSheet = ObjectsOnSheet(*schematic, sheet);
    std::vector<Stroke> const sheetStrokes = SheetStrokes(
        onSheet, inspector.GetSchDrawOrder(), inspector.GetSublayerColorVisInfo(), looks);
    // The board on the left, turned as the view turns it; the sheet on the right, upright.
    Renderer::View left = view;
    left.width = view.width / 2;
    Renderer::View right;
    right.width = view.width - left.width;
    right.height = view.height;
    return Write(view, path, error, [&](cairo_t* cr) {
        PaintInto(cr, boardStrokes, objects, left, {});
        cairo_save(cr);
        cairo_translate(cr, left.width, 0);
        PaintInto(cr, sheetStrokes, onSheet, right, {});
        cairo_restore(cr);
        cairo_set_source_rgb(cr, 0.5, 0.5, 0.5);
        cairo_set_line_width(cr, 1);
        cairo_move_to(cr, left.width + 0.5, 0);
        cairo_line_to(cr, left.width + 0.5, view.height);
        cairo_stroke(cr);
    });
}

bool Renderer::RenderCompareSheet(qzk::ecad::SchematicCompareScene const& scene, unsigned int sheet,
                                  View const& view, std::string const& path, std::string& error) {
    // The two designs' objects on the sheet; either design may have fewer sheets.
    std::vector<DesignObject*> sides[2];
    bool any = false;
    for (int index = 0; index < 2; ++index) {
        du::SmartPtr<qzk::EcadDesign> design;
        scene.GetEcadDesign(design, index);
        auto const data = design ? design->GetEcadDesignData() : nullptr;
        auto const* schematic = dynamic_cast<qzk::ecad::SchematicData const*>(data.Get());
        if (schematic == nullptr) {
            error = "the scene holds no two loaded schematics";
            return false;
        }
        if (sheet < schematic->GetNumSheets()) {
            any = true;
            sides[index] = OnSheet(ObjectsOf(*schematic), sheet);
        }
    }
    if (!any) {
        error = "no sheet " + std::to_string(sheet);
        return false;
    }
    if (!Valid(view, error)) {
        return false;
    }
    // What makes two objects the same one: their kind, name and layer.
    using Key = std::tuple<int, std::string, short>;
    auto const keyOf = [](DesignObject const* object) {
        return Key{object->type, object->name, object->sublayer};
    };
    std::set<Key> keys[2];
    for (int index = 0; index < 2; ++index) {
        for (DesignObject const* object : sides[index]) {
            keys[index].insert(keyOf(object));
        }
    }
    auto const looks = LooksOf(scene);
    auto const records = qzref::Inspect(scene).GetSublayerColorVisInfo();
    // Common objects first, then each design's own, so that differences come out on top.
    enum Side { Common, FirstOnly, SecondOnly };
    std::vector<Stroke> strokes;
    for (short layer : qzref::Inspect(scene).GetDrawOrder()) {
        auto const record = records.find(layer);
        if (record == records.end() || !record->second || !record->second->visible) {
            continue;
        }
        qzk::ecad::SublayerEcad own(layer);
        qzk::ecad::SublayerEcad::GetDefaultSchematicColorVis(own);
        auto const colourOf = [&](unsigned int word) {
            return word == 0xFFFFFFFF ? own.color : word;
        };
        unsigned int const colours[3] = {colourOf(record->second->commonColor),
                                         colourOf(record->second->firstColor),
                                         colourOf(record->second->secondColor)};
        for (Side const side : {Common, FirstOnly, SecondOnly}) {
            int const index = side == SecondOnly ? 1 : 0;
            for (DesignObject* object : sides[index]) {
                bool const inOther = keys[1 - index].count(keyOf(object)) != 0;
                if (object->sublayer != layer || (side == Common) != inOther) {
                    continue;
                }
                unsigned int word = colours[side];
                LookOf(looks, object, word);
                strokes.push_back({object, FromWord(word)});
            }
        }
    }
    // The frame is the whole sheet of both designs, whatever is hidden.
    std::vector<DesignObject*> extent = sides[0];
    extent.insert(extent.end(), sides[1].begin(), sides[1].end());
    return Paint(strokes, extent, view, path, error, PictureStrip(scene));
}

} // namespace qzref
