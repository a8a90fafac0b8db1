// A scripted viewing session on one board scene: each script line calls the layer's public
// operations the way a viewer does, or prints or checks what the scene holds.
//
// Its commands live in one table, one member function each; docs/sessions.md is the language.
// Adding a kind of session: a new source deriving from ScriptRunner with its own table, plus one
// line in host/SessionFamilies.cpp (ScriptRunner.h says more).
#pragma once

#include "ScenePrinter.h"
#include "ScriptRunner.h"
#include "du/SmartPtr.h"
#include "scene/BaseScene.h"
#include "scene/GroupInfo.h"

#include <cstdio>
#include <functional>
#include <istream>
#include <string>
#include <vector>

namespace qzk {
class Operation;
class SelectionItem;
} // namespace qzk

namespace qzhost {

class Session : public ScriptRunner {
public:
    Session(qzkapp::ecad::PCBScene& api, du::SmartPtr<qzk::ecad::PCBScene> const& scene,
            std::FILE* out, std::string designDir = {});

    bool RenderTo(std::string const& path, std::string& why) const override;

    static std::vector<std::string> CommandNames();

private:
    static Entry<Session> const kCommands[];

    char const* SceneName() const override { return "board"; }

    bool RunSceneCommand(Call const& call, bool& found) override;
    std::optional<std::string> Query(std::vector<std::string> const& words,
                                     std::string& error) const override;
    std::string Rows() const override;

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
    bool Group(Call const& call);
    // Overlays, images and the crosshair (SessionOverlays.cpp).
    bool Overlay(Call const& call);
    bool Image(Call const& call);
    bool Crosshair(Call const& call);
    // Sets the overlays' or the images' rows through the full colour set, as a colour panel
    // does: one undoable step.
    bool SetAnnotationRow(Call const& call, bool overlays);

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
    // Where the design came from: an overlay file is looked for there too.
    std::string designDir_;
    // The groups as the viewer knows them, told to the scene whole after each change.
    std::vector<qzkapp::ecad::GroupInfo> groups_;
};

} // namespace qzhost
