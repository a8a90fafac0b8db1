#include "SceneKind.h"

#include "qzk/EcadDesign.h"

#include <nlohmann/json.hpp>

#include <fstream>

namespace qzhost {

namespace {

std::string WithArticle(std::string const& word) {
    bool const vowel = !word.empty() && std::string("aeiou").find(word[0]) != std::string::npos;
    return (vowel ? "an " : "a ") + word;
}

bool IsBoardLike(std::string const& kind) {
    return kind == "board" || kind == "overlay";
}

// The kind the designs call for by themselves; 0 when no scene shows them.
unsigned int Natural(std::string const& first, std::string const& second) {
    if (second.empty()) {
        if (first == "board") {
            return SceneKind::kBoard;
        }
        if (first == "schematic") {
            return SceneKind::kSchematic;
        }
        return 0;
    }
    // An overlay is compared with a board only, never with another overlay.
    if (IsBoardLike(first) && IsBoardLike(second) && (first == "board" || second == "board")) {
        return SceneKind::kBoardCompare;
    }
    if (first == "schematic" && second == "schematic") {
        return SceneKind::kSchematicCompare;
    }
    if ((first == "board" && second == "schematic") ||
        (first == "schematic" && second == "board")) {
        return SceneKind::kBoardSchematicCompare;
    }
    return 0;
}

} // namespace

std::optional<std::string> SceneKind::ReadDesignKind(std::string const& path, std::string& error) {
    // A Gerber film is told by its name: the kernel's loader reads it, and a film that cannot be
    // read is reported by the scene, with the board shown alone.
    if (qzk::EcadDesign::HasGerberExtension(path)) {
        return std::string("overlay");
    }
    std::ifstream in(path);
    if (!in) {
        error = path + ": cannot open the design file";
        return std::nullopt;
    }
    nlohmann::json document = nlohmann::json::parse(in, nullptr, false);
    if (document.is_discarded() || !document.is_object()) {
        error = path + ": not a design file (not a JSON object)";
        return std::nullopt;
    }
    auto const kind = document.find("kind");
    if (kind == document.end() || !kind->is_string()) {
        error = path + ": not a design file (no \"kind\")";
        return std::nullopt;
    }
    return kind->get<std::string>();
}

std::optional<unsigned int> SceneKind::Choose(std::string const& first, std::string const& second,
                                              std::optional<unsigned int> requested,
                                              std::string& error) {
    unsigned int const natural = Natural(first, second);
    std::string const what = second.empty()
                                 ? WithArticle(first) + " design"
                                 : WithArticle(first) + " and " + WithArticle(second) + " design";
    if (natural == 0) {
        error = "no scene kind shows " + what;
        return std::nullopt;
    }
    if (!requested) {
        return natural;
    }
    bool const fits =
        *requested == natural || (natural == kSchematic && *requested == kSchematicAlias);
    if (!fits) {
        error = "scene kind " + std::to_string(*requested) + " (" + Describe(*requested) +
                ") does not fit " + what + "; it takes kind " + std::to_string(natural) + " (" +
                Describe(natural) + ")";
        return std::nullopt;
    }
    return requested;
}

std::string SceneKind::Describe(unsigned int kind) {
    switch (kind) {
    case kSchematic:
    case kSchematicAlias:
        return "schematic scene";
    case kBoard:
        return "board scene";
    case kBoardCompare:
        return "board compare scene";
    case kSchematicCompare:
        return "schematic compare scene";
    case kBoardSchematicCompare:
        return "board-schematic compare scene";
    default:
        return "unknown scene kind";
    }
}

} // namespace qzhost
