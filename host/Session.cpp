#include "Session.h"

#include "board/PCBScene.h"
#include "qzk/Operation.h"
#include "qzk/SelectionManager.h"
#include "qzk/ecad/EcadDesignData.h"
#include "qzk/ecad/PCBScene.h"
#include "qzk/ecad/SelectionItem.h"
#include "qzk/ecad/SublayerPCB_CVSet.h"
#include "qzref/DesignObject.h"
#include "qzref/Messages.h"
#include "qzref/Renderer.h"
#include "qzref/UndoControl.h"

#include <exception>

namespace qzhost {

Session::Entry<Session> const Session::kCommands[] = {
    {"select", &Session::Select},
    {"preselect", &Session::Preselect},
    {"clear-selection", &Session::ClearSelection},
    {"highlight", &Session::Highlight},
    {"add-highlight", &Session::AddHighlight},
    {"dehighlight", &Session::Dehighlight},
    {"clear-highlights", &Session::ClearHighlights},
    {"isolate", &Session::Isolate},
    {"deisolate", &Session::Deisolate},
    {"clear-isolated", &Session::ClearIsolated},
    {"flip", &Session::Flip},
    {"rotate", &Session::Rotate},
    {"draw-order", &Session::DrawOrder},
    {"sublayer", &Session::Sublayer},
    {"group", &Session::Group},
    {"overlay", &Session::Overlay},
    {"image", &Session::Image},
    {"crosshair", &Session::Crosshair},
};

Session::Session(qzkapp::ecad::PCBScene& api, du::SmartPtr<qzk::ecad::PCBScene> const& scene,
                 std::FILE* out, std::string designDir)
    : ScriptRunner(out), api_(api), scene_(scene), printer_(api, scene),
      designDir_(std::move(designDir)) {}

std::vector<std::string> Session::CommandNames() {
    return NamesOf(kCommands);
}

bool Session::RunSceneCommand(Call const& call, bool& found) {
    return Dispatch(*this, kCommands, call, found);
}

std::optional<std::string> Session::Query(std::vector<std::string> const& words,
                                          std::string& error) const {
    return printer_.Query(words, error);
}

std::string Session::Rows() const {
    return printer_.Rows();
}

bool Session::Items(Call const& call, std::size_t from,
                    std::vector<du::SmartPtr<qzk::SelectionItem>>& out) const {
    auto const& data = api_.GetDesignData();
    if (!data) {
        return call.Fail(0, "no design is loaded");
    }
    for (std::size_t i = from; i < call.words.size(); ++i) {
        qzref::DesignObject* object = data->FindObject(call.words[i].text);
        if (object == nullptr) {
            return call.Fail(i, "no object named '" + call.words[i].text + "' in the design");
        }
        out.push_back(du::MakeCounted<qzk::ecad::SelectionItem>(data, object, nullptr, nullptr,
                                                                dg::DPoint3D(), 0, 0));
    }
    return true;
}

du::SmartPtr<qzk::Operation> Session::NewOperation(std::string const& name) const {
    return du::MakeCounted<qzk::Operation>(name, du::SmartPtr<qzk::Scene>(scene_), false);
}

void Session::Record(du::SmartPtr<qzk::Operation> const& op) const {
    qzk::RecordOperation(op);
}

bool Session::ApplySelection(Call const& call, unsigned int channel) {
    if (!call.Count(1, 10000, "one or more object names")) {
        return false;
    }
    std::vector<du::SmartPtr<qzk::SelectionItem>> items;
    if (!Items(call, 1, items)) {
        return false;
    }
    du::SmartPtr<qzk::SelectionManager> manager;
    scene_->GetSelectionManager(manager);
    manager->ApplyItems(channel, items, qzk::SelectionManager::replace);
    return true;
}

bool Session::Select(Call const& call) {
    return ApplySelection(call, 0);
}
bool Session::Preselect(Call const& call) {
    return ApplySelection(call, 1);
}

bool Session::ClearSelection(Call const& call) {
    if (!call.Count(0, 0, "no words after clear-selection")) {
        return false;
    }
    du::SmartPtr<qzk::SelectionManager> manager;
    scene_->GetSelectionManager(manager);
    manager->ApplyItems(0, {}, qzk::SelectionManager::clear);
    manager->ApplyItems(1, {}, qzk::SelectionManager::clear);
    return true;
}

bool Session::ItemCommand(Call const& call, char const* label, ItemOperation operation) {
    if (!call.Count(1, 10000, "one or more object names")) {
        return false;
    }
    std::vector<du::SmartPtr<qzk::SelectionItem>> items;
    if (!Items(call, 1, items)) {
        return false;
    }
    // Highlight and isolation operations put their operation on the undo list themselves.
    (api_.*operation)(items, NewOperation(label));
    return true;
}

bool Session::Highlight(Call const& call) {
    return ItemCommand(call, "Highlight", &qzkapp::ecad::BaseScene::Highlight);
}
bool Session::AddHighlight(Call const& call) {
    return ItemCommand(call, "Add to highlights", &qzkapp::ecad::BaseScene::AddToHighlights);
}
bool Session::Dehighlight(Call const& call) {
    return ItemCommand(call, "Dehighlight", &qzkapp::ecad::BaseScene::Dehighlight);
}
bool Session::Isolate(Call const& call) {
    return ItemCommand(call, "Isolate", &qzkapp::ecad::BaseScene::Isolate);
}
bool Session::Deisolate(Call const& call) {
    return ItemCommand(call, "Deisolate", &qzkapp::ecad::BaseScene::Deisolate);
}

bool Session::ClearHighlights(Call const& call) {
    if (!call.Count(0, 0, "no words after clear-highlights")) {
        return false;
    }
    api_.ClearHighlights(NewOperation("Clear highlights"));
    return true;
}

bool Session::ClearIsolated(Call const& call) {
    if (!call.Count(0, 0, "no words after clear-isolated")) {
        return false;
    }
    api_.ClearAllIsolated(NewOperation("Clear isolated"));
    return true;
}

bool Session::Flip(Call const& call) {
    if (!call.Count(0, 0, "no words after flip")) {
        return false;
    }
    auto const op = NewOperation("Flip");
    api_.ToggleFlip(op);
    Record(op);
    return true;
}

bool Session::Rotate(Call const& call) {
    long long degrees = 0;
    if (!call.Count(1, 1, "an angle in degrees")) {
        return false;
    }
    if (!ToInt(call.words[1].text, -32768, 32767, degrees)) {
        return call.Fail(1, "expected an angle in degrees, not '" + call.words[1].text + "'");
    }
    auto const op = NewOperation("Rotate");
    api_.AddRotation(static_cast<short>(degrees), op);
    Record(op);
    return true;
}

bool Session::DrawOrder(Call const& call) {
    char const* const usage = "move LAYER INDEX, reset, invert or apply LAYER...";
    if (!call.Count(1, 10000, usage)) {
        return false;
    }
    std::string const& verb = call.words[1].text;
    if (verb == "move") {
        long long layer = 0;
        long long index = 0;
        if (!call.Count(3, 3, "draw-order move LAYER INDEX")) {
            return false;
        }
        if (!ToInt(call.words[2].text, -32768, 32767, layer)) {
            return call.Fail(2, "expected a layer handle, not '" + call.words[2].text + "'");
        }
        if (!ToInt(call.words[3].text, 0, 1000000, index)) {
            return call.Fail(3, "expected an index from 0, not '" + call.words[3].text + "'");
        }
        api_.DrawOrderMoveLayer(static_cast<short>(layer), static_cast<uint64>(index), true);
        return true;
    }
    if (verb == "reset" || verb == "invert") {
        if (!call.Count(1, 1, verb == "reset" ? "draw-order reset" : "draw-order invert")) {
            return false;
        }
        if (verb == "reset") {
            api_.ResetDrawOrder(true);
        } else {
            auto const op = NewOperation("Invert layers");
            api_.DrawOrderInvertLayers(op);
            Record(op);
        }
        return true;
    }
    if (verb == "apply") {
        std::vector<short> order;
        for (std::size_t i = 2; i < call.words.size(); ++i) {
            long long layer = 0;
            if (!ToInt(call.words[i].text, -32768, 32767, layer)) {
                return call.Fail(i, "expected a layer handle, not '" + call.words[i].text + "'");
            }
            order.push_back(static_cast<short>(layer));
        }
        if (order.empty()) {
            return call.Fail(2, "expected one or more layer handles");
        }
        auto const op = NewOperation("Draw order");
        api_.ApplyDrawOrder(order, api_.GetInvertLayers(), op);
        Record(op);
        return true;
    }
    return call.Fail(1, std::string("expected ") + usage + ", not '" + verb + "'");
}

bool Session::Sublayer(Call const& call) {
    qzk::ecad::SublayerPCB_CVSet set;
    api_.GetColorVisInfo(set);
    if (!EditBoardSublayer(call, set)) {
        return false;
    }
    auto const op = NewOperation("Sublayer colour");
    api_.SetColorVisInfo(set, op, qzkapp::ecad::ChangeSourceScene);
    Record(op);
    return true;
}

bool Session::RenderTo(std::string const& path, std::string& why) const {
    qzref::Renderer::View view;
    view.flip = api_.GetFlip();
    view.rotation = api_.GetRotation();
    return qzref::Renderer::Render(*scene_, view, path, why);
}

bool Session::Group(Call const& call) {
    char const* const usage =
        "add NAME COLOUR, members NAME OBJECT..., color NAME WORD or visible NAME yes|no";
    if (!call.Count(3, 10000, usage)) {
        return false;
    }
    std::string const& verb = call.words[1].text;
    du::Symbol const name(call.words[2].text);
    long long word = 0;
    if (verb == "add") {
        if (!call.Count(3, 3, "group add NAME COLOUR")) {
            return false;
        }
        if (!ToInt(call.words[3].text, 0, 0xFFFFFFFFLL, word)) {
            return call.Fail(3, "expected a colour word such as 0x010000FF, not '" +
                                    call.words[3].text + "'");
        }
        groups_.emplace_back(name, false, dg::Color(static_cast<unsigned int>(word), true));
        api_.UpdateGroups(groups_);
        return true;
    }
    if (verb == "members") {
        std::vector<du::SmartPtr<qzk::SelectionItem>> items;
        if (!Items(call, 3, items)) {
            return false;
        }
        // What the kernel tells when objects join a group.
        api_.OnGroupContentAdded(name, items);
        return true;
    }
    if (verb != "color" && verb != "colour" && verb != "visible") {
        return call.Fail(1, std::string("expected ") + usage + ", not '" + verb + "'");
    }
    if (!call.Count(3, 3,
                    verb == "visible" ? "group visible NAME yes|no" : "group color NAME WORD")) {
        return false;
    }
    qzk::ecad::GroupCVInfoSet set(false);
    api_.GetGroupColorVisInfo(set);
    auto const found = set.find(qzk::ecad::GroupCVInfo(call.words[2].text.c_str()));
    if (found == set.end()) {
        return call.Fail(2, "no group named '" + call.words[2].text + "'");
    }
    qzk::ecad::GroupCVInfo entry = *found;
    std::string const& value = call.words[3].text;
    if (verb == "visible") {
        if (value != "yes" && value != "no") {
            return call.Fail(3, "expected yes or no, not '" + value + "'");
        }
        entry.visible = value == "yes";
    } else {
        if (!ToInt(value, 0, 0xFFFFFFFFLL, word)) {
            return call.Fail(3, "expected a colour word such as 0x010000FF, not '" + value + "'");
        }
        entry.color = static_cast<unsigned int>(word);
    }
    set.erase(found);
    set.insert(entry);
    auto const op = NewOperation("Group colour");
    api_.SetGroupColorVisInfo(set, op, qzkapp::ecad::ChangeSourceScene);
    Record(op);
    return true;
}

} // namespace qzhost
