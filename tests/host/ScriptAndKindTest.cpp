// The host's script reader and its choice of scene kind.
#include "SceneKind.h"
#include "ScriptLine.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>

namespace {

using qzhost::SceneKind;
using qzhost::ScriptLine;

std::vector<std::pair<std::string, int>> Words(std::string const& text) {
    int column = 0;
    auto const line = ScriptLine::Parse(text, column);
    EXPECT_TRUE(line.has_value()) << text;
    std::vector<std::pair<std::string, int>> out;
    if (line) {
        for (auto const& word : line->words) {
            out.emplace_back(word.text, word.column);
        }
    }
    return out;
}

TEST(ScriptLine, WordsQuotesCommentsAndColumns) {
    using W = std::vector<std::pair<std::string, int>>;
    EXPECT_EQ(Words("  highlight U1\t R1"), (W{{"highlight", 3}, {"U1", 13}, {"R1", 17}}));
    EXPECT_EQ(Words("highlight \"SENSE trace\" U1"),
              (W{{"highlight", 1}, {"SENSE trace", 11}, {"U1", 25}}));
    EXPECT_EQ(Words("x \"a \\\"b\\\" \\\\\""), (W{{"x", 1}, {"a \"b\" \\", 3}}));
    EXPECT_EQ(Words("flip # turn it over"), (W{{"flip", 1}}));
    EXPECT_EQ(Words("flip#no blank"), (W{{"flip", 1}}));
    EXPECT_EQ(Words("\"# kept\" x"), (W{{"# kept", 1}, {"x", 10}}));
    EXPECT_EQ(Words("\"\""), (W{{"", 1}}));
    EXPECT_TRUE(Words("   # only a comment\r").empty());
    EXPECT_TRUE(Words("").empty());

    int column = 0;
    EXPECT_FALSE(ScriptLine::Parse("highlight \"U1 R1", column).has_value());
    EXPECT_EQ(column, 11);
    EXPECT_FALSE(ScriptLine::Parse("x \"a\\\"", column).has_value());
    EXPECT_EQ(column, 3);
}

TEST(SceneKind, FromTheDesignsAndARequestedKind) {
    std::string error;
    EXPECT_EQ(SceneKind::Choose("board", "", std::nullopt, error), 74u);
    EXPECT_EQ(SceneKind::Choose("schematic", "", std::nullopt, error), 73u);
    EXPECT_EQ(SceneKind::Choose("schematic", "", 77u, error), 77u);
    EXPECT_EQ(SceneKind::Choose("board", "board", std::nullopt, error), 159u);
    EXPECT_EQ(SceneKind::Choose("board", "overlay", std::nullopt, error), 159u);
    EXPECT_EQ(SceneKind::Choose("schematic", "schematic", std::nullopt, error), 161u);
    EXPECT_EQ(SceneKind::Choose("schematic", "board", std::nullopt, error), 171u);

    error.clear();
    EXPECT_FALSE(SceneKind::Choose("schematic", "", 74u, error).has_value());
    EXPECT_NE(error.find("scene kind 74 (board scene) does not fit a schematic design"),
              std::string::npos)
        << error;
    error.clear();
    EXPECT_FALSE(SceneKind::Choose("board", "", 159u, error).has_value());
    EXPECT_NE(error.find("does not fit a board design; it takes kind 74"), std::string::npos)
        << error;
    error.clear();
    EXPECT_FALSE(SceneKind::Choose("images", "", std::nullopt, error).has_value());
    EXPECT_EQ(error, "no scene kind shows an images design");
    error.clear();
    EXPECT_FALSE(SceneKind::Choose("overlay", "schematic", std::nullopt, error).has_value());
    EXPECT_FALSE(error.empty());
    // A film goes over a board, on either side, but never over another film.
    EXPECT_EQ(SceneKind::Choose("overlay", "board", std::nullopt, error), 159u);
    error.clear();
    EXPECT_FALSE(SceneKind::Choose("overlay", "overlay", std::nullopt, error).has_value());
    EXPECT_EQ(error, "no scene kind shows an overlay and an overlay design");
}

TEST(SceneKind, ReadsTheKindOrSaysWhyNot) {
    std::string error;
    EXPECT_EQ(SceneKind::ReadDesignKind(QZ_EXAMPLES_DIR "/designs/four-layer-board.json", error),
              "board");
    EXPECT_EQ(
        SceneKind::ReadDesignKind(QZ_EXAMPLES_DIR "/designs/three-sheet-schematic.json", error),
        "schematic");
    EXPECT_FALSE(SceneKind::ReadDesignKind("/nonexistent/x.json", error).has_value());
    EXPECT_EQ(error, "/nonexistent/x.json: cannot open the design file");
    // A film is told by its name, whatever it holds and whether it is there or not: the loader
    // reads it, and the scene reports a film it cannot read.
    EXPECT_EQ(SceneKind::ReadDesignKind("/nonexistent/TOP.GTL", error), "overlay");

    std::string const path = testing::TempDir() + "qzhost-kind-" +
                             testing::UnitTest::GetInstance()->current_test_info()->name() +
                             ".json";
    for (auto const& [text, why] :
         std::vector<std::pair<std::string, std::string>>{{"[1, 2]", "not a JSON object"},
                                                          {"{\"kind\": 3}", "no \"kind\""},
                                                          {"{", "not a JSON"}}) {
        std::ofstream(path) << text;
        error.clear();
        EXPECT_FALSE(SceneKind::ReadDesignKind(path, error).has_value()) << text;
        EXPECT_NE(error.find(why), std::string::npos) << error;
    }
    std::remove(path.c_str());
}

} // namespace
