// Which scene kind a host asks the layer's factory for, from the kinds of the designs it opens.
#pragma once

#include <optional>
#include <string>

namespace qzhost {

class SceneKind {
public:
    static unsigned int const kSchematic = 73;
    static unsigned int const kSchematicAlias = 77;
    static unsigned int const kBoard = 74;
    static unsigned int const kBoardCompare = 159;
    static unsigned int const kSchematicCompare = 161;
    static unsigned int const kBoardSchematicCompare = 171;

    // The design's "kind" field ("board", "schematic", "overlay", "images"); nothing when the
    // file cannot be read as a JSON object with a kind, with why in error. A path with a Gerber
    // extension is an "overlay" without being opened.
    static std::optional<std::string> ReadDesignKind(std::string const& path, std::string& error);

    // The scene kind for one design (second empty) or a comparison of two. requested, when
    // given, must fit the designs; otherwise the error says why and nothing is returned.
    static std::optional<unsigned int> Choose(std::string const& first, std::string const& second,
                                              std::optional<unsigned int> requested,
                                              std::string& error);

    static std::string Describe(unsigned int kind);
};

} // namespace qzhost
