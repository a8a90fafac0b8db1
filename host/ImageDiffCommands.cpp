#include "ImageDiffCommands.h"

#include "compare/CompareScene.h"
#include "qz2d/ecad/Design.h"
#include "qzk/ecad/BaseScene.h"
#include "qzk/ecad/Overlay.h"
#include "qzref/Inspect.h"
#include "qzref/OverlayInspector.h"

namespace qzhost {

namespace {

// The picture of a difference: a small checker of the cell's colour and white, as an image
// compare marks the pixels that differ.
du::SmartPtr<qz2d::ecad::Design> DifferencePicture(std::string const& name, unsigned int word) {
    unsigned int const side = 4;
    std::vector<unsigned int> pixels(static_cast<std::size_t>(side) * side);
    for (unsigned int y = 0; y < side; ++y) {
        for (unsigned int x = 0; x < side; ++x) {
            pixels[static_cast<std::size_t>(y) * side + x] = (x + y) % 2 == 0 ? word : 0x01FFFFFFu;
        }
    }
    return qz2d::ecad::Design::Create(name, side, side, std::move(pixels), word);
}

bool Id(ScriptRunner::Call const& call, std::size_t word, uint64& out) {
    long long id = 0;
    if (!ToInt(call.words[word].text, 1, 0x7FFFFFFFFFFFFFFFLL, id)) {
        return call.Fail(word, "expected an id from 1, not '" + call.words[word].text + "'");
    }
    out = static_cast<uint64>(id);
    return true;
}

bool GridNumber(ScriptRunner::Call const& call, std::size_t word, int& out) {
    long long number = 0;
    if (!ToInt(call.words[word].text, -2147483648LL, 2147483647LL, number)) {
        return call.Fail(word, "expected a grid number, not '" + call.words[word].text + "'");
    }
    out = static_cast<int>(number);
    return true;
}

bool Colour(ScriptRunner::Call const& call, std::size_t word, dg::Color& out) {
    long long value = 0;
    if (!ToInt(call.words[word].text, 0, 0xFFFFFFFFLL, value)) {
        return call.Fail(word, "expected a colour word such as 0x010000FF, not '" +
                                   call.words[word].text + "'");
    }
    out = dg::Color(static_cast<unsigned int>(value), true);
    return true;
}

bool YesNo(ScriptRunner::Call const& call, std::size_t word, bool& out) {
    std::string const& value = call.words[word].text;
    if (value != "yes" && value != "no") {
        return call.Fail(word, "expected yes or no, not '" + value + "'");
    }
    out = value == "yes";
    return true;
}

// The trailing "hidden" of an add; shown otherwise.
bool Shown(ScriptRunner::Call const& call, std::size_t word, bool& out) {
    out = true;
    if (call.words.size() <= word) {
        return true;
    }
    if (call.words[word].text != "hidden") {
        return call.Fail(word, "expected hidden or nothing, not '" + call.words[word].text + "'");
    }
    out = false;
    return true;
}

} // namespace

ImageDiffCommands::ImageDiffCommands(qzkapp::ecad::CompareScene& api, qzk::ecad::BaseScene& scene)
    : api_(api), scene_(scene) {}

bool ImageDiffCommands::Cell(ScriptRunner::Call const& call) const {
    char const* const usage =
        "add ID WORD NAME [hidden], color ID WORD, visible ID yes|no or remove ID";
    if (!call.Count(2, 5, usage)) {
        return false;
    }
    std::string const& verb = call.words[1].text;
    uint64 id = 0;
    if (verb == "add") {
        dg::Color color;
        bool visible = true;
        if (!call.Count(4, 5, "cell add ID WORD NAME [hidden]") || !Id(call, 2, id) ||
            !Colour(call, 3, color) || !Shown(call, 5, visible)) {
            return false;
        }
        std::string const& name = call.words[4].text;
        api_.AddImageDiffCellOrGrid(id, DifferencePicture(name, color.GetAsHexUI()), color, name, 0,
                                    false, 0, visible);
        return true;
    }
    if (verb == "color" || verb == "colour") {
        dg::Color color;
        if (!call.Count(3, 3, "cell color ID WORD") || !Id(call, 2, id) ||
            !Colour(call, 3, color)) {
            return false;
        }
        api_.SetCellColor(id, color);
        return true;
    }
    if (verb == "visible") {
        bool visible = true;
        if (!call.Count(3, 3, "cell visible ID yes|no") || !Id(call, 2, id) ||
            !YesNo(call, 3, visible)) {
            return false;
        }
        api_.SetImageDiffCellVisibility(id, visible);
        return true;
    }
    if (verb == "remove") {
        if (!call.Count(2, 2, "cell remove ID") || !Id(call, 2, id)) {
            return false;
        }
        api_.RemoveImageCell(id);
        return true;
    }
    return call.Fail(1, std::string("expected ") + usage + ", not '" + verb + "'");
}

bool ImageDiffCommands::Grid(ScriptRunner::Call const& call) const {
    char const* const usage = "add NUMBER ID WORD NAME [hidden], show NUMBER yes|no, hide-all, "
                              "remove-all, color WORD or toggle-state";
    if (!call.Count(1, 6, usage)) {
        return false;
    }
    std::string const& verb = call.words[1].text;
    int number = 0;
    if (verb == "add") {
        uint64 id = 0;
        dg::Color color;
        bool visible = true;
        if (!call.Count(5, 6, "grid add NUMBER ID WORD NAME [hidden]") ||
            !GridNumber(call, 2, number) || !Id(call, 3, id) || !Colour(call, 4, color) ||
            !Shown(call, 6, visible)) {
            return false;
        }
        std::string const& name = call.words[5].text;
        api_.AddImageDiffCellOrGrid(id, DifferencePicture(name, color.GetAsHexUI()), color, name, 0,
                                    true, number, visible);
        return true;
    }
    if (verb == "show") {
        bool visible = true;
        if (!call.Count(3, 3, "grid show NUMBER yes|no") || !GridNumber(call, 2, number) ||
            !YesNo(call, 3, visible)) {
            return false;
        }
        api_.ToggleImageGrid(number, visible);
        return true;
    }
    if (verb == "color" || verb == "colour") {
        dg::Color color;
        if (!call.Count(2, 2, "grid color WORD") || !Colour(call, 2, color)) {
            return false;
        }
        api_.SetImageGridColor(color);
        return true;
    }
    if (verb == "hide-all" || verb == "remove-all" || verb == "toggle-state") {
        if (!call.Count(1, 1, "no words after it")) {
            return false;
        }
        if (verb == "hide-all") {
            api_.HideImageGrids();
        } else if (verb == "remove-all") {
            api_.RemoveImageGrids();
        } else {
            api_.ToggleGridVisibilityState();
        }
        return true;
    }
    return call.Fail(1, std::string("expected ") + usage + ", not '" + verb + "'");
}

std::optional<std::string> ImageDiffCommands::Query(std::vector<std::string> const& words,
                                                    std::string& error) const {
    std::string const name = words.empty() ? std::string() : words[0];
    if (name == "cells" && words.size() == 1) {
        std::string out;
        for (auto const& overlay : qzref::Inspect(scene_).GetOverlays()) {
            auto const seen = qzref::Inspect(*overlay);
            if (overlay->overlayKind != 1 || !seen.GetPicture()) {
                continue;
            }
            out += (out.empty() ? "" : ", ") + std::to_string(overlay->GetId()) + " " +
                   seen.GetName() + " " + Hex(seen.GetColorWord()) +
                   (seen.IsVisible() ? " visible" : " hidden") +
                   (overlay->kindOneFlag ? " grid" : "");
        }
        return out.empty() ? "none" : out;
    }
    if (name == "grid" && words.size() == 2) {
        long long number = 0;
        if (!ToInt(words[1], -2147483648LL, 2147483647LL, number)) {
            error = "a grid number after grid";
            return std::nullopt;
        }
        return std::string(api_.IsGridExist(static_cast<int>(number)) ? "yes" : "no");
    }
    if (name == "grid-color" && words.size() == 1) {
        return Hex(api_.GetImageGridColor().GetAsHexUI());
    }
    if (name == "grid-state" && words.size() == 1) {
        return std::string(api_.GetGridVisibilityState() ? "on" : "off");
    }
    return std::nullopt;
}

} // namespace qzhost
