// Geometry in the design file: read onto its objects, optional, and refused with a pointer to
// the entry at fault.
#include "qzk/ecad/EcadDesignData.h"
#include "qzref/DesignFile.h"
#include "qzref/DesignObject.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>

namespace {

std::string Board(std::string const& geometry) {
    return R"({"formatVersion": 1, "kind": "board", "top": 5, "bottom": 5,
      "layers": [{"handle": 5, "name": "Top", "sublayers": [{"handle": 10, "name": "Pads"}]}],
      "components": [{"name": "U1", "layer": 5, "shapes": [{"layer": 5, "sublayer": 10)" +
           (geometry.empty() ? std::string() : ", \"geometry\": " + geometry) + "}]}]}";
}

qzref::DesignObject const* Shape(qzref::DesignReadResult const& read) {
    auto const* data = dynamic_cast<qzk::ecad::EcadDesignData const*>(read.data.Get());
    return data != nullptr ? data->FindObject("U1:1") : nullptr;
}

qzref::DesignReadResult Read(std::string const& text) {
    std::string const path = testing::TempDir() + "qzhost-geometry-" +
                             testing::UnitTest::GetInstance()->current_test_info()->name() +
                             ".json";
    std::ofstream(path) << text;
    auto result = qzref::ReadDesignFile(path);
    std::remove(path.c_str());
    return result;
}

TEST(DesignGeometry, ReadOntoTheObjectAndOptional) {
    auto const read =
        Read(Board(R"([{"line": [0, 0, 5, 5], "width": 0.5}, {"arc": [1, 1, 2, 0, 90]},
        {"circle": [3, 3, 1]}, {"rect": [0, 0, 2, 1]}, {"polygon": [0, 0, 1, 0, 1, 1]},
        {"pad": [4, 4, 1.5, 2]}])"));
    ASSERT_EQ(read.status, 0) << read.errorText;
    auto const* shape = Shape(read);
    ASSERT_NE(shape, nullptr);
    ASSERT_EQ(shape->geometry.size(), 6u);
    EXPECT_EQ(shape->geometry[0].kind, qzref::DesignShape::Line);
    EXPECT_EQ(shape->geometry[0].width, 0.5);
    EXPECT_EQ(shape->geometry[1].kind, qzref::DesignShape::Arc);
    EXPECT_EQ(shape->geometry[1].width, 0.2);
    EXPECT_EQ(shape->geometry[4].points, (std::vector<double>{0, 0, 1, 0, 1, 1}));
    EXPECT_EQ(shape->geometry[5].kind, qzref::DesignShape::Pad);

    auto const plain = Read(Board(""));
    ASSERT_EQ(plain.status, 0) << plain.errorText;
    ASSERT_NE(Shape(plain), nullptr);
    EXPECT_TRUE(Shape(plain)->geometry.empty());
}

TEST(DesignGeometry, WrongEntriesAreRefusedWithTheirPointer) {
    std::string const at = "/components/0/shapes/0/geometry";
    for (auto const& [geometry, why] : std::vector<std::pair<std::string, std::string>>{
             {"{}", at + ": not a list"},
             {"[3]", at + "/0: not an object"},
             {"[{\"blob\": [1]}]", at + "/0: no line, arc, circle, rect, polygon or pad"},
             {"[{\"line\": [1, 2, 3]}]", at + "/0/line: expected 4 numbers"},
             {"[{\"circle\": [0, 0, 1]}, {\"polygon\": [0, 0, 1, 1, 2]}]",
              at + "/1/polygon: expected 6 or more numbers, in pairs"},
             {"[{\"rect\": [0, 0, \"a\", 1]}]", at + "/0/rect: not a number"},
             {"[{\"circle\": [0, 0, -1]}]", at + "/0/circle: a negative size"},
             {"[{\"line\": [0, 0, 1, 1], \"width\": -2}]",
              at + "/0/width: not a width in millimetres"},
             {"[{\"line\": [0, 0, 1, 1], \"pad\": [0, 0, 1, 1]}]",
              at + "/0: more than one shape in one entry"}}) {
        auto const read = Read(Board(geometry));
        EXPECT_EQ(read.status, 1) << geometry;
        EXPECT_EQ(read.result, -5) << geometry;
        EXPECT_NE(read.errorText.find(why), std::string::npos) << read.errorText << " / " << why;
    }
}

} // namespace
