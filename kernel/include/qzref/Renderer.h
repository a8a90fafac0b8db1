// Draws a board scene's state, two boards compared, a schematic scene's sheet, or a sheet of two
// schematics compared, as a picture: the reference kernel's stand-in for a view.
//
// What is drawn is what the kernel scene was told by the scene layer: the draw order (first
// entry painted first), each sublayer's colour and visibility, the looks of the appearance layers
// (selection over highlight over group) in place of an object's own colour, and isolation (all but
// the isolated objects dimmed). Flip and rotation are the host's view of the board. Objects draw
// the geometry of the design file; objects without geometry are not drawn.
#pragma once

#include <string>

namespace qzk::ecad {
class EcadPCBData;
class PCBCompareScene;
class PCBOvlCompareScene;
class PCBScene;
class PCBSchCompareScene;
class SchematicCompareScene;
class SchematicScene;
} // namespace qzk::ecad

namespace qzref {

class Renderer {
public:
    struct View {
        bool flip = false;  // seen from the back: mirrored left to right
        short rotation = 0; // degrees, counter-clockwise
        int width = 800;
        int height = 600;
    };

    // Writes a PNG, or an SVG when the path ends in ".svg". False with why when nothing could be
    // written (no loaded board, an unwritable path).
    static bool Render(qzk::ecad::PCBScene const& scene, View const& view, std::string const& path,
                       std::string& error);
    // A film's own picture, as a film plotter would expose it: a window of width by height
    // pixels at dpi dots per inch whose lower left corner is (left, bottom) in millimetres, the
    // film's dark in foreground (0xRRGGBB) on background, edges hard unless antialias. For
    // comparing with other viewers' exports pixel by pixel.
    struct FilmView {
        double dpi = 600;
        double left = 0;
        double bottom = 0;
        int width = 800;
        int height = 600;
        unsigned int foreground = 0xFFFFFF;
        unsigned int background = 0x000000;
        bool antialias = false;
    };
    static bool RenderFilm(qzk::ecad::EcadPCBData const& film, FilmView const& view,
                           std::string const& path, std::string& error);
    // A board compare: each visible compare row draws the first board's objects on its first
    // sublayer and the second board's on its second, at the boards' own coordinates, the second
    // over the first. A sublayer only one board has comes in that side's colour, a pair in the
    // common colour. The row's mode leaves out what it does not show (first only, second only,
    // common only, differences only), and the dimmed-common mode draws pairs at a quarter. The
    // image difference cells and grids go in the strip along the foot.
    static bool RenderCompare(qzk::ecad::PCBCompareScene const& scene, View const& view,
                              std::string const& path, std::string& error);
    // A board compared with a Gerber overlay: the board as above, in the colours the scene was
    // told, or, before it was told any, all of it in its side's compare colour; the overlay's
    // film over it in the overlay's colour.
    static bool Render(qzk::ecad::PCBOvlCompareScene const& scene, View const& view,
                       std::string const& path, std::string& error);
    // One sheet of a schematic scene: the objects on that sheet, layers in the scene's draw
    // order, each in its layer's colour and visibility, with the looks over them.
    static bool RenderSheet(qzk::ecad::SchematicScene const& scene, unsigned int sheet,
                            View const& view, std::string const& path, std::string& error);
    // A board-against-schematic compare: the board on the left half, in the board's draw order
    // and colours, isolation and view's flip and rotation; the sheet on the right half, in the
    // schematic's draw order and colours.
    static bool RenderBoardSchematic(qzk::ecad::PCBSchCompareScene const& scene, unsigned int sheet,
                                     View const& view, std::string const& path, std::string& error);
    // One sheet of a schematic compare scene, both designs at once: an object that both designs
    // have on the sheet (the same kind, name and layer) in its layer's common colour, one only
    // the first has in the first colour, one only the second has in the second colour, each
    // layer as its compare record says (0xFFFFFFFF: the layer's own schematic colour). The
    // image difference cells and grids on view go in the strip along the foot.
    static bool RenderCompareSheet(qzk::ecad::SchematicCompareScene const& scene,
                                   unsigned int sheet, View const& view, std::string const& path,
                                   std::string& error);
};

} // namespace qzref
