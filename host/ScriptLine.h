// One line of a session script, cut into words with the column each word starts at.
//
// Words are separated by blanks; a word in double quotes may hold blanks (\" and \\ inside
// quotes stand for themselves). A '#' outside quotes starts a comment that runs to the end of
// the line. Columns count from 1, in bytes.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace qzhost {

struct ScriptWord {
    std::string text;
    int column = 1;
};

class ScriptLine {
public:
    // Cuts text into words; on an unterminated quote returns nothing and sets errorColumn to
    // the column of the opening quote.
    static std::optional<ScriptLine> Parse(std::string const& text, int& errorColumn);

    std::vector<ScriptWord> words;
};

} // namespace qzhost
