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

namespace {

bool ToInt(std::string const& text, long long least, long long most, long long& out) {
    try {
        std::size_t used = 0;
        long long const value = std::stoll(text, &used, 0);
        if (used != text.size() || value < least || value > most) {
            return false;
        }
        out = value;
        return true;
    } catch (std::exception const&) {
        return false;
    }
}

std::string Join(std::vector<ScriptWord> const& words, std::size_t from, std::size_t to) {
    std::string out;
    for (std::size_t i = from; i < to && i < words.size(); ++i) {
        out += out.empty() ? "" : " ";
        out += words[i].text;
    }
    return out;
}

} // namespace

Session::Entry const Session::kCommands[] = {
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
    {"undo", &Session::Undo},
    {"redo", &Session::Redo},
    {"print", &Session::Print},
    {"expect", &Session::Expect},
    {"render", &Session::Render},
};

Session::Session(qzkapp::ecad::PCBScene& api, du::SmartPtr<qzk::ecad::PCBScene> scene,
                 std::FILE* out)
    : api_(api), scene_(scene), printer_(api, scene), out_(out) {}

std::vector<std::string> Session::CommandNames() {
    std::vector<std::string> names;
    for (auto const& entry : kCommands) {
        names.emplace_back(entry.name);
    }
    return names;
}

bool Session::Call::Fail(std::size_t word, std::string text) const {
    column = word < words.size() ? words[word].column
                                 : words.back().column + static_cast<int>(words.back().text.size());
    why = std::move(text);
    return false;
}

bool Session::Call::Count(std::size_t least, std::size_t most, char const* usage) const {
    std::size_t const given = words.size() - 1;
    if (given < least) {
        return Fail(words.size(), std::string("expected ") + usage);
    }
    if (given > most) {
        return Fail(most + 1, std::string("too many words; expected ") + usage);
    }
    return true;
}

bool Session::Run(std::istream& in, std::string const& file, std::string& error) {
    std::string text;
    int number = 0;
    while (std::getline(in, text)) {
        ++number;
        int column = 1;
        std::string why;
        auto const line = ScriptLine::Parse(text, column);
        bool ok = false;
        if (!line) {
            why = "unterminated quote";
        } else {
            ok = RunLine(*line, why, column);
        }
        if (!ok) {
            error = file + ":" + std::to_string(number) + ":" + std::to_string(column) + ": " + why;
            return false;
        }
    }
    return true;
}

bool Session::RunLine(ScriptLine const& line, std::string& why, int& column) {
    if (line.words.empty()) {
        return true;
    }
    Call const call{line.words, why, column};
    for (auto const& entry : kCommands) {
        if (line.words[0].text == entry.name) {
            bool const ok = (this->*entry.command)(call);
            // Events reach observers as messages; deliver them before the next line looks.
            qzref::Messages::PumpUntilIdle();
            if (afterLine_) {
                afterLine_();
            }
            return ok;
        }
    }
    return call.Fail(0, "unknown command '" + line.words[0].text + "'");
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
    char const* const usage = "LAYER SUBLAYER color WORD, or LAYER SUBLAYER visible yes|no";
    if (!call.Count(4, 4, usage)) {
        return false;
    }
    long long layer = 0;
    long long sublayer = 0;
    if (!ToInt(call.words[1].text, -32768, 32767, layer)) {
        return call.Fail(1, "expected a layer handle, not '" + call.words[1].text + "'");
    }
    if (!ToInt(call.words[2].text, -32768, 32767, sublayer)) {
        return call.Fail(2, "expected a sublayer handle, not '" + call.words[2].text + "'");
    }
    qzk::ecad::SublayerPCB_CVSet set;
    api_.GetColorVisInfo(set);
    auto const found = set.find(qzk::ecad::SublayerPCB_CV(static_cast<short>(layer),
                                                          static_cast<short>(sublayer), 0, false));
    if (found == set.end()) {
        return call.Fail(1, "no sublayer (" + call.words[1].text + ", " + call.words[2].text +
                                ") on this board");
    }
    qzk::ecad::SublayerPCB_CV entry = *found;
    std::string const& what = call.words[3].text;
    std::string const& value = call.words[4].text;
    if (what == "color" || what == "colour") {
        long long word = 0;
        if (!ToInt(value, 0, 0xFFFFFFFFLL, word)) {
            return call.Fail(4, "expected a colour word such as 0x010000FF, not '" + value + "'");
        }
        entry.color = static_cast<unsigned int>(word);
    } else if (what == "visible") {
        if (value != "yes" && value != "no") {
            return call.Fail(4, "expected yes or no, not '" + value + "'");
        }
        entry.visible = value == "yes";
    } else {
        return call.Fail(3, "expected color or visible, not '" + what + "'");
    }
    set.erase(found);
    set.insert(entry);
    auto const op = NewOperation("Sublayer colour");
    api_.SetColorVisInfo(set, op, qzkapp::ecad::ChangeSourceScene);
    Record(op);
    return true;
}

bool Session::Undo(Call const& call) {
    if (!call.Count(0, 0, "no words after undo")) {
        return false;
    }
    if (!qzref::UndoControl::Undo()) {
        return call.Fail(0, "nothing to undo");
    }
    return true;
}

bool Session::Redo(Call const& call) {
    if (!call.Count(0, 0, "no words after redo")) {
        return false;
    }
    if (!qzref::UndoControl::Redo()) {
        return call.Fail(0, "nothing to redo");
    }
    return true;
}

bool Session::Print(Call const& call) {
    if (call.words.size() == 2 && call.words[1].text == "rows") {
        std::fputs(printer_.Rows().c_str(), out_);
        return true;
    }
    std::vector<std::string> query;
    for (std::size_t i = 1; i < call.words.size(); ++i) {
        query.push_back(call.words[i].text);
    }
    std::string error;
    auto const value = printer_.Query(query, error);
    if (!value) {
        return call.Fail(1, "expected rows or " + error);
    }
    std::fprintf(out_, "%s: %s\n", Join(call.words, 1, call.words.size()).c_str(), value->c_str());
    return true;
}

bool Session::Expect(Call const& call) {
    std::size_t equals = 0;
    for (std::size_t i = 1; i < call.words.size(); ++i) {
        if (call.words[i].text == "=") {
            equals = i;
            break;
        }
    }
    if (equals == 0) {
        return call.Fail(call.words.size(), "expected a query, '=' and the value it should have");
    }
    std::vector<std::string> query;
    for (std::size_t i = 1; i < equals; ++i) {
        query.push_back(call.words[i].text);
    }
    std::string error;
    auto const value = printer_.Query(query, error);
    if (!value) {
        return call.Fail(1, "expected " + error);
    }
    std::string const wanted = Join(call.words, equals + 1, call.words.size());
    if (*value != wanted) {
        return call.Fail(equals + 1, "expectation failed: " + Join(call.words, 1, equals) +
                                         " is '" + *value + "', expected '" + wanted + "'");
    }
    return true;
}

bool Session::RenderTo(std::string const& path, std::string& why) const {
    qzref::Renderer::View view;
    view.flip = api_.GetFlip();
    view.rotation = api_.GetRotation();
    return qzref::Renderer::Render(*scene_, view, path, why);
}

bool Session::Render(Call const& call) {
    if (!call.Count(1, 1, "a picture file, .png or .svg")) {
        return false;
    }
    std::string why;
    if (!RenderTo(call.words[1].text, why)) {
        return call.Fail(1, "cannot render: " + why);
    }
    return true;
}

} // namespace qzhost
