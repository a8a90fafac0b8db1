#include "CompareSession.h"

#include "compare/PCBCompareScene.h"
#include "qzk/Operation.h"
#include "qzk/ecad/CompareColorVisPtrVec.h"
#include "qzk/ecad/GroupCVInfoSet.h"
#include "qzk/ecad/PCBCompareScene.h"
#include "qzk/ecad/SublayerPCBCompare.h"
#include "qzref/Renderer.h"
#include "qzref/UndoControl.h"

namespace qzhost {

namespace {

std::string Side(bool has, qzk::ecad::SublayerPCBBase const& key) {
    return has ? std::to_string(key.layer) + "," + std::to_string(key.sublayer) : "-";
}

std::string Keys(qzk::ecad::CompareColorVis const& row) {
    auto const* pair = dynamic_cast<qzk::ecad::SublayerPCBCompare const*>(&row);
    if (pair == nullptr) {
        return "?";
    }
    return Side(pair->HasFirst(), pair->firstSublayer) + "|" +
           Side(pair->HasSecond(), pair->secondSublayer);
}

std::string Look(qzk::ecad::CompareColorVis const& row) {
    return "first " + Hex(row.firstColor) + " second " + Hex(row.secondColor) + " common " +
           Hex(row.commonColor) + " mode " + std::to_string(static_cast<unsigned>(row.showMode)) +
           (row.flag ? " flag" : "") + (row.visible ? " visible" : " hidden");
}

} // namespace

CompareSession::Entry<CompareSession> const CompareSession::kCommands[] = {
    {"scheme", &CompareSession::Scheme},
    {"row", &CompareSession::Row},
};

CompareSession::CompareSession(qzkapp::ecad::PCBCompareScene& api,
                               du::SmartPtr<qzk::ecad::PCBCompareScene> scene, std::FILE* out)
    : ScriptRunner(out), api_(api), scene_(std::move(scene)) {}

std::vector<std::string> CompareSession::CommandNames() {
    return NamesOf(kCommands);
}

bool CompareSession::RunSceneCommand(Call const& call, bool& found) {
    return Dispatch(*this, kCommands, call, found);
}

std::optional<std::size_t> CompareSession::FindRow(qzk::ecad::CompareColorVisPtrVec const& rows,
                                                   std::string const& keys) {
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (rows[i] && Keys(*rows[i]) == keys) {
            return i;
        }
    }
    return std::nullopt;
}

bool CompareSession::Scheme(Call const& call) {
    char const* const usage = "red-blue-dim or red-blue-green";
    if (!call.Count(1, 1, usage)) {
        return false;
    }
    std::string const& name = call.words[1].text;
    auto const op =
        du::MakeCounted<qzk::Operation>("Compare colours", du::SmartPtr<qzk::Scene>(scene_), false);
    if (name == "red-blue-dim") {
        api_.UseRedBlueDimDefault(op, qzkapp::ecad::ChangeSourceScene);
    } else if (name == "red-blue-green") {
        api_.UseRedBlueGreenDefault(op, qzkapp::ecad::ChangeSourceScene);
    } else {
        return call.Fail(1, std::string("expected ") + usage + ", not '" + name + "'");
    }
    qzk::RecordOperation(op);
    return true;
}

bool CompareSession::Row(Call const& call) {
    char const* const usage =
        "KEYS first|second|common WORD, KEYS visible yes|no, or KEYS mode 0..6";
    if (!call.Count(3, 3, usage)) {
        return false;
    }
    qzk::ecad::CompareColorVisPtrVec rows;
    api_.GetColorVisInfo(rows);
    auto const index = FindRow(rows, call.words[1].text);
    if (!index) {
        return call.Fail(1, "no row " + call.words[1].text + " (see print rows)");
    }
    qzk::ecad::CompareColorVis& row = *rows[*index];
    std::string const& what = call.words[2].text;
    std::string const& value = call.words[3].text;
    if (what == "visible") {
        if (value != "yes" && value != "no") {
            return call.Fail(3, "expected yes or no, not '" + value + "'");
        }
        row.visible = value == "yes";
    } else if (what == "mode") {
        long long mode = 0;
        if (!ToInt(value, qzk::ecad::CompareColorVis::eShowAll,
                   qzk::ecad::CompareColorVis::eShowColoredDifferences, mode)) {
            return call.Fail(3, "expected a show mode 0..6, not '" + value + "'");
        }
        row.showMode = static_cast<qzk::ecad::CompareColorVis::ShowMode>(mode);
    } else if (what == "first" || what == "second" || what == "common") {
        long long word = 0;
        if (!ToInt(value, 0, 0xFFFFFFFFLL, word)) {
            return call.Fail(3, "expected a colour word such as 0x010000FF, not '" + value + "'");
        }
        unsigned int& color = what == "first"    ? row.firstColor
                              : what == "second" ? row.secondColor
                                                 : row.commonColor;
        color = static_cast<unsigned int>(word);
    } else {
        return call.Fail(2, "expected first, second, common, visible or mode, not '" + what + "'");
    }
    // Through the two-family setter, as a viewer's colour panel hands back all it shows.
    qzk::ecad::GroupCVInfoSet groups(false);
    api_.GetGroupColorVisInfo(groups);
    auto const op =
        du::MakeCounted<qzk::Operation>("Compare row", du::SmartPtr<qzk::Scene>(scene_), false);
    api_.SetColorVisInfo(groups, rows, op, qzkapp::ecad::ChangeSourceScene);
    qzk::RecordOperation(op);
    return true;
}

std::vector<std::string> CompareSession::QueryNames() {
    return {"row-count", "row", "designs", "undo", "redo"};
}

std::optional<std::string> CompareSession::Query(std::vector<std::string> const& words,
                                                 std::string& error) const {
    std::string const name = words.empty() ? std::string() : words[0];
    qzk::ecad::CompareColorVisPtrVec rows;
    api_.GetColorVisInfo(rows);
    if (name == "row-count" && words.size() == 1) {
        std::size_t first = 0;
        std::size_t second = 0;
        std::size_t both = 0;
        for (auto const& row : rows) {
            std::string const keys = row ? Keys(*row) : "?";
            bool const hasFirst = keys.rfind("-|", 0) != 0;
            bool const hasSecond = keys.size() < 2 || keys.substr(keys.size() - 2) != "|-";
            (hasFirst && hasSecond ? both : hasFirst ? first : second) += 1;
        }
        return std::to_string(rows.size()) + " (" + std::to_string(both) + " both, " +
               std::to_string(first) + " first only, " + std::to_string(second) + " second only)";
    }
    if (name == "row" && words.size() == 2) {
        auto const index = FindRow(rows, words[1]);
        if (!index) {
            return std::string("none");
        }
        return Look(*rows[*index]);
    }
    if (name == "designs" && words.size() == 1) {
        return std::string(api_.GetFirstDesignData() ? "first" : "no first") +
               (api_.GetSecondDesignData() ? ", second" : ", no second");
    }
    if (name == "undo" && words.size() == 1) {
        return std::to_string(qzref::UndoControl::GetUndoCount());
    }
    if (name == "redo" && words.size() == 1) {
        return std::to_string(qzref::UndoControl::GetRedoCount());
    }
    error = "one of: row-count, row KEYS, designs, undo, redo";
    return std::nullopt;
}

std::string CompareSession::Rows() const {
    qzk::ecad::CompareColorVisPtrVec rows;
    api_.GetColorVisInfo(rows);
    std::string out;
    for (auto const& row : rows) {
        if (!row) {
            continue;
        }
        char line[200];
        std::snprintf(line, sizeof line, "%-16s %s\n", Keys(*row).c_str(), Look(*row).c_str());
        out += line;
    }
    return out;
}

bool CompareSession::RenderTo(std::string const& path, std::string& why) const {
    qzref::Renderer::View view;
    view.flip = api_.GetFlip();
    view.rotation = api_.GetRotation();
    return qzref::Renderer::RenderCompare(*scene_, view, path, why);
}

} // namespace qzhost
