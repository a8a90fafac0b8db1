#include "SchematicCompareSession.h"

#include "compare/SchematicCompareScene.h"
#include "qzk/Operation.h"
#include "qzk/ecad/BaseView.h"
#include "qzk/ecad/SchematicCompareScene.h"
#include "qzk/ecad/SchematicCompareView.h"
#include "qzk/ecad/SchematicData.h"
#include "qzref/Renderer.h"
#include "qzref/UndoControl.h"

namespace qzhost {

namespace {

std::string Narrow(std::wstring const& text) {
    std::string out;
    for (wchar_t const c : text) {
        out += c < 0x80 ? static_cast<char>(c) : '?';
    }
    return out;
}

std::string Look(qzk::ecad::CompareColorVis const& record) {
    return "first " + Hex(record.firstColor) + " second " + Hex(record.secondColor) + " common " +
           Hex(record.commonColor) + " mode " +
           std::to_string(static_cast<unsigned>(record.showMode)) + (record.flag ? " flag" : "") +
           (record.visible ? " visible" : " hidden");
}

} // namespace

SchematicCompareSession::Entry<SchematicCompareSession> const SchematicCompareSession::kCommands[] =
    {
        {"sheet", &SchematicCompareSession::Sheet}, {"pan", &SchematicCompareSession::Pan},
        {"row", &SchematicCompareSession::Row},     {"cell", &SchematicCompareSession::Cell},
        {"grid", &SchematicCompareSession::Grid},
};

SchematicCompareSession::SchematicCompareSession(
    qzkapp::ecad::SchematicCompareScene& api, du::SmartPtr<qzk::ecad::SchematicCompareScene> scene,
    du::SmartPtr<qzk::ecad::SchematicCompareView> view, std::FILE* out)
    : ScriptRunner(out), api_(api), scene_(std::move(scene)), view_(std::move(view)),
      sheets_(
          api_, du::SmartPtr<qzk::ecad::BaseView>(view_), [this] { return api_.GetNumSheets(); },
          [this](unsigned int sheet) { return SheetName(sheet); }),
      images_(api_, *scene_) {}

std::vector<std::string> SchematicCompareSession::CommandNames() {
    return NamesOf(kCommands);
}

bool SchematicCompareSession::RunSceneCommand(Call const& call, bool& found) {
    return Dispatch(*this, kCommands, call, found);
}

std::string SchematicCompareSession::SheetName(unsigned int sheet) const {
    for (auto const* data : {api_.GetFirstDesignData().Get(), api_.GetSecondDesignData().Get()}) {
        auto const* schematic = dynamic_cast<qzk::ecad::SchematicData const*>(data);
        if (schematic != nullptr && sheet < schematic->GetNumSheets()) {
            return schematic->GetSheetName(sheet);
        }
    }
    return std::string();
}

std::string SchematicCompareSession::Presence(short handle) const {
    bool const first = !api_.GetSublayerLabel(handle, false).empty();
    bool const second = !api_.GetSublayerLabel(handle, true).empty();
    return first && second ? "both" : first ? "first only" : "second only";
}

bool SchematicCompareSession::Sheet(Call const& call) {
    return sheets_.Sheet(call);
}

bool SchematicCompareSession::Pan(Call const& call) {
    return sheets_.Pan(call);
}

bool SchematicCompareSession::Cell(Call const& call) {
    return images_.Cell(call);
}

bool SchematicCompareSession::Grid(Call const& call) {
    return images_.Grid(call);
}

bool SchematicCompareSession::Row(Call const& call) {
    char const* const usage = "HANDLE first|second|common WORD, or HANDLE visible yes|no";
    if (!call.Count(3, 3, usage)) {
        return false;
    }
    long long handle = 0;
    if (!ToInt(call.words[1].text, -32768, 32767, handle)) {
        return call.Fail(1, "expected a sublayer handle, not '" + call.words[1].text + "'");
    }
    qzkapp::ecad::SchematicCompareScene::CompareMap records;
    api_.GetSublayerColorVisInfo(records);
    auto const found = records.find(static_cast<short>(handle));
    if (found == records.end() || !found->second) {
        return call.Fail(1, "no record " + call.words[1].text + " (see print rows)");
    }
    // The scene shares its records with whoever fetched them: the change goes into a copy, so
    // that the undo step keeps the record as it was.
    du::SmartPtr<qzk::ecad::CompareColorVis> const changed = found->second->Clone();
    std::string const& what = call.words[2].text;
    std::string const& value = call.words[3].text;
    if (what == "visible") {
        if (value != "yes" && value != "no") {
            return call.Fail(3, "expected yes or no, not '" + value + "'");
        }
        changed->visible = value == "yes";
    } else if (what == "first" || what == "second" || what == "common") {
        long long word = 0;
        if (!ToInt(value, 0, 0xFFFFFFFFLL, word)) {
            return call.Fail(3, "expected a colour word such as 0x010000FF, not '" + value + "'");
        }
        unsigned int& color = what == "first"    ? changed->firstColor
                              : what == "second" ? changed->secondColor
                                                 : changed->commonColor;
        color = static_cast<unsigned int>(word);
    } else {
        return call.Fail(2, "expected first, second, common or visible, not '" + what + "'");
    }
    found->second = changed;
    auto const op =
        du::MakeCounted<qzk::Operation>("Compare record", du::SmartPtr<qzk::Scene>(scene_), false);
    api_.SetSublayerColorVisInfo(records, op, qzkapp::ecad::ChangeSourceScene);
    qzk::RecordOperation(op);
    return true;
}

std::vector<std::string> SchematicCompareSession::QueryNames() {
    std::vector<std::string> names = SheetCommands::QueryNames();
    for (std::string const& name : ImageDiffCommands::QueryNames()) {
        names.push_back(name);
    }
    for (char const* name :
         {"row-count", "row", "label", "designs", "draw-order", "undo", "redo"}) {
        names.emplace_back(name);
    }
    return names;
}

std::optional<std::string> SchematicCompareSession::Query(std::vector<std::string> const& words,
                                                          std::string& error) const {
    if (auto sheet = sheets_.Query(words)) {
        return sheet;
    }
    if (auto image = images_.Query(words, error)) {
        return image;
    }
    if (!error.empty()) {
        return std::nullopt;
    }
    std::string const name = words.empty() ? std::string() : words[0];
    qzkapp::ecad::SchematicCompareScene::CompareMap records;
    api_.GetSublayerColorVisInfo(records);
    if (name == "row-count" && words.size() == 1) {
        std::size_t counts[3] = {};
        for (auto const& [handle, record] : records) {
            std::string const presence = Presence(handle);
            counts[presence == "both" ? 0 : presence == "first only" ? 1 : 2] += 1;
        }
        return std::to_string(records.size()) + " (" + std::to_string(counts[0]) + " both, " +
               std::to_string(counts[1]) + " first only, " + std::to_string(counts[2]) +
               " second only)";
    }
    long long handle = 0;
    bool const hasHandle = words.size() == 2 && ToInt(words[1], -32768, 32767, handle);
    if (name == "row" && hasHandle) {
        auto const found = records.find(static_cast<short>(handle));
        return found == records.end() || !found->second ? std::string("none")
                                                        : Look(*found->second);
    }
    if (name == "label" && hasHandle) {
        std::string const first = Narrow(api_.GetSublayerLabel(static_cast<short>(handle), false));
        std::string const second = Narrow(api_.GetSublayerLabel(static_cast<short>(handle), true));
        return "first " + (first.empty() ? std::string("none") : first) + ", second " +
               (second.empty() ? std::string("none") : second);
    }
    if (name == "designs" && words.size() == 1) {
        return std::string(api_.GetFirstDesignData() ? "first" : "no first") +
               (api_.GetSecondDesignData() ? ", second" : ", no second");
    }
    if (name == "draw-order" && words.size() == 1) {
        std::vector<short> order;
        api_.GetDrawOrder(order);
        std::string out;
        for (short const layer : order) {
            out += (out.empty() ? "" : " ") + std::to_string(layer);
        }
        return out.empty() ? "none" : out;
    }
    if (name == "undo" && words.size() == 1) {
        return std::to_string(qzref::UndoControl::GetUndoCount());
    }
    if (name == "redo" && words.size() == 1) {
        return std::to_string(qzref::UndoControl::GetRedoCount());
    }
    error = "one of: sheets, sheet, view, row-count, row HANDLE, label HANDLE, designs, "
            "draw-order, undo, redo, cells, grid NUMBER, grid-color, grid-state";
    return std::nullopt;
}

bool SchematicCompareSession::RenderTo(std::string const& path, std::string& why) const {
    return qzref::Renderer::RenderCompareSheet(*scene_, sheets_.ShownSheet(),
                                               qzref::Renderer::View(), path, why);
}

std::string SchematicCompareSession::Rows() const {
    qzkapp::ecad::SchematicCompareScene::CompareMap records;
    api_.GetSublayerColorVisInfo(records);
    std::string out;
    for (auto const& [handle, record] : records) {
        if (!record) {
            continue;
        }
        std::string first = Narrow(api_.GetSublayerLabel(handle, false));
        std::string second = Narrow(api_.GetSublayerLabel(handle, true));
        std::string const names =
            (first.empty() ? "-" : first) + " | " + (second.empty() ? "-" : second);
        char line[240];
        std::snprintf(line, sizeof line, "%6d  %-28s %-12s %s\n", handle, names.c_str(),
                      Presence(handle).c_str(), Look(*record).c_str());
        out += line;
    }
    return out;
}

} // namespace qzhost
