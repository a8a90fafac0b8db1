#include "ScriptRunner.h"

#include "qzk/ecad/SublayerPCB_CVSet.h"

#include "qzref/Messages.h"
#include "qzref/UndoControl.h"

#include <exception>

namespace qzhost {

namespace {

std::string Join(std::vector<ScriptWord> const& words, std::size_t from, std::size_t to) {
    std::string out;
    for (std::size_t i = from; i < to && i < words.size(); ++i) {
        out += out.empty() ? "" : " ";
        out += words[i].text;
    }
    return out;
}

} // namespace

std::string Hex(unsigned int word) {
    char text[16];
    std::snprintf(text, sizeof text, "0x%08X", word);
    return text;
}

bool ToInt(std::string const& text, long long least, long long most, long long& out) {
    try {
        std::size_t used = 0;
        long long const value = std::stoll(text, &used, 0);
        if (used != text.size() || value < least || value > most) {
            return false;
        }
        out = value;
        return true;
    } catch (std::exception const&) {
        return false;
    }
}

ScriptRunner::~ScriptRunner() = default;

bool ScriptRunner::RenderTo(std::string const& /*path*/, std::string& why) const {
    why = "the renderer draws board scenes only";
    return false;
}

bool ScriptRunner::EditBoardSublayer(Call const& call, qzk::ecad::SublayerPCB_CVSet& set) {
    char const* const usage = "LAYER SUBLAYER color WORD, or LAYER SUBLAYER visible yes|no";
    if (!call.Count(4, 4, usage)) {
        return false;
    }
    long long layer = 0;
    long long sublayer = 0;
    if (!ToInt(call.words[1].text, -32768, 32767, layer)) {
        return call.Fail(1, "expected a layer handle, not '" + call.words[1].text + "'");
    }
    if (!ToInt(call.words[2].text, -32768, 32767, sublayer)) {
        return call.Fail(2, "expected a sublayer handle, not '" + call.words[2].text + "'");
    }
    auto const found = set.find(qzk::ecad::SublayerPCB_CV(static_cast<short>(layer),
                                                          static_cast<short>(sublayer), 0, false));
    if (found == set.end()) {
        return call.Fail(1, "no sublayer (" + call.words[1].text + ", " + call.words[2].text +
                                ") on this board");
    }
    qzk::ecad::SublayerPCB_CV entry = *found;
    std::string const& what = call.words[3].text;
    std::string const& value = call.words[4].text;
    if (what == "color" || what == "colour") {
        long long word = 0;
        if (!ToInt(value, 0, 0xFFFFFFFFLL, word)) {
            return call.Fail(4, "expected a colour word such as 0x010000FF, not '" + value + "'");
        }
        entry.color = static_cast<unsigned int>(word);
    } else if (what == "visible") {
        if (value != "yes" && value != "no") {
            return call.Fail(4, "expected yes or no, not '" + value + "'");
        }
        entry.visible = value == "yes";
    } else {
        return call.Fail(3, "expected color or visible, not '" + what + "'");
    }
    set.erase(found);
    set.insert(entry);
    return true;
}

bool ScriptRunner::Call::Fail(std::size_t word, std::string text) const {
    column = word < words.size() ? words[word].column
                                 : words.back().column + static_cast<int>(words.back().text.size());
    why = std::move(text);
    return false;
}

bool ScriptRunner::Call::Count(std::size_t least, std::size_t most, char const* usage) const {
    std::size_t const given = words.size() - 1;
    if (given < least) {
        return Fail(words.size(), std::string("expected ") + usage);
    }
    if (given > most) {
        return Fail(most + 1, std::string("too many words; expected ") + usage);
    }
    return true;
}

bool ScriptRunner::Run(std::istream& in, std::string const& file, std::string& error) {
    std::string text;
    int number = 0;
    while (std::getline(in, text)) {
        ++number;
        int column = 1;
        std::string why;
        auto const line = ScriptLine::Parse(text, column);
        bool ok = false;
        if (!line) {
            why = "unterminated quote";
        } else {
            ok = RunLine(*line, why, column);
        }
        if (!ok) {
            error = file;
            error += ":" + std::to_string(number) + ":" + std::to_string(column) + ": ";
            error += why;
            return false;
        }
    }
    return true;
}

bool ScriptRunner::RunLine(ScriptLine const& line, std::string& why, int& column) {
    if (line.words.empty()) {
        return true;
    }
    Call const call{line.words, why, column};
    bool found = true;
    bool ok = false;
    std::string const& name = line.words[0].text;
    if (name == "undo") {
        ok = Undo(call);
    } else if (name == "redo") {
        ok = Redo(call);
    } else if (name == "print") {
        ok = Print(call);
    } else if (name == "expect") {
        ok = Expect(call);
    } else if (name == "render") {
        ok = Render(call);
    } else {
        found = false;
        ok = RunSceneCommand(call, found);
    }
    if (!found) {
        std::string const needs = SceneNeededBy(name);
        if (!needs.empty()) {
            return call.Fail(0, "'" + name + "' is not available on a " + SceneName() +
                                    " scene; it needs a " + needs + " scene");
        }
        return call.Fail(0, "unknown command '" + name + "'");
    }
    // Events reach observers as messages; deliver them before the next line looks.
    qzref::Messages::PumpUntilIdle();
    if (afterLine_) {
        afterLine_();
    }
    return ok;
}

std::optional<std::string>
ScriptRunner::QueryElsewhere(std::vector<std::string> const& query) const {
    if (query.empty()) {
        return std::nullopt;
    }
    std::string const needs = SceneNeededByQuery(query[0], SceneName());
    if (needs.empty()) {
        return std::nullopt;
    }
    return "'" + query[0] + "' is not available on a " + SceneName() + " scene; it needs a " +
           needs + " scene";
}

bool ScriptRunner::Undo(Call const& call) {
    if (!call.Count(0, 0, "no words after undo")) {
        return false;
    }
    if (!qzref::UndoControl::Undo()) {
        return call.Fail(0, "nothing to undo");
    }
    return true;
}

bool ScriptRunner::Redo(Call const& call) {
    if (!call.Count(0, 0, "no words after redo")) {
        return false;
    }
    if (!qzref::UndoControl::Redo()) {
        return call.Fail(0, "nothing to redo");
    }
    return true;
}

bool ScriptRunner::Print(Call const& call) {
    if (call.words.size() == 2 && call.words[1].text == "rows") {
        std::fputs(Rows().c_str(), out_);
        return true;
    }
    std::vector<std::string> query;
    for (std::size_t i = 1; i < call.words.size(); ++i) {
        query.push_back(call.words[i].text);
    }
    std::string error;
    auto const value = Query(query, error);
    if (!value) {
        return call.Fail(1, QueryElsewhere(query).value_or("expected rows or " + error));
    }
    std::fprintf(out_, "%s: %s\n", Join(call.words, 1, call.words.size()).c_str(), value->c_str());
    return true;
}

bool ScriptRunner::Expect(Call const& call) {
    std::size_t equals = 0;
    for (std::size_t i = 1; i < call.words.size(); ++i) {
        if (call.words[i].text == "=") {
            equals = i;
            break;
        }
    }
    if (equals == 0) {
        return call.Fail(call.words.size(), "expected a query, '=' and the value it should have");
    }
    std::vector<std::string> query;
    for (std::size_t i = 1; i < equals; ++i) {
        query.push_back(call.words[i].text);
    }
    std::string error;
    auto const value = Query(query, error);
    if (!value) {
        return call.Fail(1, QueryElsewhere(query).value_or("expected " + error));
    }
    std::string const wanted = Join(call.words, equals + 1, call.words.size());
    if (*value != wanted) {
        return call.Fail(equals + 1, "expectation failed: " + Join(call.words, 1, equals) +
                                         " is '" + *value + "', expected '" + wanted + "'");
    }
    return true;
}

bool ScriptRunner::Render(Call const& call) {
    if (!call.Count(1, 1, "a picture file, .png or .svg")) {
        return false;
    }
    std::string why;
    if (!RenderTo(call.words[1].text, why)) {
        return call.Fail(1, "cannot render: " + why);
    }
    return true;
}

} // namespace qzhost
