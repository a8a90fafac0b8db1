#include "ScenePrinter.h"

#include "ScriptRunner.h"

#include "board/PCBScene.h"
#include "du/StringConversion.h"
#include "qzk/SelectionItem.h"
#include "qzk/SelectionManager.h"
#include "qzk/View.h"
#include "qzk/ecad/GroupCVInfoSet.h"
#include "qzk/ecad/HighlightItem.h"
#include "qzk/ecad/IsolateItem.h"
#include "qzk/ecad/ItemContainer.h"
#include "qzk/ecad/PCBScene.h"
#include "qzk/ecad/SublayerPCB_CVSet.h"
#include "qzref/DesignObjects.h"
#include "qzref/UndoControl.h"
#include "qzref/ViewInspector.h"

#include "qzref/Inspect.h"
#include <algorithm>
#include <cstdio>
#include <set>

namespace qzhost {

namespace {

std::string Join(std::vector<std::string> const& words) {
    std::string out;
    for (auto const& word : words) {
        out += out.empty() ? "" : " ";
        out += word;
    }
    return out.empty() ? "none" : out;
}

std::string JoinWith(std::vector<std::string> const& parts, char const* separator) {
    std::string out;
    for (auto const& part : parts) {
        out += out.empty() ? "" : separator;
        out += part;
    }
    return out;
}

template <class Container> std::string Names(Container const& items) {
    std::vector<std::string> names;
    for (auto const& item : items) {
        names.push_back(qzref::DesignObjects::NameOf(item.object));
    }
    std::sort(names.begin(), names.end());
    return Join(names);
}

bool ToShort(std::string const& text, short& out) {
    try {
        std::size_t used = 0;
        int const value = std::stoi(text, &used);
        if (used != text.size() || value < -32768 || value > 32767) {
            return false;
        }
        out = static_cast<short>(value);
        return true;
    } catch (std::exception const&) {
        return false;
    }
}

char const* const kLookLayers[] = {"selection", "highlight", "group"};

} // namespace

ScenePrinter::ScenePrinter(qzkapp::ecad::PCBScene& api, du::SmartPtr<qzk::ecad::PCBScene> scene)
    : api_(api), scene_(std::move(scene)) {}

std::vector<std::string> ScenePrinter::QueryNames() {
    return {"draw-order", "highlights", "isolated",  "orientation",  "sublayer",
            "group",      "look",       "selection", "preselection", "undo",
            "redo",       "overlays",   "overlay",   "images",       "crosshair"};
}

std::optional<std::string> ScenePrinter::Query(std::vector<std::string> const& words,
                                               std::string& error) const {
    if (words.empty()) {
        error = "a query: one of " + Join(QueryNames());
        return std::nullopt;
    }
    std::string const& what = words[0];
    auto const arguments = words.size() - 1;
    auto plain = [&]() -> bool {
        if (arguments != 0) {
            error = "'" + what + "' takes no arguments";
            return false;
        }
        return true;
    };
    if (what == "draw-order") {
        if (!plain()) {
            return std::nullopt;
        }
        std::vector<short> order;
        api_.GetDrawOrder(order);
        std::vector<std::string> words;
        words.reserve(order.size());
        for (short layer : order) {
            words.push_back(std::to_string(layer));
        }
        return Join(words) + (api_.GetInvertLayers() ? " (inverted)" : "");
    }
    if (what == "highlights") {
        if (!plain()) {
            return std::nullopt;
        }
        qzk::ecad::ItemContainer<qzk::ecad::HighlightItem> items;
        api_.GetHighlights(items);
        return Names(items);
    }
    if (what == "isolated") {
        if (!plain()) {
            return std::nullopt;
        }
        qzk::ecad::ItemContainer<qzk::ecad::IsolateItem> items;
        api_.GetItems(items);
        return Names(items);
    }
    if (what == "orientation") {
        if (!plain()) {
            return std::nullopt;
        }
        return std::string(api_.GetFlip() ? "flipped" : "front") + " rotation " +
               std::to_string(api_.GetRotation());
    }
    if (what == "undo" || what == "redo") {
        if (!plain()) {
            return std::nullopt;
        }
        return std::to_string(what == "undo" ? qzref::UndoControl::GetUndoCount()
                                             : qzref::UndoControl::GetRedoCount());
    }
    if (what == "group") {
        if (arguments != 1) {
            error = "'group' takes one group name";
            return std::nullopt;
        }
        qzk::ecad::GroupCVInfoSet set(false);
        api_.GetGroupColorVisInfo(set);
        auto const found = set.find(qzk::ecad::GroupCVInfo(words[1].c_str()));
        if (found == set.end()) {
            return std::string("none");
        }
        return Hex(found->color) + (found->visible ? " visible" : " hidden");
    }
    if (what == "sublayer") {
        short layer = 0;
        short sublayer = 0;
        if (arguments != 2 || !ToShort(words[1], layer) || !ToShort(words[2], sublayer)) {
            error = "'sublayer' takes a layer and a sublayer handle";
            return std::nullopt;
        }
        qzk::ecad::SublayerPCB_CVSet set;
        api_.GetColorVisInfo(set);
        auto const found = set.find(qzk::ecad::SublayerPCB_CV(layer, sublayer, 0, false));
        if (found == set.end()) {
            return std::string("none");
        }
        return Hex(found->color) + (found->visible ? " visible" : " hidden");
    }
    if (what == "selection" || what == "preselection") {
        if (!plain()) {
            return std::nullopt;
        }
        du::SmartPtr<qzk::SelectionManager> manager;
        scene_->GetSelectionManager(manager);
        std::vector<std::string> names;
        for (auto const& item : manager->GetItems(what == "selection" ? 0 : 1)) {
            names.push_back(item->GetName());
        }
        std::sort(names.begin(), names.end());
        return Join(names);
    }
    if (what == "look") {
        if (arguments != 1) {
            error = "'look' takes one object name";
            return std::nullopt;
        }
        std::vector<std::string> parts;
        for (int layer = 0; layer < 3; ++layer) {
            std::string part = std::string(kLookLayers[layer]) + " none";
            for (auto const& [item, look] : qzref::Inspect(*scene_).GetLooks(layer)) {
                if (qzref::DesignObjects::NameOf(item.object) == words[1]) {
                    part = std::string(kLookLayers[layer]) + " " + Hex(look.color);
                }
            }
            parts.push_back(part);
        }
        return Join(parts);
    }
    if (what == "overlays" || what == "images") {
        if (!plain()) {
            return std::nullopt;
        }
        std::vector<qzk::ecad::AnnoCVInfo> rows;
        if (what == "overlays") {
            api_.GetOverlayColorVisInfo(rows);
        } else {
            api_.GetImageColorVisInfo(rows);
        }
        // Ids are drawn at random; a row is told by its name.
        std::vector<std::string> parts;
        parts.reserve(rows.size());
        for (auto const& row : rows) {
            parts.push_back(du::WideStrToUtf8(row.name) + " " + Hex(row.color) +
                            (row.visible ? " visible" : " hidden"));
        }
        return parts.empty() ? std::string("none") : JoinWith(parts, ", ");
    }
    if (what == "overlay") {
        if (!plain()) {
            return std::nullopt;
        }
        return api_.GetCurOverlay() == 0 ? std::string("none")
                                         : du::WideStrToUtf8(api_.GetCurOverlayName());
    }
    if (what == "crosshair") {
        if (!plain()) {
            return std::nullopt;
        }
        du::SmartPtr<qzk::View> const view = scene_->GetView(0);
        if (!view) {
            return std::string("no view");
        }
        auto const inspector = qzref::Inspect(*view);
        void* const object = inspector.GetCrosshairObject();
        return std::string(api_.GetSelectCrossHair() ? "on" : "off") +
               (inspector.GetCrosshairVisibility() ? " shown" : " hidden") + " at " +
               (object != nullptr ? qzref::DesignObjects::NameOf(object) : std::string("none"));
    }
    error = "an unknown query '" + what + "'; one of " + Join(QueryNames());
    return std::nullopt;
}

std::string ScenePrinter::Rows() const {
    qzk::ecad::SublayerPCB_CVSet set;
    api_.GetColorVisInfo(set);
    std::string out;
    char row[160];
    std::snprintf(row, sizeof row, "%6s %8s  %-20s %-10s %s\n", "layer", "sublayer", "label",
                  "colour", "visible");
    out += row;
    for (auto const& entry : set) {
        std::string const label =
            du::WideStrToUtf8(api_.GetSublayerLabel(entry.layer, entry.sublayer));
        std::snprintf(row, sizeof row, "%6d %8d  %-20s 0x%08X %s\n", entry.layer, entry.sublayer,
                      label.c_str(), entry.color, entry.visible ? "yes" : "no");
        out += row;
    }
    return out;
}

} // namespace qzhost
