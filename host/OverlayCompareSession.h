// A scripted session on a board compared with a Gerber overlay: the board's sublayers and the
// overlay's row, each change one undoable operation as a viewer's user action is; the overlay
// turned, flipped and loaded anew; and the user's change of the two compare colours.
// docs/sessions.md is the language.
#pragma once

#include "ScriptRunner.h"
#include "du/SmartPtr.h"

#include <cstdio>
#include <optional>
#include <string>
#include <vector>

namespace qzk {
class Operation;
}
namespace qzk::ecad {
class PCBOvlCompareScene;
}
namespace qzkapp::ecad {
class PCBOvlCompareScene;
}

namespace qzhost {

class OverlayCompareSession : public ScriptRunner {
public:
    OverlayCompareSession(qzkapp::ecad::PCBOvlCompareScene& api,
                          du::SmartPtr<qzk::ecad::PCBOvlCompareScene> scene, std::FILE* out);

    static std::vector<std::string> CommandNames();
    static std::vector<std::string> QueryNames();

    bool RenderTo(std::string const& path, std::string& why) const override;

private:
    static Entry<OverlayCompareSession> const kCommands[];

    char const* SceneName() const override { return "board-overlay compare"; }

    bool RunSceneCommand(Call const& call, bool& found) override;
    std::optional<std::string> Query(std::vector<std::string> const& words,
                                     std::string& error) const override;
    std::string Rows() const override;

    bool Sublayer(Call const& call);
    bool Overlay(Call const& call);
    bool CompareColors(Call const& call);
    bool Defaults(Call const& call);

    du::SmartPtr<qzk::Operation> NewOperation(char const* name) const;
    // The overlay's row as a query prints it, or "none".
    std::string OverlayRow() const;

    qzkapp::ecad::PCBOvlCompareScene& api_;
    du::SmartPtr<qzk::ecad::PCBOvlCompareScene> scene_;
};

} // namespace qzhost
