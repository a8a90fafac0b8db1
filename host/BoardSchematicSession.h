// A scripted session on a board-against-schematic compare scene: each side's colours, each
// side's draw order (moved, previewed, reset, applied, the board's inverted), the board's flip
// and isolation, and the schematic's sheets, each change one undoable operation as a viewer's
// user action is. docs/sessions.md is the language.
#pragma once

#include "ScriptRunner.h"
#include "du/SmartPtr.h"

#include <cstdio>
#include <optional>
#include <string>
#include <vector>

namespace qzk {
class Operation;
namespace ecad {
class PCBSchCompareScene;
class SchematicView;
} // namespace ecad
} // namespace qzk
namespace qzkapp::ecad {
class PCBSchCompareScene;
}

namespace qzhost {

class BoardSchematicSession : public ScriptRunner {
public:
    // sheets: the view the schematic's sheets are gone to on.
    BoardSchematicSession(qzkapp::ecad::PCBSchCompareScene& api,
                          du::SmartPtr<qzk::ecad::PCBSchCompareScene> scene,
                          du::SmartPtr<qzk::ecad::SchematicView> sheets, std::FILE* out);

    static std::vector<std::string> CommandNames();
    static std::vector<std::string> QueryNames();

    // The board beside the sheet on view.
    bool RenderTo(std::string const& path, std::string& why) const override;

private:
    static Entry<BoardSchematicSession> const kCommands[];

    char const* SceneName() const override { return "board-schematic compare"; }

    bool RunSceneCommand(Call const& call, bool& found) override;
    std::optional<std::string> Query(std::vector<std::string> const& words,
                                     std::string& error) const override;
    std::string Rows() const override;

    bool BoardSublayer(Call const& call);
    bool SheetSublayer(Call const& call);
    bool Order(Call const& call);
    bool Sheet(Call const& call);
    bool Flip(Call const& call);
    bool Isolate(Call const& call);

    // "color WORD" or "visible yes|no" at words[at] and words[at + 1], into color or visible.
    static bool ColourOrVisibility(Call const& call, std::size_t at, unsigned int& color,
                                   bool& visible);
    // The side words[word] names: true for "board", false for "schematic".
    static bool Side(Call const& call, std::size_t word, bool& pcb);
    // A layer handle of the side's list, from words[word].
    bool LayerOf(Call const& call, std::size_t word, bool pcb, short& out) const;
    du::SmartPtr<qzk::Operation> NewOperation(std::string const& name) const;

    qzkapp::ecad::PCBSchCompareScene& api_;
    du::SmartPtr<qzk::ecad::PCBSchCompareScene> scene_;
    du::SmartPtr<qzk::ecad::SchematicView> sheets_;
};

} // namespace qzhost
