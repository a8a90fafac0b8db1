#include "SchematicSession.h"

#include "qzk/Operation.h"
#include "qzk/ecad/BaseView.h"
#include "qzk/ecad/SchematicData.h"
#include "qzk/ecad/SchematicScene.h"
#include "qzk/ecad/SchematicView.h"
#include "qzref/Renderer.h"
#include "schematic/SchematicScene.h"

namespace qzhost {

namespace {

std::string Narrow(wchar_t const* text) {
    std::string out;
    for (; text != nullptr && *text != 0; ++text) {
        out += *text < 0x80 ? static_cast<char>(*text) : '?';
    }
    return out;
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
    : ScriptRunner(out), api_(api), scene_(std::move(scene)), view_(std::move(view)),
      sheets_(
          api_, du::SmartPtr<qzk::ecad::BaseView>(view_), [this] { return SheetCount(); },
          [this](unsigned int sheet) { return SheetName(sheet); }) {}

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

bool SchematicSession::Sheet(Call const& call) {
    return sheets_.Sheet(call);
}

bool SchematicSession::Pan(Call const& call) {
    return sheets_.Pan(call);
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
    std::vector<std::string> names = SheetCommands::QueryNames();
    names.emplace_back("sublayer");
    return names;
}

std::optional<std::string> SchematicSession::Query(std::vector<std::string> const& words,
                                                   std::string& error) const {
    std::string const name = words.empty() ? std::string() : words[0];
    if (auto sheet = sheets_.Query(words)) {
        return sheet;
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
    return qzref::Renderer::RenderSheet(*scene_, sheets_.ShownSheet(), qzref::Renderer::View(),
                                        path, why);
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
