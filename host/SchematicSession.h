// A scripted viewing session on one schematic scene and its view: sheets (go, preview), the view
// the user pans and zooms, and sublayer colours, each through the layer's public operations the
// way a viewer calls them. docs/sessions.md is the language.
#pragma once

#include "ScriptRunner.h"
#include "SheetCommands.h"
#include "du/SmartPtr.h"

#include <cstdio>
#include <optional>
#include <string>
#include <vector>

namespace qzk::ecad {
class SchematicScene;
class SchematicView;
} // namespace qzk::ecad
namespace qzkapp::ecad {
class SchematicScene;
}

namespace qzhost {

class SchematicSession : public ScriptRunner {
public:
    SchematicSession(qzkapp::ecad::SchematicScene& api,
                     du::SmartPtr<qzk::ecad::SchematicScene> scene,
                     du::SmartPtr<qzk::ecad::SchematicView> view, std::FILE* out);

    static std::vector<std::string> CommandNames();
    static std::vector<std::string> QueryNames();

    // Draws the sheet on view.
    bool RenderTo(std::string const& path, std::string& why) const override;

private:
    static Entry<SchematicSession> const kCommands[];

    char const* SceneName() const override { return "schematic"; }

    bool RunSceneCommand(Call const& call, bool& found) override;
    std::optional<std::string> Query(std::vector<std::string> const& words,
                                     std::string& error) const override;
    std::string Rows() const override;

    bool Sheet(Call const& call);
    bool Pan(Call const& call);
    bool Sublayer(Call const& call);

    unsigned int SheetCount() const;
    std::string SheetName(unsigned int sheet) const;

    qzkapp::ecad::SchematicScene& api_;
    du::SmartPtr<qzk::ecad::SchematicScene> scene_;
    du::SmartPtr<qzk::ecad::SchematicView> view_;
    SheetCommands sheets_;
};

} // namespace qzhost
