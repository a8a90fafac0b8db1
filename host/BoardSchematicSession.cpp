#include "BoardSchematicSession.h"

#include "compare/PCBSchCompareScene.h"
#include "dg/DPoint3D.h"
#include "qzk/Operation.h"
#include "qzk/ecad/BaseView.h"
#include "qzk/ecad/EcadDesignData.h"
#include "qzk/ecad/PCBSchCompareScene.h"
#include "qzk/ecad/SchematicData.h"
#include "qzk/ecad/SchematicView.h"
#include "qzk/ecad/SelectionItem.h"
#include "qzk/ecad/SublayerPCB_CVSet.h"
#include "qzref/DesignObject.h"
#include "qzref/Inspect.h"
#include "qzref/Renderer.h"
#include "qzref/UndoControl.h"

#include <algorithm>

namespace qzhost {

namespace {

std::string Narrow(std::wstring const& text) {
    std::string out;
    for (wchar_t c : text) {
        out += c < 0x80 ? static_cast<char>(c) : '?';
    }
    return out;
}

std::string List(std::vector<short> const& order) {
    std::string out;
    for (short layer : order) {
        out += (out.empty() ? "" : " ") + std::to_string(layer);
    }
    return out.empty() ? "none" : out;
}

std::string Look(unsigned int color, bool visible) {
    return Hex(color) + (visible ? " visible" : " hidden");
}

} // namespace

BoardSchematicSession::Entry<BoardSchematicSession> const BoardSchematicSession::kCommands[] = {
    {"board-sublayer", &BoardSchematicSession::BoardSublayer},
    {"sheet-sublayer", &BoardSchematicSession::SheetSublayer},
    {"order", &BoardSchematicSession::Order},
    {"sheet", &BoardSchematicSession::Sheet},
    {"flip", &BoardSchematicSession::Flip},
    {"isolate", &BoardSchematicSession::Isolate},
};

BoardSchematicSession::BoardSchematicSession(qzkapp::ecad::PCBSchCompareScene& api,
                                             du::SmartPtr<qzk::ecad::PCBSchCompareScene> scene,
                                             du::SmartPtr<qzk::ecad::SchematicView> sheets,
                                             std::FILE* out)
    : ScriptRunner(out), api_(api), scene_(std::move(scene)), sheets_(std::move(sheets)) {}

std::vector<std::string> BoardSchematicSession::CommandNames() {
    return NamesOf(kCommands);
}

bool BoardSchematicSession::RunSceneCommand(Call const& call, bool& found) {
    return Dispatch(*this, kCommands, call, found);
}

du::SmartPtr<qzk::Operation> BoardSchematicSession::NewOperation(std::string const& name) const {
    return du::MakeCounted<qzk::Operation>(name, du::SmartPtr<qzk::Scene>(scene_), false);
}

bool BoardSchematicSession::Side(Call const& call, std::size_t word, bool& pcb) {
    std::string const& side = call.words[word].text;
    if (side != "board" && side != "schematic") {
        return call.Fail(word, "expected board or schematic, not '" + side + "'");
    }
    pcb = side == "board";
    return true;
}

bool BoardSchematicSession::LayerOf(Call const& call, std::size_t word, bool pcb,
                                    short& out) const {
    std::vector<short> order;
    if (pcb) {
        api_.GetPCBDrawOrder(order);
    } else {
        api_.GetSchDrawOrder(order);
    }
    long long layer = 0;
    if (!ToInt(call.words[word].text, -32768, 32767, layer)) {
        return call.Fail(word, "expected a layer handle, not '" + call.words[word].text + "'");
    }
    if (std::find(order.begin(), order.end(), static_cast<short>(layer)) == order.end()) {
        return call.Fail(word, "no layer " + call.words[word].text + " in the " +
                                   (pcb ? "board's" : "schematic's") + " draw order (" +
                                   List(order) + ")");
    }
    out = static_cast<short>(layer);
    return true;
}

// "color WORD" or "visible yes|no" at words[at] and words[at + 1], into color or visible.
bool BoardSchematicSession::ColourOrVisibility(Call const& call, std::size_t at,
                                               unsigned int& color, bool& visible) {
    std::string const& what = call.words[at].text;
    std::string const& value = call.words[at + 1].text;
    if (what == "color" || what == "colour") {
        long long word = 0;
        if (!ToInt(value, 0, 0xFFFFFFFFLL, word)) {
            return call.Fail(at + 1,
                             "expected a colour word such as 0x010000FF, not '" + value + "'");
        }
        color = static_cast<unsigned int>(word);
        return true;
    }
    if (what == "visible") {
        if (value != "yes" && value != "no") {
            return call.Fail(at + 1, "expected yes or no, not '" + value + "'");
        }
        visible = value == "yes";
        return true;
    }
    return call.Fail(at, "expected color or visible, not '" + what + "'");
}

bool BoardSchematicSession::BoardSublayer(Call const& call) {
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
                                ") on the board");
    }
    qzk::ecad::SublayerPCB_CV entry = *found;
    if (!ColourOrVisibility(call, 3, entry.color, entry.visible)) {
        return false;
    }
    set.erase(found);
    set.insert(entry);
    auto const op = NewOperation("Board sublayer colour");
    api_.SetColorVisInfo(set, op, qzkapp::ecad::ChangeSourceScene);
    qzk::RecordOperation(op);
    return true;
}

bool BoardSchematicSession::SheetSublayer(Call const& call) {
    char const* const usage = "LAYER color WORD, or LAYER visible yes|no";
    if (!call.Count(3, 3, usage)) {
        return false;
    }
    long long layer = 0;
    if (!ToInt(call.words[1].text, -32768, 32767, layer)) {
        return call.Fail(1, "expected a layer handle, not '" + call.words[1].text + "'");
    }
    qzkapp::ecad::SchSceneHelper::SublayerMap map;
    api_.GetSublayerColorVisInfo(map);
    auto const found = map.find(static_cast<short>(layer));
    if (found == map.end()) {
        return call.Fail(1, "no layer " + call.words[1].text + " in the schematic");
    }
    if (!ColourOrVisibility(call, 2, found->second.color, found->second.visible)) {
        return false;
    }
    auto const op = NewOperation("Schematic layer colour");
    api_.SetSublayerColorVisInfo(map, op, qzkapp::ecad::ChangeSourceScene);
    qzk::RecordOperation(op);
    return true;
}

bool BoardSchematicSession::Order(Call const& call) {
    char const* const usage = "SIDE move LAYER INDEX, SIDE preview LAYER|end|default, SIDE reset, "
                              "SIDE apply LAYER..., or board invert (SIDE: board or schematic)";
    if (!call.Count(2, 10000, usage)) {
        return false;
    }
    bool pcb = true;
    if (!Side(call, 1, pcb)) {
        return false;
    }
    std::string const& verb = call.words[2].text;
    if (verb == "move") {
        if (!call.Count(4, 4, "SIDE move LAYER INDEX")) {
            return false;
        }
        short layer = 0;
        long long index = 0;
        if (!LayerOf(call, 3, pcb, layer)) {
            return false;
        }
        std::vector<short> order;
        if (pcb) {
            api_.GetPCBDrawOrder(order);
        } else {
            api_.GetSchDrawOrder(order);
        }
        if (!ToInt(call.words[4].text, 0, static_cast<long long>(order.size()) - 1, index)) {
            return call.Fail(4, "expected an index from 0 to " + std::to_string(order.size() - 1) +
                                    ", not '" + call.words[4].text + "'");
        }
        // The move puts its own entry on the undo list.
        api_.DrawOrderMoveLayer(pcb, layer, static_cast<uint64>(index), true);
        return true;
    }
    if (verb == "preview") {
        if (!call.Count(3, 3, "SIDE preview LAYER|end|default")) {
            return false;
        }
        std::string const& what = call.words[3].text;
        short layer = 0;
        if (what == "default") {
            layer = -1;
        } else if (what != "end" && !LayerOf(call, 3, pcb, layer)) {
            return false;
        }
        api_.PreviewDrawOrderTopLayer(pcb, layer);
        return true;
    }
    if (verb == "reset") {
        if (!call.Count(2, 2, "SIDE reset")) {
            return false;
        }
        // A reset always puts its own entry on the undo list.
        api_.ResetPCBSchDrawOrder(pcb);
        return true;
    }
    if (verb == "apply") {
        std::vector<short> order;
        for (std::size_t i = 3; i < call.words.size(); ++i) {
            short layer = 0;
            if (!LayerOf(call, i, pcb, layer)) {
                return false;
            }
            order.push_back(layer);
        }
        auto const op = NewOperation("Apply draw order");
        api_.ApplyDrawOrder(pcb, order, pcb && api_.GetInvertLayers(), op);
        qzk::RecordOperation(op);
        return true;
    }
    if (verb == "invert") {
        if (!pcb) {
            return call.Fail(1, "only the board's draw order inverts");
        }
        if (!call.Count(2, 2, "board invert")) {
            return false;
        }
        auto const op = NewOperation("Invert layers");
        api_.PCBSchDrawOrderInvertLayers(op);
        qzk::RecordOperation(op);
        return true;
    }
    return call.Fail(2, std::string("expected move, preview, reset, apply or invert, not '") +
                            verb + "'");
}

bool BoardSchematicSession::Sheet(Call const& call) {
    if (!call.Count(2, 2, "go SHEET")) {
        return false;
    }
    if (call.words[1].text != "go") {
        return call.Fail(1, "expected go, not '" + call.words[1].text + "'");
    }
    auto const* data = dynamic_cast<qzk::ecad::SchematicData const*>(api_.GetSchData().Get());
    long long const sheets = data != nullptr ? data->GetNumSheets() : 0;
    long long sheet = 0;
    if (!ToInt(call.words[2].text, 0, 32767, sheet) || sheet >= sheets) {
        return call.Fail(2, "expected a sheet from 0 to " + std::to_string(sheets - 1) + ", not '" +
                                call.words[2].text + "'");
    }
    api_.PageNav(static_cast<short>(sheet), du::SmartPtr<qzk::ecad::BaseView>(sheets_));
    return true;
}

bool BoardSchematicSession::Flip(Call const& call) {
    if (!call.Count(0, 0, "no words after flip")) {
        return false;
    }
    auto const op = NewOperation("Flip");
    api_.ToggleFlip(op);
    qzk::RecordOperation(op);
    return true;
}

bool BoardSchematicSession::Isolate(Call const& call) {
    if (!call.Count(1, 10000, "one or more object names of the board")) {
        return false;
    }
    auto const& board = api_.GetPCBData();
    std::vector<du::SmartPtr<qzk::SelectionItem>> items;
    for (std::size_t i = 1; i < call.words.size(); ++i) {
        qzref::DesignObject* object = board->FindObject(call.words[i].text);
        if (object == nullptr) {
            return call.Fail(i, "no object named '" + call.words[i].text + "' on the board");
        }
        items.push_back(du::MakeCounted<qzk::ecad::SelectionItem>(board, object, nullptr, nullptr,
                                                                  dg::DPoint3D(), 0, 0));
    }
    // Isolation puts its own entry on the undo list.
    api_.Isolate(items, NewOperation("Isolate"));
    return true;
}

std::vector<std::string> BoardSchematicSession::QueryNames() {
    return {
        "designs",        "board-order", "schematic-order", "inverted", "flipped", "board-sublayer",
        "sheet-sublayer", "sheet",       "isolated",        "undo",     "redo"};
}

std::optional<std::string> BoardSchematicSession::Query(std::vector<std::string> const& words,
                                                        std::string& error) const {
    std::string const name = words.empty() ? std::string() : words[0];
    if (name == "designs" && words.size() == 1) {
        return std::string(api_.IsFirstBoard() ? "board first, schematic second"
                                               : "schematic first, board second") +
               (api_.GetPCBData() && api_.GetSchData() ? "" : " (not both loaded)");
    }
    if (name == "board-order" && words.size() == 1) {
        std::vector<short> order;
        api_.GetPCBDrawOrder(order);
        return List(order);
    }
    if (name == "schematic-order" && words.size() == 1) {
        std::vector<short> order;
        api_.GetSchDrawOrder(order);
        return List(order);
    }
    if (name == "inverted" && words.size() == 1) {
        return std::string(api_.GetInvertLayers() ? "yes" : "no");
    }
    if (name == "flipped" && words.size() == 1) {
        return std::string(api_.GetFlip() ? "yes" : "no");
    }
    if (name == "board-sublayer" && words.size() == 3) {
        long long layer = 0;
        long long sublayer = 0;
        if (ToInt(words[1], -32768, 32767, layer) && ToInt(words[2], -32768, 32767, sublayer)) {
            qzk::ecad::SublayerPCB_CVSet set;
            api_.GetColorVisInfo(set);
            auto const found = set.find(qzk::ecad::SublayerPCB_CV(
                static_cast<short>(layer), static_cast<short>(sublayer), 0, false));
            return found == set.end() ? std::string("none") : Look(found->color, found->visible);
        }
    }
    if (name == "sheet-sublayer" && words.size() == 2) {
        long long layer = 0;
        if (ToInt(words[1], -32768, 32767, layer)) {
            qzkapp::ecad::SchSceneHelper::SublayerMap map;
            api_.GetSublayerColorVisInfo(map);
            auto const found = map.find(static_cast<short>(layer));
            return found == map.end() ? std::string("none")
                                      : Look(found->second.color, found->second.visible);
        }
    }
    if (name == "sheet" && words.size() == 1) {
        return std::to_string(qzref::Inspect(*sheets_).GetPage());
    }
    if (name == "isolated" && words.size() == 1) {
        return std::to_string(api_.GetIsolateCount());
    }
    if (name == "undo" && words.size() == 1) {
        return std::to_string(qzref::UndoControl::GetUndoCount());
    }
    if (name == "redo" && words.size() == 1) {
        return std::to_string(qzref::UndoControl::GetRedoCount());
    }
    error = "one of: designs, board-order, schematic-order, inverted, flipped, "
            "board-sublayer LAYER SUBLAYER, sheet-sublayer LAYER, sheet, isolated, undo, redo";
    return std::nullopt;
}

std::string BoardSchematicSession::Rows() const {
    std::string out;
    qzk::ecad::SublayerPCB_CVSet set;
    api_.GetColorVisInfo(set);
    for (auto const& entry : set) {
        char line[200];
        std::snprintf(line, sizeof line, "board %4d,%-5d %-20s %s\n", entry.layer, entry.sublayer,
                      Narrow(api_.GetSublayerLabel(entry.layer, entry.sublayer)).c_str(),
                      Look(entry.color, entry.visible).c_str());
        out += line;
    }
    qzkapp::ecad::SchSceneHelper::SublayerMap map;
    api_.GetSublayerColorVisInfo(map);
    for (auto const& [layer, info] : map) {
        char line[200];
        std::snprintf(line, sizeof line, "sheet %4d       %-20s %s\n", layer,
                      Narrow(api_.GetLayerName(layer)).c_str(),
                      Look(info.color, info.visible).c_str());
        out += line;
    }
    return out;
}

bool BoardSchematicSession::RenderTo(std::string const& path, std::string& why) const {
    qzref::Renderer::View view;
    view.flip = api_.GetFlip();
    view.rotation = api_.GetRotation();
    return qzref::Renderer::RenderBoardSchematic(*scene_, qzref::Inspect(*sheets_).GetPage(), view,
                                                 path, why);
}

} // namespace qzhost
