// Colour words and the geometry the kernel places overlays with.
#include "dg/Color.h"
#include "dg/DBox2D.h"
#include "dg/DMat33.h"
#include "dg/DPoint2D.h"
#include "qzref/RecordFmt.h"

#include <gtest/gtest.h>

namespace {

TEST(Color, SampleWordsReadAsRedAndBlueAndRoundTrip) {
    dg::Color const red(0x010000FFu, true);
    EXPECT_EQ(red, dg::Color(1.0f, 0.0f, 0.0f, 1.0f));
    EXPECT_EQ(red.GetAsHexUI(), 0x010000FFu);

    dg::Color const blue(0x01DC0000u, true);
    EXPECT_FLOAT_EQ(blue.red, 0.0f);
    EXPECT_FLOAT_EQ(blue.green, 0.0f);
    EXPECT_FLOAT_EQ(blue.blue, 220.0f / 255.0f);
    EXPECT_EQ(blue.GetAsHexUI(), 0x01DC0000u);

    for (unsigned int word : {0x01000000u, 0x01FFFFFFu, 0x01123456u, 0x0100DC00u, 0x00ABCDEFu}) {
        EXPECT_EQ(dg::Color(word, true).GetAsHexUI(), word) << std::hex << word;
    }
    EXPECT_EQ(qzref::Fmt(red), "0x010000FF");
}

TEST(Color, FlagByteDecidesOpacityOnlyWhenAsked) {
    EXPECT_FLOAT_EQ(dg::Color(0x000000FFu, true).alpha, 0.0f);
    EXPECT_FLOAT_EQ(dg::Color(0x000000FFu, false).alpha, 1.0f);
    // Any non-zero flag byte is opaque, and the word written back says so with 0x01.
    EXPECT_EQ(dg::Color(0xFFFFFFFFu, true).GetAsHexUI(), 0x01FFFFFFu);
    EXPECT_EQ(dg::Color(0.0f, 1.0f, 0.0f, 0.25f).GetAsHexUI(), 0x0000FF00u);
    EXPECT_EQ(dg::Color(2.0f, -1.0f, 0.5f, 1.0f).GetAsHexUI(), 0x018000FFu);
    EXPECT_EQ(dg::Color().GetAsHexUI(), 0x01000000u);
}

TEST(Geometry, QuarterTurnsAndFlipsAboutACentreAreExact) {
    dg::DPoint2D const center(10.0, 20.0);
    dg::DPoint2D p(12.0, 20.0);
    p *= dg::DMat33::Rotation(90.0, center);
    EXPECT_EQ(p, dg::DPoint2D(10.0, 22.0));
    p *= dg::DMat33::Rotation(-90.0, center);
    EXPECT_EQ(p, dg::DPoint2D(12.0, 20.0));

    dg::DPoint2D q(13.0, 25.0);
    q *= dg::DMat33::FlipHorizontal(center);
    EXPECT_EQ(q, dg::DPoint2D(7.0, 25.0));
    q *= dg::DMat33::FlipVertical(center);
    EXPECT_EQ(q, dg::DPoint2D(7.0, 15.0));

    // a * b applies b first: translate after rotating about the origin.
    dg::DPoint2D r(1.0, 0.0);
    r *= dg::DMat33::Translation(5.0, 0.0) * dg::DMat33::Rotation(90.0);
    EXPECT_EQ(r, dg::DPoint2D(5.0, 1.0));

    dg::DPoint2D s(3.0, 4.0);
    s *= dg::DMat33::IDENTITY;
    EXPECT_EQ(s, dg::DPoint2D(3.0, 4.0));
}

TEST(Geometry, EmptyBoxHasBadCentre) {
    dg::DBox2D box;
    EXPECT_TRUE(box.IsEmpty());
    EXPECT_TRUE(box.GetCenter().IsBad());
    box.Extend(dg::DPoint2D(-2.0, 1.0));
    box.Extend(dg::DPoint2D(4.0, 5.0));
    EXPECT_EQ(box.GetCenter(), dg::DPoint2D(1.0, 3.0));
    EXPECT_EQ(dg::DBox2D(dg::DPoint2D(4, 5), dg::DPoint2D(0, 1)).GetCenter(), dg::DPoint2D(2, 3));
    EXPECT_FALSE(dg::DPoint2D(0.0, 0.0).IsBad());
}

} // namespace
