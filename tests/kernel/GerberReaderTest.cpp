// The Gerber reader: what a film's commands draw, in millimetres, and where a malformed film stops.
#include "qzref/GerberReader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <string>
#include <vector>

namespace {

using qzref::DesignShape;
using qzref::GerberReader;

struct Drawn {
    std::vector<DesignShape> shapes;
    std::vector<GerberReader::Names> names;
};

Drawn Read(std::string const& film) {
    Drawn out;
    GerberReader reader(film);
    reader.Read([&](DesignShape&& shape, GerberReader::Names const& names) {
        out.shapes.push_back(std::move(shape));
        out.names.push_back(names);
    });
    return out;
}

std::string const kMm = "%FSLAX26Y26*%\n%MOMM*%\n";

// Whether the shape covers (x, y): strokes by their distance, polygons by the winding number of
// their contours, erasing contours taking away what the shape covers there.
bool Covers(DesignShape const& shape, double x, double y) {
    auto const& q = shape.points;
    switch (shape.kind) {
    case DesignShape::Line: {
        double const dx = q[2] - q[0];
        double const dy = q[3] - q[1];
        double const length = dx * dx + dy * dy;
        double const t =
            length == 0 ? 0 : std::clamp(((x - q[0]) * dx + (y - q[1]) * dy) / length, 0.0, 1.0);
        return std::hypot(x - q[0] - t * dx, y - q[1] - t * dy) <= shape.width / 2;
    }
    case DesignShape::Arc: // a full circle only
        EXPECT_NEAR(q[4] - q[3], 360, 1e-9);
        return std::abs(std::hypot(x - q[0], y - q[1]) - q[2]) <= shape.width / 2;
    case DesignShape::Circle:
        return std::hypot(x - q[0], y - q[1]) <= q[2];
    case DesignShape::Pad:
        return std::abs(x - q[0]) <= q[2] / 2 && std::abs(y - q[1]) <= q[3] / 2;
    default:
        break;
    }
    auto const winding = [&](std::size_t from, std::size_t count) {
        int w = 0;
        auto const& p = shape.points;
        for (std::size_t i = 0; i < count; ++i) {
            double const x0 = p[from + 2 * i];
            double const y0 = p[from + 2 * i + 1];
            double const x1 = p[from + 2 * ((i + 1) % count)];
            double const y1 = p[from + 2 * ((i + 1) % count) + 1];
            double const side = (x1 - x0) * (y - y0) - (x - x0) * (y1 - y0);
            if (y0 <= y && y1 > y && side > 0) {
                ++w;
            } else if (y0 > y && y1 <= y && side < 0) {
                --w;
            }
        }
        return w;
    };
    if (shape.contours.empty()) {
        return winding(0, shape.points.size() / 2) != 0;
    }
    bool covered = false;
    std::size_t from = 0;
    for (int count : shape.contours) {
        auto const n = static_cast<std::size_t>(std::abs(count));
        if (winding(from, n) != 0) {
            covered = count > 0;
        }
        from += 2 * n;
    }
    return covered;
}

TEST(GerberReader, CoordinatesFollowTheFormatAndUnits) {
    // Leading zeros omitted, millimetres; a draw is a line of the circle's width.
    Drawn const mm =
        Read(kMm + "%ADD10C,0.25*%\nD10*\nX1500000Y-2000000D02*\nX2500000D01*\nM02*\n");
    ASSERT_EQ(mm.shapes.size(), 1u);
    EXPECT_EQ(mm.shapes[0].kind, DesignShape::Line);
    EXPECT_EQ(mm.shapes[0].points, (std::vector<double>{1.5, -2, 2.5, -2}));
    EXPECT_DOUBLE_EQ(mm.shapes[0].width, 0.25);

    // Trailing zeros omitted, inches, format 2.4: X0015 is 0.15 inch and Y1 is 10 inches.
    Drawn const inch = Read("%FSTAX24Y24*%\n%MOIN*%\n%ADD10C,0.01*%\nD10*\nX0015Y1D03*\nM02*\n");
    ASSERT_EQ(inch.shapes.size(), 1u);
    EXPECT_EQ(inch.shapes[0].kind, DesignShape::Circle);
    EXPECT_NEAR(inch.shapes[0].points[0], 0.15 * 25.4, 1e-9);
    EXPECT_NEAR(inch.shapes[0].points[1], 10 * 25.4, 1e-9);
    EXPECT_NEAR(inch.shapes[0].points[2], 0.005 * 25.4, 1e-9);

    // A coordinate left out keeps its value; coordinates alone repeat the last operation.
    Drawn const modal = Read(kMm + "%ADD10C,0.1*%\nD10*\nX1000000Y1000000D02*\nY3000000D01*\n"
                                   "X4000000*\nM02*\n");
    ASSERT_EQ(modal.shapes.size(), 2u);
    EXPECT_EQ(modal.shapes[0].points, (std::vector<double>{1, 1, 1, 3}));
    EXPECT_EQ(modal.shapes[1].points, (std::vector<double>{1, 3, 4, 3}));
}

TEST(GerberReader, ArcsRunInTheirDirectionInBothQuadrantModes) {
    auto const arc = [](std::string const& body) {
        Drawn const drawn = Read(kMm + "%ADD10C,0.2*%\nD10*\n" + body + "M02*\n");
        EXPECT_EQ(drawn.shapes.size(), 1u);
        EXPECT_EQ(drawn.shapes.at(0).kind, DesignShape::Arc);
        return drawn.shapes.at(0).points;
    };
    // Counter-clockwise from (10, 0) to (0, 10) about the origin: a quarter from 0 to 90 degrees.
    auto p = arc("G75*\nX10000000Y0D02*\nG03X0Y10000000I-10000000J0D01*\n");
    EXPECT_NEAR(p[0], 0, 1e-9);
    EXPECT_NEAR(p[2], 10, 1e-9);
    EXPECT_NEAR(p[3], 0, 1e-9);
    EXPECT_NEAR(p[4], 90, 1e-9);
    // The same ends clockwise: three quarters, drawn counter-clockwise from 90 to 360.
    p = arc("G75*\nX10000000Y0D02*\nG02X0Y10000000I-10000000J0D01*\n");
    EXPECT_NEAR(p[4] - p[3], 270, 1e-9);
    EXPECT_NEAR(std::fmod(p[3] + 360, 360), 90, 1e-9);
    // Start and end the same in multi-quadrant mode: a full circle.
    p = arc("G75*\nX10000000Y0D02*\nG02X10000000Y0I-5000000J0D01*\n");
    EXPECT_NEAR(p[0], 5, 1e-9);
    EXPECT_NEAR(p[4] - p[3], 360, 1e-9);
    // Single quadrant: unsigned offsets, the centre that gives a quarter turn clockwise.
    p = arc("G74*\nX0Y15000000D02*\nG02X5000000Y20000000I5000000J0D01*\n");
    EXPECT_NEAR(p[0], 5, 1e-9);
    EXPECT_NEAR(p[1], 15, 1e-9);
    EXPECT_NEAR(p[3], 90, 1e-9);
    EXPECT_NEAR(p[4], 180, 1e-9);
}

TEST(GerberReader, RegionsAreContoursWithTheirArcsAndCutInHoles) {
    // A 20 x 20 square whose top right corner is a quarter circle, with a 4 x 4 hole cut in.
    Drawn const drawn = Read(kMm + "%TA.AperFunction,Conductor*%\n%TO.N,GND*%\nG75*\nG36*\n"
                                   "X0Y0D02*\nX20000000Y0D01*\nX20000000Y10000000D01*\n"
                                   "G03X10000000Y20000000I-10000000J0D01*\n"
                                   "G01X0Y20000000D01*\nX0Y0D01*\n"
                                   "X2000000Y2000000D01*\nX2000000Y6000000D01*\n"
                                   "X6000000Y6000000D01*\nX6000000Y2000000D01*\n"
                                   "X2000000Y2000000D01*\nX0Y0D01*\n"
                                   "X30000000Y0D02*\nX32000000Y0D01*\nX31000000Y2000000D01*\n"
                                   "G37*\nM02*\n");
    ASSERT_EQ(drawn.shapes.size(), 2u) << "one shape for each contour";
    DesignShape const& square = drawn.shapes[0];
    EXPECT_EQ(square.kind, DesignShape::Polygon);
    EXPECT_TRUE(Covers(square, 1, 1));
    EXPECT_FALSE(Covers(square, 4, 4)) << "in the hole";
    EXPECT_TRUE(Covers(square, 16, 16)) << "inside the arc";
    EXPECT_FALSE(Covers(square, 18.5, 18.5)) << "outside the arc";
    // The arc's chords stay on the circle.
    for (std::size_t i = 0; i + 1 < square.points.size(); i += 2) {
        double const x = square.points[i];
        double const y = square.points[i + 1];
        if (x > 10 && y > 10) {
            EXPECT_NEAR(std::hypot(x - 10, y - 10), 10, 1e-6);
        }
    }
    EXPECT_EQ(drawn.names[0].net, "GND");
    EXPECT_EQ(drawn.names[0].function, "Conductor");
    EXPECT_TRUE(Covers(drawn.shapes[1], 31, 0.5)) << "an open contour is closed";
}

TEST(GerberReader, AperturesFlashWithTheirHolesAndDrawsSweepThem) {
    Drawn const drawn = Read(kMm + "%ADD10C,2X1*%\n%ADD11R,4X2X1*%\n%ADD12O,4X2*%\n"
                                   "%ADD13P,4X4X45*%\n%ADD14R,2X1*%\n"
                                   "D10*\nX0Y0D03*\nD11*\nX10000000Y0D03*\nD12*\nX20000000Y0D03*\n"
                                   "D13*\nX30000000Y0D03*\n"
                                   "D14*\nX0Y10000000D02*\nX10000000Y10000000D01*\nM02*\n");
    ASSERT_EQ(drawn.shapes.size(), 5u);
    EXPECT_TRUE(Covers(drawn.shapes[0], 0.75, 0));
    EXPECT_FALSE(Covers(drawn.shapes[0], 0.25, 0)) << "the circle's hole";
    EXPECT_TRUE(Covers(drawn.shapes[1], 11.9, 0.9));
    EXPECT_FALSE(Covers(drawn.shapes[1], 10, 0)) << "the rectangle's hole";
    // The obround's ends are round: its corner is empty, its end's middle is not.
    EXPECT_TRUE(Covers(drawn.shapes[2], 21.95, 0));
    EXPECT_FALSE(Covers(drawn.shapes[2], 21.9, 0.9));
    // Four corners on a circle of diameter 4, the first at 45 degrees: an upright square of
    // side 2.83, not a diamond.
    EXPECT_TRUE(Covers(drawn.shapes[3], 31.3, 1.3));
    EXPECT_FALSE(Covers(drawn.shapes[3], 31.6, 0));
    // A rectangle drawn along a line covers the whole swept band and no round ends.
    DesignShape const& swept = drawn.shapes[4];
    EXPECT_EQ(swept.kind, DesignShape::Polygon);
    EXPECT_TRUE(Covers(swept, -0.9, 10.4));
    EXPECT_TRUE(Covers(swept, 10.9, 9.6));
    EXPECT_FALSE(Covers(swept, 11.1, 10));
}

TEST(GerberReader, LoadedTransformationsTurnMirrorAndScaleFlashes) {
    // A 2 x 1 pad turned a quarter; a trapezoid outline mirrored in x; a circle and a ring
    // scaled; then back to no transformation.
    Drawn const drawn =
        Read(kMm + "%ADD10R,2X1*%\n%AML*\n4,1,4,0,0,2,0,2,1,1,1,0,0,0*%\n"
                   "%ADD11L*%\n%ADD12C,1*%\n%ADD13C,2X1*%\n"
                   "%LR90*%\nD10*\nX0Y0D03*\n%LR0*%\n%LMX*%\nD11*\nX10000000Y0D03*\n"
                   "%LMN*%\n%LS2*%\nD12*\nX20000000Y0D03*\nD13*\nX30000000Y0D03*\n"
                   "%LS1*%\nD10*\nX40000000Y0D03*\nM02*\n");
    ASSERT_EQ(drawn.shapes.size(), 5u);
    EXPECT_TRUE(Covers(drawn.shapes[0], 0, 0.9));
    EXPECT_FALSE(Covers(drawn.shapes[0], 0.9, 0));
    EXPECT_TRUE(Covers(drawn.shapes[1], 8.5, 0.5)) << "mirrored to the left of its flash point";
    EXPECT_FALSE(Covers(drawn.shapes[1], 11.5, 0.5));
    EXPECT_TRUE(Covers(drawn.shapes[2], 20.9, 0)) << "radius 0.5 doubled";
    EXPECT_FALSE(Covers(drawn.shapes[2], 21.1, 0));
    EXPECT_TRUE(Covers(drawn.shapes[3], 31.9, 0)) << "the ring doubled: 1 to 2";
    EXPECT_FALSE(Covers(drawn.shapes[3], 30.9, 0));
    EXPECT_EQ(drawn.shapes[4].kind, DesignShape::Pad);
    EXPECT_EQ(drawn.shapes[4].points, (std::vector<double>{40, 0, 2, 1}));
}

TEST(GerberReader, MacrosWorkOutTheirArithmeticExposureAndRotation) {
    // A 4 x 1 bar turned by $2 degrees, half its length in a variable, a hole of exposure off.
    std::string const macro = "%AMBAR*\n0 a bar*\n$3=$1/2*\n21,1,$1,1,0,0,$2*\n"
                              "1,0,0.5,$3-0.5,0,$2*\n1,1,(1+1)x0.5,0-$3,0*%\n";
    Drawn const drawn = Read(kMm + macro +
                             "%ADD10BAR,4X0*%\n%ADD11BAR,4X90*%\nD10*\nX0Y0D03*\nD11*\n"
                             "X10000000Y0D03*\nM02*\n");
    ASSERT_EQ(drawn.shapes.size(), 2u);
    DesignShape const& flat = drawn.shapes[0];
    ASSERT_EQ(flat.contours.size(), 3u);
    EXPECT_GT(flat.contours[0], 0);
    EXPECT_LT(flat.contours[1], 0) << "exposure off";
    EXPECT_TRUE(Covers(flat, -1.9, 0.4));
    EXPECT_FALSE(Covers(flat, 1.5, 0)) << "the hole at ($1/2 - 0.5, 0)";
    EXPECT_TRUE(Covers(flat, -2.4, 0)) << "the circle of diameter (1+1)x0.5 at -$3";
    DesignShape const& turned = drawn.shapes[1];
    EXPECT_TRUE(Covers(turned, 10, 1.9));
    EXPECT_FALSE(Covers(turned, 11.9, 0));
    EXPECT_FALSE(Covers(turned, 10, 1.5)) << "the hole turned with the bar";

    // A thermal: the ring without the cross.
    Drawn const thermal = Read(kMm + "%AMT*\n7,0,0,4,2,0.5,0*%\n%ADD10T*%\nD10*\nX0Y0D03*\nM02*\n");
    ASSERT_EQ(thermal.shapes.size(), 1u);
    EXPECT_TRUE(Covers(thermal.shapes[0], 1.2, 1.2));
    EXPECT_FALSE(Covers(thermal.shapes[0], 1.5, 0)) << "in the gap";
    EXPECT_FALSE(Covers(thermal.shapes[0], 0.5, 0.5)) << "inside the ring";
}

TEST(GerberReader, PolarityStepAndRepeatAndAttributesReachTheShapes) {
    Drawn const drawn = Read(kMm + "%TA.AperFunction,SMDPad,CuDef*%\n%ADD10C,1*%\n%TD*%\n"
                                   "%ADD11C,0.5*%\n%TO.C,U1*%\n%TO.P,U1,3*%\n%TO.N,VCC*%\n"
                                   "%SRX2Y3I5.0J2.0*%\nD10*\nX0Y0D03*\n%LPC*%\nD11*\nX0Y0D03*\n"
                                   "%SR*%\n%LPD*%\n%TD.P*%\n%TD.C*%\nX9000000Y9000000D03*\n"
                                   "%TD*%\nX8000000Y8000000D03*\nM02*\n");
    ASSERT_EQ(drawn.shapes.size(), 2u * 2 * 3 + 2);
    // The block at each of its six places, its clear flash after its dark one.
    for (std::size_t k = 0; k < 6; ++k) {
        DesignShape const& dark = drawn.shapes[2 * k];
        DesignShape const& clear = drawn.shapes[2 * k + 1];
        EXPECT_FALSE(dark.clear);
        EXPECT_TRUE(clear.clear);
        EXPECT_DOUBLE_EQ(dark.points[0], 5.0 * static_cast<double>(k % 2));
        std::size_t const row = k / 2;
        EXPECT_DOUBLE_EQ(dark.points[1], 2.0 * static_cast<double>(row));
        EXPECT_EQ(dark.points[0], clear.points[0]);
        EXPECT_EQ(drawn.names[2 * k], (GerberReader::Names{"VCC", "U1", "3", "SMDPad,CuDef"}));
        EXPECT_EQ(drawn.names[2 * k + 1].function, "");
    }
    EXPECT_FALSE(drawn.shapes[12].clear);
    EXPECT_EQ(drawn.names[12], (GerberReader::Names{"VCC", "", "", ""}));
    EXPECT_EQ(drawn.names[13], GerberReader::Names{});

    std::string const attributed = "%TF.FileFunction,Copper,L1,Top*%\n" + kMm + "M02*\n";
    GerberReader reader(attributed);
    reader.Read([](DesignShape&&, GerberReader::Names const&) {});
    EXPECT_EQ(reader.GetFileAttributes().at("FileFunction"), "Copper,L1,Top");
}

TEST(GerberReader, MalformedFilmsStopAtTheirLineAndCommand) {
    struct Case {
        std::string film;
        std::size_t line;
        std::string command;
        std::string why;
    };
    std::string const head = kMm + "%ADD10C,1*%\n"; // lines 1 to 3
    for (Case const& c : {
             Case{head + "D10*\nX0Y0D03*\nG99*\nM02*\n", 6, "G99", "an unknown command"},
             Case{head + "%XY1*%\nM02*\n", 4, "XY1", "an unknown or unsupported command"},
             Case{head + "D11*\nM02*\n", 4, "D11", "aperture D11 is not defined"},
             Case{head + "X0Y0D03*\nM02*\n", 4, "X0Y0D03", "no aperture is selected"},
             Case{head + "G36*\nX0Y0D02*\nX1Y1D01*\nM02*\n", 7, "M02", "inside a region"},
             Case{head + "D10*\nX0Y0D03*\n", 5, "", "without M02"},
             Case{head + "D10*\nX0Y0D0", 5, "X0Y0D0", "cut short"},
             Case{head + "%ADD11R,1X", 4, "ADD11R,1X", "cut short"},
             Case{head + "D10*\nX123456789Y0D03*\nM02*\n", 5, "X123456789Y0D03",
                  "coordinate X123456789 overflows the format of 2 integer and 6"},
             Case{"%MOMM*%\n%ADD10C,1*%\nD10*\nX0Y0D03*\nM02*\n", 4, "X0Y0D03",
                  "before the format"},
             Case{head + "%AMM*\n1,1,$1x(2*%\n%ADD11M,1*%\nM02*\n", 6, "ADD11M,1", "macro M"},
             Case{head + "%ADD11Q,1*%\nM02*\n", 4, "ADD11Q,1", "no aperture macro"},
             Case{head + "%AMS*\n1,1," + std::string(100000, '-') + "1,0,0*%\n%ADD11S*%\nM02*\n", 6,
                  "ADD11S", "macro S: cannot work out"},
             // A thermal whose diameter divides by zero, as the fuzzer wrote it.
             Case{head + "%AMT*\n7,0,0,2/0,1.2,0.3,45*%\n%ADD11T*%\nM02*\n", 6, "ADD11T",
                  "a value out of range"},
             Case{head + "%AMT*\n$1=100000x100000x100000*\n1,1,$1,0,0*%\n%ADD11T*%\nM02*\n", 7,
                  "ADD11T", "a value out of range"},
             // A corner count far beyond an int, as the fuzzer wrote it.
             Case{head + "%ADD17P,0.12X99999999999X15*%\nM02*\n", 4, "ADD17P,0.12X99999999999X15",
                  "3 to 12 corners"},
             Case{head + "%ADD17P,0.12X3.5*%\nM02*\n", 4, "ADD17P,0.12X3.5", "3 to 12 corners"},
         }) {
        try {
            Read(c.film);
            ADD_FAILURE() << "read: " << c.film;
        } catch (GerberReader::Error const& error) {
            EXPECT_EQ(error.line, c.line) << c.film;
            EXPECT_EQ(error.command, c.command) << c.film;
            EXPECT_NE(std::string(error.what()).find(c.why), std::string::npos)
                << error.what() << " for " << c.film;
        }
    }
}

} // namespace
