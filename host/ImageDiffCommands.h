// The image difference cells and grids of a compare session, the same on every compare scene:
// a host's cells and grids handed to the scene as pictures, with the ids and grid numbers the
// script gives. docs/sessions.md is the language.
#pragma once

#include "ScriptRunner.h"

#include <optional>
#include <string>
#include <vector>

namespace qzk::ecad {
class BaseScene;
}
namespace qzkapp::ecad {
class CompareScene;
}

namespace qzhost {

class ImageDiffCommands {
public:
    // scene is api's kernel scene, read back for the cells query.
    ImageDiffCommands(qzkapp::ecad::CompareScene& api, qzk::ecad::BaseScene& scene);

    static std::vector<std::string> CommandNames() { return {"cell", "grid"}; }
    // cell add ID WORD NAME [hidden], cell color ID WORD, cell visible ID yes|no, cell remove ID
    bool Cell(ScriptRunner::Call const& call) const;
    // grid add NUMBER ID WORD NAME [hidden], grid show NUMBER yes|no, grid hide-all,
    // grid remove-all, grid color WORD, grid toggle-state
    bool Grid(ScriptRunner::Call const& call) const;

    static std::vector<std::string> QueryNames() {
        return {"cells", "grid", "grid-color", "grid-state"};
    }
    // The value of one of QueryNames; nothing for another query, or with error set for wrong
    // arguments.
    std::optional<std::string> Query(std::vector<std::string> const& words,
                                     std::string& error) const;

private:
    qzkapp::ecad::CompareScene& api_;
    qzk::ecad::BaseScene& scene_;
};

} // namespace qzhost
