// Reading design files: the samples read with their content, and every kind of bad file gives
// its documented status, result number and a text that says where.
#include "qzref/DesignFile.h"
#include "IcmApiEcad.h"
#include "qzk/EcadDesign.h"
#include "qzk/ecad/EcadPCBData.h"
#include "qzk/ecad/SchematicData.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <set>
#include <stdexcept>
#include <vector>

namespace {

using qzk::ecad::EcadPCBData;
using qzk::ecad::SchematicData;

std::string Sample(char const* name) {
    return std::string(QZ_EXAMPLES_DIR) + "/designs/" + name;
}

// A file in the temporary directory that goes when the test ends.
class TempFile {
public:
    TempFile(std::string const& name, std::string const& content)
        : path_((std::filesystem::temp_directory_path() /
                 ("qz-design-test-" +
                  std::to_string(::testing::UnitTest::GetInstance()->random_seed()) + "-" + name))
                    .string()) {
        std::ofstream(path_, std::ios::binary) << content;
    }
    ~TempFile() { std::filesystem::remove(path_); }
    std::string const& Path() const { return path_; }

private:
    std::string path_;
};

qzref::DesignReadResult ReadText(std::string const& name, std::string const& content) {
    TempFile file(name, content);
    return qzref::ReadDesignFile(file.Path());
}

du::SmartPtr<EcadPCBData> ReadBoard(char const* name) {
    auto read = qzref::ReadDesignFile(Sample(name));
    EXPECT_EQ(read.status, 0) << read.errorText;
    return du::DynamicCast<EcadPCBData>(read.data);
}

TEST(DesignFile, FourLayerBoardHasItsLayersSublayersAndLabels) {
    auto read = qzref::ReadDesignFile(Sample("four-layer-board.json"));
    ASSERT_EQ(read.status, 0) << read.errorText;
    EXPECT_EQ(read.result, 0);
    EXPECT_TRUE(read.errorText.empty());
    auto board = du::DynamicCast<EcadPCBData>(read.data);
    ASSERT_TRUE(board);
    EXPECT_FALSE(board->IsOverlayData());
    EXPECT_EQ(board->GetDesignName(), du::Symbol("Four-layer sensor board"));
    EXPECT_EQ(board->GetTop(), 5);
    EXPECT_EQ(board->GetBottom(), 2);
    EXPECT_EQ(board->GetLayers().size(), 6u);
    EXPECT_EQ(board->GetLayerName(EcadPCBData::MISC_LAYER), du::Symbol("Misc"));
    EXPECT_EQ(board->GetLayerName(9), du::Symbol::EMPTY);
    EXPECT_EQ(board->GetSublayerLabel(5, 33), du::Symbol("Top signal"));
    EXPECT_EQ(board->GetSublayerLabel(1, 2), du::Symbol("Board outline"));
    EXPECT_EQ(board->GetSublayerLabel(5, 99), du::Symbol::EMPTY);
    EXPECT_EQ(board->FindSublayerHandle("Top", "Signal"), 33);
    EXPECT_EQ(board->FindSublayerHandle("Inner 2", "Room"), 1000);
    EXPECT_EQ(board->FindSublayerHandle("Top", "Room"), -1);
    EXPECT_EQ(board->FindSublayerHandle("Nowhere", "Signal"), -1);

    auto const* top = board->FindSublayer(5, 33);
    ASSERT_NE(top, nullptr);
    EXPECT_EQ(top->color, 0x010000FFu);
    EXPECT_TRUE(top->visible);
    EXPECT_EQ(top->identity, 0x5349474E414C0001ull);
    EXPECT_EQ(board->FindSublayer(2, 33)->identity, top->identity);
    EXPECT_FALSE(board->FindSublayer(5, 15)->visible);
    // A sublayer without an identity of its own gets one from its name, the same on every read.
    auto const* stiffener = board->FindSublayer(5, 40);
    ASSERT_NE(stiffener, nullptr);
    EXPECT_NE(stiffener->identity, 0u);
    EXPECT_EQ(ReadBoard("four-layer-board.json")->FindSublayer(5, 40)->identity,
              stiffener->identity);
    EXPECT_NE(board->FindSublayer(-2, 33)->identity, board->FindSublayer(-2, 34)->identity);
}

TEST(DesignFile, SublayerSetIsOrderedByLayerThenSublayerAndOwnsSublayerObjects) {
    auto board = ReadBoard("six-layer-board.json");
    ASSERT_TRUE(board);
    ASSERT_EQ(board->sublayers.size(), 23u);
    qzk::ecad::SublayerPCBBase const* previous = nullptr;
    for (auto const* key : board->sublayers) {
        EXPECT_NE(dynamic_cast<qzk::ecad::SublayerPCB const*>(key), nullptr);
        if (previous != nullptr) {
            EXPECT_TRUE(*previous < *key) << previous->layer << "/" << previous->sublayer
                                          << " before " << key->layer << "/" << key->sublayer;
        }
        previous = key;
    }
    EXPECT_EQ((*board->sublayers.begin())->layer, EcadPCBData::MISC_LAYER);
    EXPECT_EQ((*board->sublayers.rbegin())->layer, 7);
    EXPECT_EQ((*board->sublayers.rbegin())->sublayer, 35);
    EXPECT_TRUE(EcadPCBData::IsRegionHandle(6, 1001));
    EXPECT_TRUE(EcadPCBData::IsRegionHandle(7, 16));
    EXPECT_FALSE(EcadPCBData::IsRegionHandle(1, 16));
    EXPECT_FALSE(EcadPCBData::IsRegionHandle(7, 33));
}

TEST(DesignFile, BoardComponentsHaveFootprintShapesAndNetsConnectPins) {
    auto board = ReadBoard("six-layer-board.json");
    ASSERT_TRUE(board);
    ASSERT_EQ(board->GetComponents().size(), 6u);
    ASSERT_EQ(board->GetNets().size(), 7u);
    auto const* u3 = board->FindObject("U3", IcmApiEcad::COMPONENT);
    ASSERT_NE(u3, nullptr);
    EXPECT_EQ(u3->layer, 2);
    ASSERT_FALSE(u3->children.empty());
    auto const* footprint = u3->children.front();
    EXPECT_EQ(footprint->type, IcmApiEcad::FOOTPRINT);
    std::vector<short> sublayers;
    for (auto const* shape : footprint->children) {
        EXPECT_EQ(shape->type, IcmApiEcad::SHAPE);
        EXPECT_EQ(shape->layer, 2);
        sublayers.push_back(shape->sublayer);
    }
    EXPECT_EQ(sublayers, (std::vector<short>{10, 11, 14, 15}));
    auto const* sda = board->FindObject("SDA", IcmApiEcad::NET);
    ASSERT_NE(sda, nullptr);
    std::vector<std::string> names;
    for (auto const* child : sda->children) {
        names.push_back(child->name);
    }
    EXPECT_EQ(names, (std::vector<std::string>{"U1.5", "U2.3", "J1.3", "SDA:1", "SDA:2"}));
    EXPECT_EQ(board->FindObject("U2.3")->owner, board->FindObject("U2", IcmApiEcad::COMPONENT));
    EXPECT_EQ(board->FindObject("FID1", IcmApiEcad::COMPONENT)->layer, 0);
}

TEST(DesignFile, SchematicHasSheetsLayerNamesContentAndNetsAcrossSheets) {
    auto read = qzref::ReadDesignFile(Sample("three-sheet-schematic.json"));
    ASSERT_EQ(read.status, 0) << read.errorText;
    auto schematic = du::DynamicCast<SchematicData>(read.data);
    ASSERT_TRUE(schematic);
    EXPECT_FALSE(du::DynamicCast<EcadPCBData>(read.data));
    EXPECT_EQ(schematic->GetNumSheets(), 3u);
    EXPECT_EQ(schematic->GetSheetName(2), "Bridge");
    EXPECT_EQ(schematic->GetSheetName(3), "");
    EXPECT_EQ(schematic->layerNames.size(), 10u);
    EXPECT_EQ(schematic->layerNames.at(19), L"Net labels");
    EXPECT_EQ(schematic->GetLayerName(32), du::Symbol("Ports"));
    EXPECT_EQ(schematic->GetLayerName(5), du::Symbol::EMPTY);
    for (short layer : {12, 7, 19, 8, 10, 32}) {
        EXPECT_TRUE(schematic->HasLayerContent(layer)) << layer;
    }
    for (short layer : {30, 11, 28, 29, 5}) {
        EXPECT_FALSE(schematic->HasLayerContent(layer)) << layer;
    }
    EXPECT_EQ(schematic->GetNetSheets(schematic->FindObject("GND", IcmApiEcad::NET)),
              (std::vector<unsigned int>{0, 1, 2}));
    EXPECT_EQ(schematic->GetNetSheets(schematic->FindObject("PWM", IcmApiEcad::NET)),
              (std::vector<unsigned int>{1, 2}));
    EXPECT_EQ(schematic->FindObject("Q1.G")->sheet, 2u);
    // Sheet 1: U2 and its three pins, two wires of GND and 5V, the PWM port.
    EXPECT_EQ(schematic->GetObjectsOnSheet(1).size(), 7u);
}

TEST(DesignFile, ImagesOfEveryKindKeepTheirFieldsAndPictures) {
    auto board = ReadBoard("board-with-images.json");
    ASSERT_TRUE(board);
    auto const& images = board->GetImages();
    ASSERT_EQ(images.size(), 5u);
    EXPECT_EQ(images[0]->kind, 0);
    EXPECT_EQ(images[0]->id, 101u);
    EXPECT_EQ(images[0]->overlayName, "Logo overlay");
    ASSERT_TRUE(images[0]->picture);
    EXPECT_EQ(images[0]->picture->GetPixel(0, 0), 0x010000FFu);
    EXPECT_EQ(images[0]->picture->GetPixel(0, 1), 0x01FF0000u);
    EXPECT_EQ(images[0]->picture->GetPixel(2, 0), 0u);
    EXPECT_EQ(images[1]->kind, 1);
    EXPECT_EQ(images[1]->id, 0u);
    EXPECT_FALSE(images[1]->visible);
    EXPECT_EQ(images[1]->parameter, 7u);
    EXPECT_EQ(images[1]->overlayName, "Assembly photo");
    EXPECT_EQ(images[1]->picture->GetPixel(3, 2), 0x01808080u);
    EXPECT_EQ(images[2]->kind, 2);
    EXPECT_EQ(images[2]->id, 1001u);
    EXPECT_EQ(images[2]->color, 0x0100FFFFu);
    EXPECT_FALSE(images[4]->picture);
}

TEST(DesignFile, GerberFilmIsOverlayDataNamedByItsAttributes) {
    std::string const path = Sample("top-copper.gbr");
    EXPECT_TRUE(qzk::EcadDesign::HasGerberExtension(path));
    auto read = qzref::ReadDesignFile(path);
    ASSERT_EQ(read.status, 0) << read.errorText;
    auto overlay = du::DynamicCast<EcadPCBData>(read.data);
    ASSERT_TRUE(overlay);
    EXPECT_TRUE(overlay->IsOverlayData());
    EXPECT_EQ(overlay->GetLayerName(2), du::Symbol("Copper,L1,Top"));
    EXPECT_EQ(overlay->GetSublayerLabel(2, 33), du::Symbol("Film"));
    // The sample's pads, tracks and regions each carry their aperture's function.
    std::set<std::string> functions;
    for (short sublayer = 34; sublayer < 40; ++sublayer) {
        functions.insert(overlay->GetSublayerLabel(2, sublayer).str());
    }
    EXPECT_EQ(functions, (std::set<std::string>{"", "SMDPad,CuDef", "Conductor", "ComponentPad"}));
    // Pins belong to their component and their net; tracks are the nets' wires.
    auto* const pin = overlay->FindObject("U1.1", IcmApiEcad::PIN);
    ASSERT_NE(pin, nullptr);
    ASSERT_NE(pin->owner, nullptr);
    EXPECT_EQ(pin->owner->name, "U1");
    EXPECT_EQ(pin->geometry.size(), 1u);
    auto* const vcc = overlay->FindObject("VCC", IcmApiEcad::NET);
    ASSERT_NE(vcc, nullptr);
    std::set<std::string> children;
    for (auto const* child : vcc->children) {
        children.insert(child->name);
    }
    EXPECT_EQ(children, (std::set<std::string>{"U1.1", "R1.1", "VCC:1"}));
    EXPECT_EQ(overlay->FindObject("VCC:1")->geometry.size(), 2u) << "both track segments";
    // The extent is what the film covers: from the mounting hole's pad to the VCC track.
    EXPECT_NEAR(overlay->minX, 2, 0.01);
    EXPECT_NEAR(overlay->minY, 2, 0.01);
    EXPECT_NEAR(overlay->maxX, 44.75, 1e-9);
    EXPECT_NEAR(overlay->maxY, 30.4, 1e-9);

    // Older samples wrote overlays as JSON under a Gerber extension; they still read.
    auto json = ReadText("old.gbr", R"(  {"formatVersion": 1, "kind": "overlay", "top": 5,
        "bottom": 5, "layers": [{"handle": 5, "name": "Top", "sublayers": []}]})");
    ASSERT_EQ(json.status, 0) << json.errorText;
    EXPECT_TRUE(du::DynamicCast<EcadPCBData>(json.data)->IsOverlayData());
}

TEST(DesignFile, MalformedFilmNamesTheFileLineAndCommand) {
    TempFile film("bad.gbr", "%FSLAX26Y26*%\n%MOMM*%\n%ADD10C,1*%\nD10*\nX0Y0D03*\nD12*\nM02*\n");
    auto const bad = qzref::ReadDesignFile(film.Path(), {}, "overlay");
    EXPECT_EQ(bad.status, 1);
    EXPECT_EQ(bad.result, -3);
    EXPECT_FALSE(bad.data);
    EXPECT_EQ(bad.errorText,
              film.Path() + ":6: D12: malformed Gerber: aperture D12 is not defined");
    // A loader cancels a film's read as it does a design's, from its progress callback.
    std::vector<int> heard;
    auto const read = qzref::ReadDesignFile(Sample("top-copper.gbr"),
                                            [&](unsigned char p) { heard.push_back(p); });
    EXPECT_EQ(read.status, 0) << read.errorText;
    ASSERT_FALSE(heard.empty());
    EXPECT_EQ(heard.front(), 0);
    EXPECT_EQ(heard.back(), 100);
    EXPECT_TRUE(std::is_sorted(heard.begin(), heard.end()));
    auto const stopped = qzref::ReadDesignFile(Sample("top-copper.gbr"), [](unsigned char p) {
        if (p > 10) {
            throw std::runtime_error("cancelled");
        }
    });
    EXPECT_EQ(stopped.result, -6) << stopped.errorText;
    EXPECT_FALSE(stopped.data);
    // A film is an overlay; a caller that wants a board is refused, whatever the film holds.
    auto const board = qzref::ReadDesignFile(film.Path(), {}, "board");
    EXPECT_EQ(board.result, -4) << board.errorText;
}

TEST(DesignFile, NewerFilesAreReadWithResultThreeOrRefusedWithMinusEight) {
    auto newer = qzref::ReadDesignFile(Sample("newer-readable-board.json"));
    EXPECT_EQ(newer.status, 0) << newer.errorText;
    EXPECT_EQ(newer.result, 3);
    ASSERT_TRUE(du::DynamicCast<EcadPCBData>(newer.data));
    EXPECT_EQ(du::DynamicCast<EcadPCBData>(newer.data)->GetComponents().size(), 4u);

    std::string const path = Sample("newer-unreadable-board.json");
    auto refused = qzref::ReadDesignFile(path);
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(refused.result, -8);
    EXPECT_FALSE(refused.data);
    EXPECT_EQ(refused.errorText.rfind(path + ": ", 0), 0u) << refused.errorText;
    EXPECT_NE(refused.errorText.find("version 3"), std::string::npos) << refused.errorText;

    // A newer file that older readers may read, but of a kind unknown here, is refused as such.
    auto unknown = ReadText("newkind.json", R"({"formatVersion": 2, "compatibleVersion": 1,
                                                "kind": "harness"})");
    EXPECT_EQ(unknown.result, -4);
}

TEST(DesignFile, SyntaxErrorsGiveFileLineAndColumn) {
    std::string const path = Sample("truncated-board.json");
    auto truncated = qzref::ReadDesignFile(path);
    EXPECT_EQ(truncated.status, 1);
    EXPECT_EQ(truncated.result, -3);
    EXPECT_FALSE(truncated.data);
    std::ifstream in(path);
    std::string line;
    std::size_t lines = 0;
    std::string last;
    while (std::getline(in, line)) {
        ++lines;
        last = line;
    }
    std::string const where =
        path + ":" + std::to_string(lines) + ":" + std::to_string(last.size() + 1) + ": ";
    EXPECT_EQ(truncated.errorText.rfind(where, 0), 0u) << truncated.errorText;

    auto broken =
        ReadText("broken.json", "{\n  \"kind\": \"board\",\n  \"formatVersion\": tru\n}\n");
    EXPECT_EQ(broken.result, -3);
    EXPECT_NE(broken.errorText.find(".json:3:"), std::string::npos) << broken.errorText;
    EXPECT_NE(broken.errorText.find("malformed JSON"), std::string::npos) << broken.errorText;
}

TEST(DesignFile, MissingUnreadableAndWrongKindFilesAreRefused) {
    auto missing = qzref::ReadDesignFile("/nonexistent/dir/board.json");
    EXPECT_EQ(missing.status, 1);
    EXPECT_EQ(missing.result, -1);
    EXPECT_EQ(missing.errorText,
              "/nonexistent/dir/board.json: cannot open the design file: no such file");

    auto directory = qzref::ReadDesignFile(std::filesystem::temp_directory_path().string());
    EXPECT_EQ(directory.result, -2);
    EXPECT_EQ(directory.status, 1);

    struct Case {
        char const* name;
        char const* text;
    };
    for (Case const& c : {Case{"a.json", R"({"formatVersion": 1, "kind": "spreadsheet"})"},
                          Case{"b.json", R"({"formatVersion": 1})"}, Case{"c.json", R"([1, 2, 3])"},
                          Case{"d.gbr", R"({"formatVersion": 1, "kind": "board"})"},
                          Case{"e.json", R"({"formatVersion": 1, "kind": "overlay"})"}}) {
        auto read = ReadText(c.name, c.text);
        EXPECT_EQ(read.status, 1) << c.name;
        EXPECT_EQ(read.result, -4) << c.name << ": " << read.errorText;
        EXPECT_NE(read.errorText.find(c.name), std::string::npos) << read.errorText;
    }
}

TEST(DesignFile, InvalidContentNamesTheOffendingValue) {
    std::string const head = R"({"formatVersion": 1, "kind": "board", "top": 2, "bottom": 2,
        "layers": [{"handle": 2, "name": "Top", "sublayers": [{"handle": 10, "name": "Pads"}]}])";
    struct Case {
        std::string text;
        char const* pointer;
    };
    for (
        Case const& c : {
            Case{head + R"(, "components": [{"name": "U1", "layer": 2,
                     "shapes": [{"layer": 2, "sublayer": 14}]}]})",
                 ": /components/0/shapes/0: "},
            Case{head + R"(, "components": [{"name": "U1", "layer": 2,
                     "pins": [{"name": "1", "layer": 2, "sublayer": 10}]}],
                     "nets": [{"name": "A", "pins": ["U1.1"]}, {"name": "B", "pins": ["U1.1"]}]})",
                 ": /nets/1/pins/0: "},
            Case{head + R"(, "nets": [{"name": "A", "pins": ["U9.1"]}]})", ": /nets/0/pins/0: "},
            Case{R"({"formatVersion": 1, "kind": "board", "top": 2, "bottom": 2, "layers": [
                     {"handle": 2, "name": "A", "sublayers": []},
                     {"handle": 2, "name": "B", "sublayers": []}]})",
                 ": /layers/1/handle: "},
            Case{R"({"formatVersion": 1, "kind": "board", "top": 3, "bottom": 2, "layers": [
                     {"handle": 2, "name": "A", "sublayers": [
                         {"handle": 10, "name": "P", "color": "red"}]}]})",
                 ": /layers/0/sublayers/0/color: "},
            Case{R"({"formatVersion": 1, "kind": "board", "top": 3, "bottom": 2, "layers": [
                     {"handle": 2, "name": "A", "sublayers": []}]})",
                 ": /top: "},
            Case{R"({"formatVersion": "1", "kind": "board"})", ": /formatVersion: "},
            Case{
                R"({"formatVersion": 1, "kind": "schematic", "layers": [{"handle": 7, "name": "S"}],
                     "sheets": [{"name": "One"}],
                     "components": [{"name": "U1", "sheet": 1, "layer": 7}]})",
                ": /components/0/sheet: "},
        }) {
        auto read = ReadText("invalid.json", c.text);
        EXPECT_EQ(read.status, 1) << c.text;
        EXPECT_EQ(read.result, -5) << read.errorText;
        EXPECT_NE(read.errorText.find(c.pointer), std::string::npos) << read.errorText;
        EXPECT_FALSE(read.data);
    }
}

TEST(DesignFile, ProgressRisesFromZeroToHundredAndAThrowingCallbackStopsTheRead) {
    std::vector<int> seen;
    auto read = qzref::ReadDesignFile(Sample("four-layer-board.json"),
                                      [&](unsigned char percent) { seen.push_back(percent); });
    ASSERT_EQ(read.status, 0);
    ASSERT_GE(seen.size(), 3u);
    EXPECT_EQ(seen.front(), 0);
    EXPECT_EQ(seen.back(), 100);
    EXPECT_TRUE(std::is_sorted(seen.begin(), seen.end()));
    EXPECT_EQ(std::adjacent_find(seen.begin(), seen.end()), seen.end());

    seen.clear();
    qzref::ReadDesignFile(Sample("truncated-board.json"),
                          [&](unsigned char percent) { seen.push_back(percent); });
    ASSERT_FALSE(seen.empty());
    EXPECT_LT(seen.back(), 100);

    auto stopped =
        qzref::ReadDesignFile(Sample("four-layer-board.json"), [](unsigned char percent) {
            if (percent > 20) {
                throw std::runtime_error("cancelled by the user");
            }
        });
    EXPECT_EQ(stopped.status, 1);
    EXPECT_EQ(stopped.result, -6);
    EXPECT_NE(stopped.errorText.find("cancelled by the user"), std::string::npos);
    EXPECT_FALSE(stopped.data);
}

TEST(DesignFile, ARequiredKindRefusesAFileOfAnotherKindAtItsKindField) {
    std::string const board = Sample("four-layer-board.json");
    auto refused = qzref::ReadDesignFile(board, {}, "schematic");
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(refused.result, -4);
    EXPECT_FALSE(refused.data);
    EXPECT_EQ(refused.errorText, board + ": /kind: a \"board\" where a \"schematic\" is wanted");

    auto read = qzref::ReadDesignFile(Sample("three-sheet-schematic.json"), {}, "schematic");
    ASSERT_EQ(read.status, 0) << read.errorText;
    EXPECT_TRUE(du::DynamicCast<SchematicData>(read.data));
}

} // namespace
