// A scripted viewing session on one board scene: each script line calls the layer's public
// operations the way a viewer does, or prints or checks what the scene holds.
//
// Commands live in one table, one member function each; docs/sessions.md is the language.
#pragma once

#include "ScenePrinter.h"
#include "ScriptLine.h"
#include "du/SmartPtr.h"

#include <cstdio>
#include <functional>
#include <istream>
#include <string>
#include <vector>

namespace qzk {
class Operation;
class SelectionItem;
} // namespace qzk

namespace qzkapp::ecad {
class BaseScene;
}

namespace qzhost {

class Session {
public:
    Session(qzkapp::ecad::PCBScene& api, du::SmartPtr<qzk::ecad::PCBScene> scene, std::FILE* out);

    // Runs every line of in; stops at the first line that cannot be run or whose expectation
    // fails, and sets error to "<file>:<line>:<column>: <why>".
    bool Run(std::istream& in, std::string const& file, std::string& error);

    // Runs one line; on failure sets why and the column it refers to.
    bool RunLine(ScriptLine const& line, std::string& why, int& column);

    // Called after every line that ran, e.g. to print what the kernel was asked meanwhile.
    void SetAfterLine(std::function<void()> afterLine) { afterLine_ = std::move(afterLine); }

    static std::vector<std::string> CommandNames();

    // Draws the scene as it stands to a PNG or SVG file; false with why.
    bool RenderTo(std::string const& path, std::string& why) const;

private:
    struct Call {
        std::vector<ScriptWord> const& words; // words[0] is the command
        std::string& why;
        int& column;
        bool Fail(std::size_t word, std::string text) const;
        bool Count(std::size_t least, std::size_t most, char const* usage) const;
    };
    using Command = bool (Session::*)(Call const&);
    struct Entry {
        char const* name;
        Command command;
    };
    static Entry const kCommands[];

    bool Select(Call const& call);
    bool Preselect(Call const& call);
    bool ClearSelection(Call const& call);
    bool Highlight(Call const& call);
    bool AddHighlight(Call const& call);
    bool Dehighlight(Call const& call);
    bool ClearHighlights(Call const& call);
    bool Isolate(Call const& call);
    bool Deisolate(Call const& call);
    bool ClearIsolated(Call const& call);
    bool Flip(Call const& call);
    bool Rotate(Call const& call);
    bool DrawOrder(Call const& call);
    bool Sublayer(Call const& call);
    bool Undo(Call const& call);
    bool Redo(Call const& call);
    bool Print(Call const& call);
    bool Expect(Call const& call);
    bool Render(Call const& call);

    using ItemOperation = void (qzkapp::ecad::BaseScene::*)(
        std::vector<du::SmartPtr<qzk::SelectionItem>> const&, du::SmartPtr<qzk::Operation> const&);
    bool ItemCommand(Call const& call, char const* label, ItemOperation operation);

    // The items named by words[from..]; fails on a name the design does not have.
    bool Items(Call const& call, std::size_t from,
               std::vector<du::SmartPtr<qzk::SelectionItem>>& out) const;
    bool ApplySelection(Call const& call, unsigned int channel);
    du::SmartPtr<qzk::Operation> NewOperation(std::string const& name) const;
    void Record(du::SmartPtr<qzk::Operation> const& op) const;

    qzkapp::ecad::PCBScene& api_;
    du::SmartPtr<qzk::ecad::PCBScene> scene_;
    ScenePrinter printer_;
    std::FILE* out_;
    std::function<void()> afterLine_;
};

} // namespace qzhost
