#include "SchematicSession.h"

#include "dg/Location.h"
#include "qzk/Operation.h"
#include "qzk/ecad/BaseView.h"
#include "qzk/ecad/SchematicData.h"
#include "qzk/ecad/SchematicScene.h"
#include "qzk/ecad/SchematicView.h"
#include "qzref/Inspect.h"
#include "qzref/Renderer.h"
#include "schematic/SchematicScene.h"

#include <sstream>

namespace qzhost {

namespace {

std::string Narrow(wchar_t const* text) {
    std::string out;
    for (; text != nullptr && *text != 0; ++text) {
        out += *text < 0x80 ? static_cast<char>(*text) : '?';
    }
    return out;
}

std::string Number(double value) {
    std::ostringstream out;
    out << value;
    return out.str();
}

} // namespace

SchematicSession::Entry<SchematicSession> const SchematicSession::kCommands[] = {
    {"sheet", &SchematicSession::Sheet},
    {"pan", &SchematicSession::Pan},
    {"sublayer", &SchematicSession::Sublayer},
};

SchematicSession::SchematicSession(qzkapp::ecad::SchematicScene& api,
                                   du::SmartPtr<qzk::ecad::SchematicScene> scene,
                                   du::SmartPtr<qzk::ecad::SchematicView> view, std::FILE* out)
    : ScriptRunner(out), api_(api), scene_(std::move(scene)), view_(std::move(view)) {}

std::vector<std::string> SchematicSession::CommandNames() {
    return NamesOf(kCommands);
}

bool SchematicSession::RunSceneCommand(Call const& call, bool& found) {
    return Dispatch(*this, kCommands, call, found);
}

unsigned int SchematicSession::SheetCount() const {
    auto const* data = dynamic_cast<qzk::ecad::SchematicData const*>(api_.GetDesignData().Get());
    return data != nullptr ? data->GetNumSheets() : 0;
}

std::string SchematicSession::SheetName(unsigned int sheet) const {
    auto const* data = dynamic_cast<qzk::ecad::SchematicData const*>(api_.GetDesignData().Get());
    return data != nullptr ? data->GetSheetName(sheet) : std::string();
}

bool SchematicSession::SheetNumber(Call const& call, std::size_t word, short& out) const {
    long long sheet = 0;
    if (!ToInt(call.words[word].text, 0, 32767, sheet)) {
        return call.Fail(word,
                         "expected a sheet number from 0, not '" + call.words[word].text + "'");
    }
    if (static_cast<unsigned long long>(sheet) >= SheetCount()) {
        return call.Fail(word, "no sheet " + call.words[word].text + "; the design has " +
                                   std::to_string(SheetCount()));
    }
    out = static_cast<short>(sheet);
    return true;
}

bool SchematicSession::Sheet(Call const& call) {
    char const* const usage = "go SHEET, preview SHEET or preview end";
    if (!call.Count(2, 2, usage)) {
        return false;
    }
    std::string const& verb = call.words[1].text;
    du::SmartPtr<qzk::ecad::BaseView> const view(view_);
    if (verb == "go") {
        short sheet = 0;
        if (!SheetNumber(call, 2, sheet)) {
            return false;
        }
        api_.PageNav(sheet, view);
        return true;
    }
    if (verb == "preview") {
        short sheet = -1;
        if (call.words[2].text != "end" && !SheetNumber(call, 2, sheet)) {
            return false;
        }
        // A negative sheet ends the preview.
        api_.PreviewPageNav(sheet, view);
        return true;
    }
    return call.Fail(1, std::string("expected ") + usage + ", not '" + verb + "'");
}

bool SchematicSession::Pan(Call const& call) {
    if (!call.Count(3, 3, "X Y WIDTH (millimetres)")) {
        return false;
    }
    double values[3] = {};
    for (std::size_t i = 1; i <= 3; ++i) {
        try {
            std::size_t used = 0;
            values[i - 1] = std::stod(call.words[i].text, &used);
            if (used != call.words[i].text.size()) {
                throw std::invalid_argument("trailing");
            }
        } catch (std::exception const&) {
            return call.Fail(i, "expected a number, not '" + call.words[i].text + "'");
        }
    }
    if (!(values[2] > 0.0)) {
        return call.Fail(3, "expected a width above 0, not '" + call.words[3].text + "'");
    }
    // What the user's pan and zoom does to the view; the layer reads it back when the sheet
    // changes.
    view_->StoreLocation(dg::Location(dg::DPoint2D(values[0], values[1]), values[2]));
    view_->SetOrthoWidth(values[2]);
    return true;
}

bool SchematicSession::Sublayer(Call const& call) {
    char const* const usage = "LAYER color WORD, or LAYER visible yes|no";
    if (!call.Count(3, 3, usage)) {
        return false;
    }
    long long layer = 0;
    if (!ToInt(call.words[1].text, -32768, 32767, layer)) {
        return call.Fail(1, "expected a layer handle, not '" + call.words[1].text + "'");
    }
    qzkapp::ecad::SchSceneHelper::SublayerMap map;
    api_.GetSublayerColorVisInfo(map);
    auto const found = map.find(static_cast<short>(layer));
    if (found == map.end()) {
        return call.Fail(1, "no layer " + call.words[1].text + " in this schematic");
    }
    std::string const& what = call.words[2].text;
    std::string const& value = call.words[3].text;
    if (what == "color" || what == "colour") {
        long long word = 0;
        if (!ToInt(value, 0, 0xFFFFFFFFLL, word)) {
            return call.Fail(3, "expected a colour word such as 0x010000FF, not '" + value + "'");
        }
        found->second.color = static_cast<unsigned int>(word);
    } else if (what == "visible") {
        if (value != "yes" && value != "no") {
            return call.Fail(3, "expected yes or no, not '" + value + "'");
        }
        found->second.visible = value == "yes";
    } else {
        return call.Fail(2, "expected color or visible, not '" + what + "'");
    }
    auto const op =
        du::MakeCounted<qzk::Operation>("Sublayer colour", du::SmartPtr<qzk::Scene>(scene_), false);
    api_.SetSublayerColorVisInfo(map, op, qzkapp::ecad::ChangeSourceScene);
    qzk::RecordOperation(op);
    return true;
}

std::vector<std::string> SchematicSession::QueryNames() {
    return {"sheets", "sheet", "view", "sublayer"};
}

std::optional<std::string> SchematicSession::Query(std::vector<std::string> const& words,
                                                   std::string& error) const {
    std::string const name = words.empty() ? std::string() : words[0];
    if (name == "sheets" && words.size() == 1) {
        std::string out;
        for (unsigned int sheet = 0; sheet < SheetCount(); ++sheet) {
            out += (out.empty() ? "" : ", ") + std::to_string(sheet) + " " + SheetName(sheet);
        }
        return out.empty() ? "none" : out;
    }
    if (name == "sheet" && words.size() == 1) {
        unsigned int const sheet = qzref::Inspect(*view_).GetPage();
        return std::to_string(sheet) + " " + SheetName(sheet);
    }
    if (name == "view" && words.size() == 1) {
        dg::Location const location = qzref::Inspect(*view_).GetLocation();
        double width = 0.0;
        view_->GetOrthoWidth(width);
        return "sheet " + std::to_string(qzref::Inspect(*view_).GetPage()) + " centre " +
               Number(location.center.x) + " " + Number(location.center.y) + " width " +
               Number(width);
    }
    if (name == "sublayer" && words.size() == 2) {
        long long layer = 0;
        qzkapp::ecad::SchSceneHelper::SublayerMap map;
        api_.GetSublayerColorVisInfo(map);
        auto const found =
            ToInt(words[1], -32768, 32767, layer) ? map.find(static_cast<short>(layer)) : map.end();
        if (found == map.end()) {
            error = "a layer handle of this schematic after sublayer";
            return std::nullopt;
        }
        return Hex(found->second.color) + (found->second.visible ? " visible" : " hidden");
    }
    error = "one of: sheets, sheet, view, sublayer LAYER";
    return std::nullopt;
}

bool SchematicSession::RenderTo(std::string const& path, std::string& why) const {
    return qzref::Renderer::RenderSheet(*scene_, qzref::Inspect(*view_).GetPage(),
                                        qzref::Renderer::View(), path, why);
}

std::string SchematicSession::Rows() const {
    qzkapp::ecad::SchSceneHelper::SublayerMap map;
    api_.GetSublayerColorVisInfo(map);
    std::string out;
    for (auto const& [layer, info] : map) {
        char line[160];
        std::snprintf(line, sizeof line, "%6d  %-14s %s %s\n", layer,
                      Narrow(api_.GetLayerName(layer)).c_str(), Hex(info.color).c_str(),
                      info.visible ? "visible" : "hidden");
        out += line;
    }
    return out;
}

} // namespace qzhost
