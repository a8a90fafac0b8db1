// A scripted session on a board compare scene: the compare rows, by the fixed schemes and row by
// row, each change one undoable operation as a viewer's user action is. docs/sessions.md is the
// language.
#pragma once

#include "ScriptRunner.h"
#include "du/SmartPtr.h"

#include <cstdio>
#include <optional>
#include <string>
#include <vector>

namespace qzk::ecad {
class CompareColorVisPtrVec;
class PCBCompareScene;
} // namespace qzk::ecad
namespace qzkapp::ecad {
class PCBCompareScene;
}

namespace qzhost {

class CompareSession : public ScriptRunner {
public:
    CompareSession(qzkapp::ecad::PCBCompareScene& api,
                   du::SmartPtr<qzk::ecad::PCBCompareScene> scene, std::FILE* out);

    static std::vector<std::string> CommandNames();
    static std::vector<std::string> QueryNames();

    bool RenderTo(std::string const& path, std::string& why) const override;

private:
    static Entry<CompareSession> const kCommands[];

    char const* SceneName() const override { return "board compare"; }

    bool RunSceneCommand(Call const& call, bool& found) override;
    std::optional<std::string> Query(std::vector<std::string> const& words,
                                     std::string& error) const override;
    std::string Rows() const override;

    bool Scheme(Call const& call);
    bool Row(Call const& call);

    // The row's index in rows, by its keys as "Rows" prints them ("3,33|3,33", "-|6,1001").
    static std::optional<std::size_t> FindRow(qzk::ecad::CompareColorVisPtrVec const& rows,
                                              std::string const& keys);

    qzkapp::ecad::PCBCompareScene& api_;
    du::SmartPtr<qzk::ecad::PCBCompareScene> scene_;
};

} // namespace qzhost
