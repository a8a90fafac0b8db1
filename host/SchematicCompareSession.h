// A scripted session on a schematic compare scene and its view: sheets (go, preview, pan), the
// compare records by sublayer handle, each change one undoable operation, and the image
// difference cells and grids. docs/sessions.md is the language.
#pragma once

#include "ImageDiffCommands.h"
#include "ScriptRunner.h"
#include "SheetCommands.h"
#include "du/SmartPtr.h"

#include <cstdio>
#include <optional>
#include <string>
#include <vector>

namespace qzk::ecad {
class SchematicCompareScene;
class SchematicCompareView;
} // namespace qzk::ecad
namespace qzkapp::ecad {
class SchematicCompareScene;
}

namespace qzhost {

class SchematicCompareSession : public ScriptRunner {
public:
    SchematicCompareSession(qzkapp::ecad::SchematicCompareScene& api,
                            du::SmartPtr<qzk::ecad::SchematicCompareScene> scene,
                            du::SmartPtr<qzk::ecad::SchematicCompareView> view, std::FILE* out);

    static std::vector<std::string> CommandNames();
    static std::vector<std::string> QueryNames();

    // Draws the sheet on view, both designs in their compare colours.
    bool RenderTo(std::string const& path, std::string& why) const override;

private:
    static Entry<SchematicCompareSession> const kCommands[];

    char const* SceneName() const override { return "schematic compare"; }

    bool RunSceneCommand(Call const& call, bool& found) override;
    std::optional<std::string> Query(std::vector<std::string> const& words,
                                     std::string& error) const override;
    std::string Rows() const override;

    bool Sheet(Call const& call);
    bool Pan(Call const& call);
    bool Row(Call const& call);
    bool Cell(Call const& call);
    bool Grid(Call const& call);

    // The name of the sheet in the first design that has it.
    std::string SheetName(unsigned int sheet) const;
    // "both", "first only" or "second only": which designs name the handle.
    std::string Presence(short handle) const;

    qzkapp::ecad::SchematicCompareScene& api_;
    du::SmartPtr<qzk::ecad::SchematicCompareScene> scene_;
    du::SmartPtr<qzk::ecad::SchematicCompareView> view_;
    SheetCommands sheets_;
    ImageDiffCommands images_;
};

} // namespace qzhost
