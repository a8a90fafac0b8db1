#include "ScriptLine.h"

namespace qzhost {

std::optional<ScriptLine> ScriptLine::Parse(std::string const& text, int& errorColumn) {
    ScriptLine line;
    std::size_t i = 0;
    while (i < text.size()) {
        char const c = text[i];
        if (c == ' ' || c == '\t' || c == '\r') {
            ++i;
            continue;
        }
        if (c == '#') {
            break;
        }
        ScriptWord word;
        word.column = static_cast<int>(i) + 1;
        if (c == '"') {
            ++i;
            bool closed = false;
            while (i < text.size()) {
                char const d = text[i];
                if (d == '\\' && i + 1 < text.size() &&
                    (text[i + 1] == '"' || text[i + 1] == '\\')) {
                    word.text += text[i + 1];
                    i += 2;
                } else if (d == '"') {
                    ++i;
                    closed = true;
                    break;
                } else {
                    word.text += d;
                    ++i;
                }
            }
            if (!closed) {
                errorColumn = word.column;
                return std::nullopt;
            }
        } else {
            while (i < text.size() && text[i] != ' ' && text[i] != '\t' && text[i] != '\r' &&
                   text[i] != '#') {
                word.text += text[i++];
            }
        }
        line.words.push_back(std::move(word));
    }
    return line;
}

} // namespace qzhost
