#include "OverlayCompareSession.h"

#include "compare/PCBOvlCompareScene.h"
#include "dg/Color.h"
#include "du/StringConversion.h"
#include "qzk/Operation.h"
#include "qzk/ecad/AnnoCVInfo.h"
#include "qzk/ecad/GroupCVInfoSet.h"
#include "qzk/ecad/PCBOvlCompareScene.h"
#include "qzk/ecad/SublayerPCB_CVSet.h"
#include "qzref/Inspect.h"
#include "qzref/LoaderControl.h"
#include "qzref/Messages.h"
#include "qzref/Renderer.h"
#include "qzref/UndoControl.h"

#include <stdexcept>

namespace qzhost {

namespace {

using AnnoRows = std::vector<qzk::ecad::AnnoCVInfo>;

bool ToDegrees(std::string const& text, double& out) {
    try {
        std::size_t used = 0;
        out = std::stod(text, &used);
        return used == text.size();
    } catch (std::exception const&) {
        return false;
    }
}

std::string Side(bool present, bool overlay) {
    return !present ? "nothing" : overlay ? "overlay" : "board";
}

} // namespace

OverlayCompareSession::Entry<OverlayCompareSession> const OverlayCompareSession::kCommands[] = {
    {"sublayer", &OverlayCompareSession::Sublayer},
    {"overlay", &OverlayCompareSession::Overlay},
    {"compare-colors", &OverlayCompareSession::CompareColors},
    {"defaults", &OverlayCompareSession::Defaults},
};

OverlayCompareSession::OverlayCompareSession(qzkapp::ecad::PCBOvlCompareScene& api,
                                             du::SmartPtr<qzk::ecad::PCBOvlCompareScene> scene,
                                             std::FILE* out)
    : ScriptRunner(out), api_(api), scene_(std::move(scene)) {}

std::vector<std::string> OverlayCompareSession::CommandNames() {
    return NamesOf(kCommands);
}

bool OverlayCompareSession::RunSceneCommand(Call const& call, bool& found) {
    return Dispatch(*this, kCommands, call, found);
}

du::SmartPtr<qzk::Operation> OverlayCompareSession::NewOperation(char const* name) const {
    return du::MakeCounted<qzk::Operation>(name, du::SmartPtr<qzk::Scene>(scene_), false);
}

bool OverlayCompareSession::Sublayer(Call const& call) {
    qzk::ecad::SublayerPCB_CVSet set;
    api_.GetColorVisInfo(set);
    if (!EditBoardSublayer(call, set)) {
        return false;
    }
    auto const op = NewOperation("Sublayer colour");
    api_.SetColorVisInfo(set, op, qzkapp::ecad::ChangeSourceScene);
    qzk::RecordOperation(op);
    return true;
}

bool OverlayCompareSession::Overlay(Call const& call) {
    char const* const usage = "color WORD, visible yes|no, rotate DEGREES, flip h|v or reload";
    if (!call.Count(1, 2, usage)) {
        return false;
    }
    std::string const& verb = call.words[1].text;
    if (verb == "reload") {
        if (!call.Count(1, 1, "overlay reload")) {
            return false;
        }
        // As a viewer waits for the film it asked for; one that cannot be read is told by the
        // load notice and leaves no overlay.
        api_.LoadOverlay();
        qzref::LoaderControl::WaitUntilIdle();
        qzref::Messages::PumpUntilIdle();
        return true;
    }
    if (!call.Count(2, 2, usage)) {
        return false;
    }
    std::string const& value = call.words[2].text;
    if (verb == "rotate") {
        double degrees = 0;
        if (!ToDegrees(value, degrees)) {
            return call.Fail(2, "expected an angle in degrees, not '" + value + "'");
        }
        api_.RotateOverlay(degrees);
        return true;
    }
    if (verb == "flip") {
        if (value == "h") {
            api_.FlipHorzOverlay();
        } else if (value == "v") {
            api_.FlipVertOverlay();
        } else {
            return call.Fail(2, "expected h or v, not '" + value + "'");
        }
        return true;
    }
    AnnoRows overlays;
    api_.GetOverlayColorVisInfo(overlays);
    if (overlays.empty()) {
        return call.Fail(1, "no overlay on this board (see print rows)");
    }
    if (verb == "color" || verb == "colour") {
        long long word = 0;
        if (!ToInt(value, 0, 0xFFFFFFFFLL, word)) {
            return call.Fail(2, "expected a colour word such as 0x010000FF, not '" + value + "'");
        }
        overlays.front().color = static_cast<unsigned int>(word);
    } else if (verb == "visible") {
        if (value != "yes" && value != "no") {
            return call.Fail(2, "expected yes or no, not '" + value + "'");
        }
        overlays.front().visible = value == "yes";
    } else {
        return call.Fail(1, std::string("expected ") + usage + ", not '" + verb + "'");
    }
    // Through the full set, as a viewer's colour panel hands back all it shows.
    qzk::ecad::SublayerPCB_CVSet sublayers;
    api_.GetColorVisInfo(sublayers);
    auto const op = NewOperation("Overlay colour");
    api_.SetFullColorVisInfo(qzk::ecad::GroupCVInfoSet(false), sublayers, overlays, AnnoRows(), op,
                             qzkapp::ecad::ChangeSourceScene);
    qzk::RecordOperation(op);
    return true;
}

bool OverlayCompareSession::CompareColors(Call const& call) {
    char const* const usage = "FIRST SECOND: the colour words of what only the first and only "
                              "the second design has";
    if (!call.Count(2, 2, usage)) {
        return false;
    }
    long long words[2] = {0, 0};
    for (std::size_t i = 0; i < 2; ++i) {
        if (!ToInt(call.words[i + 1].text, 0, 0xFFFFFFFFLL, words[i])) {
            return call.Fail(i + 1, "expected a colour word such as 0x010000FF, not '" +
                                        call.words[i + 1].text + "'");
        }
    }
    // The user's change in the viewer's preferences: the kernel stores it and tells the scene.
    qzref::Inspect(*scene_).ChangeItemColors(dg::Color(static_cast<unsigned int>(words[0]), true),
                                             dg::Color(static_cast<unsigned int>(words[1]), true),
                                             scene_->GetCommonItemColor());
    qzref::Messages::PumpUntilIdle();
    return true;
}

bool OverlayCompareSession::Defaults(Call const& call) {
    if (!call.Count(0, 0, "no words after defaults")) {
        return false;
    }
    auto const op = NewOperation("Default colours");
    api_.LoadColorVisInfo(op);
    qzk::RecordOperation(op);
    return true;
}

std::string OverlayCompareSession::OverlayRow() const {
    AnnoRows overlays;
    api_.GetOverlayColorVisInfo(overlays);
    if (overlays.empty()) {
        return "none";
    }
    auto const& row = overlays.front();
    return du::WideStrToUtf8(row.name) + " " + Hex(row.color) +
           (row.visible ? " visible" : " hidden");
}

std::vector<std::string> OverlayCompareSession::QueryNames() {
    return {"designs", "sublayer", "overlay", "undo", "redo"};
}

std::optional<std::string> OverlayCompareSession::Query(std::vector<std::string> const& words,
                                                        std::string& error) const {
    std::string const name = words.empty() ? std::string() : words[0];
    if (name == "designs" && words.size() == 1) {
        auto const& first = api_.GetFirstDesignData();
        auto const& second = api_.GetSecondDesignData();
        return "first " + Side(static_cast<bool>(first), first && first->IsOverlayData()) +
               ", second " + Side(static_cast<bool>(second), second && second->IsOverlayData());
    }
    if (name == "sublayer" && words.size() == 3) {
        long long layer = 0;
        long long sublayer = 0;
        if (!ToInt(words[1], -32768, 32767, layer) || !ToInt(words[2], -32768, 32767, sublayer)) {
            error = "sublayer takes a layer and a sublayer handle";
            return std::nullopt;
        }
        qzk::ecad::SublayerPCB_CVSet set;
        api_.GetColorVisInfo(set);
        auto const found = set.find(qzk::ecad::SublayerPCB_CV(
            static_cast<short>(layer), static_cast<short>(sublayer), 0, false));
        if (found == set.end()) {
            return std::string("none");
        }
        return Hex(found->color) + (found->visible ? " visible" : " hidden");
    }
    if (name == "overlay" && words.size() == 1) {
        return OverlayRow();
    }
    if (name == "undo" && words.size() == 1) {
        return std::to_string(qzref::UndoControl::GetUndoCount());
    }
    if (name == "redo" && words.size() == 1) {
        return std::to_string(qzref::UndoControl::GetRedoCount());
    }
    error = "one of: designs, sublayer LAYER SUBLAYER, overlay, undo, redo";
    return std::nullopt;
}

std::string OverlayCompareSession::Rows() const {
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
    out += "overlay: " + OverlayRow() + "\n";
    return out;
}

bool OverlayCompareSession::RenderTo(std::string const& path, std::string& why) const {
    qzref::Renderer::View view;
    view.flip = api_.GetFlip();
    view.rotation = api_.GetRotation();
    return qzref::Renderer::Render(*scene_, view, path, why);
}

} // namespace qzhost
