// The commands and queries of a session whose scene has sheets: going to a sheet, previewing
// one, and the pan and zoom of the user, on the one view the host made with a page per sheet.
// A schematic session and a schematic compare session share them; docs/sessions.md is the
// language.
#pragma once

#include "ScriptRunner.h"
#include "du/SmartPtr.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace qzk::ecad {
class BaseView;
}
namespace qzkapp::ecad {
class SheetViewStateHolder;
}

namespace qzhost {

class SheetCommands {
public:
    // count and name tell the sheets of the design(s) on view; the holder is the scene's.
    SheetCommands(qzkapp::ecad::SheetViewStateHolder& holder,
                  du::SmartPtr<qzk::ecad::BaseView> view, std::function<unsigned int()> count,
                  std::function<std::string(unsigned int)> name);

    // sheet go SHEET, sheet preview SHEET, sheet preview end
    bool Sheet(ScriptRunner::Call const& call) const;
    // pan X Y WIDTH
    bool Pan(ScriptRunner::Call const& call) const;

    static std::vector<std::string> QueryNames() { return {"sheets", "sheet", "view"}; }
    // The value of one of QueryNames; nothing for another query.
    std::optional<std::string> Query(std::vector<std::string> const& words) const;
    // The sheet the view shows.
    unsigned int ShownSheet() const;

private:
    // The sheet number words[word] names; fails on one the design does not have.
    bool SheetNumber(ScriptRunner::Call const& call, std::size_t word, short& out) const;

    qzkapp::ecad::SheetViewStateHolder& holder_;
    du::SmartPtr<qzk::ecad::BaseView> view_;
    std::function<unsigned int()> count_;
    std::function<std::string(unsigned int)> name_;
};

} // namespace qzhost
