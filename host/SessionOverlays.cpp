// The board session's overlays, images and crosshair.
#include "Session.h"

#include "board/PCBScene.h"
#include "dg/DPoint2D.h"
#include "du/StringConversion.h"
#include "qzk/Operation.h"
#include "qzk/ecad/EcadPCBData.h"
#include "qzk/ecad/GerberPrefs.h"
#include "qzk/ecad/GroupCVInfoSet.h"
#include "qzk/ecad/OverlayPrefs.h"
#include "qzk/ecad/SublayerPCB_CVSet.h"
#include "qzref/DesignFile.h"
#include "qzref/Inspect.h"

#include <algorithm>
#include <filesystem>

namespace qzhost {
namespace {

using AnnoRows = std::vector<qzk::ecad::AnnoCVInfo>;

bool ToDouble(std::string const& text, double& out) {
    try {
        std::size_t used = 0;
        out = std::stod(text, &used);
        return used == text.size();
    } catch (std::exception const&) {
        return false;
    }
}

} // namespace

bool Session::Overlay(Call const& call) {
    char const* const usage = "add FILE [NAME], rename NAME, rotate DEGREES, flip h|v, remove "
                              "[NAME], color NAME WORD or visible NAME yes|no";
    if (!call.Count(1, 3, usage)) {
        return false;
    }
    std::string const& verb = call.words[1].text;
    if (verb == "add") {
        if (!call.Count(2, 3, "overlay add FILE [NAME]")) {
            return false;
        }
        std::filesystem::path file(call.words[2].text);
        if (file.is_relative() && !designDir_.empty() &&
            std::filesystem::exists(std::filesystem::path(designDir_) / file)) {
            file = std::filesystem::path(designDir_) / file;
        }
        auto const read = qzref::ReadDesignFile(file.string(), {}, "overlay");
        auto const film = du::DynamicCast<qzk::ecad::EcadPCBData>(read.data);
        if (!film) {
            return call.Fail(2, "cannot read the overlay: " + read.errorText);
        }
        std::string const name = call.words.size() > 3 ? call.words[3].text : file.stem().string();
        qzk::ecad::GerberPrefs gerber;
        gerber.Init();
        qzk::ecad::OverlayPrefs placing;
        placing.Init();
        api_.OverlayCreated(film, du::Utf8ToWideStr(name), gerber, placing, du::Symbol("gerber"),
                            false);
        return true;
    }
    if (verb == "rename") {
        if (!call.Count(2, 2, "overlay rename NAME")) {
            return false;
        }
        api_.RenameCurOverlay(du::Utf8ToWideStr(call.words[2].text));
        return true;
    }
    if (verb == "rotate") {
        double degrees = 0;
        if (!call.Count(2, 2, "overlay rotate DEGREES")) {
            return false;
        }
        if (!ToDouble(call.words[2].text, degrees)) {
            return call.Fail(2, "expected an angle in degrees, not '" + call.words[2].text + "'");
        }
        api_.RotateCurOverlay(degrees);
        return true;
    }
    if (verb == "flip") {
        if (!call.Count(2, 2, "overlay flip h|v")) {
            return false;
        }
        std::string const& way = call.words[2].text;
        if (way == "h") {
            api_.FlipHorzCurOverlay();
        } else if (way == "v") {
            api_.FlipVertCurOverlay();
        } else {
            return call.Fail(2, "expected h or v, not '" + way + "'");
        }
        return true;
    }
    if (verb == "remove") {
        if (call.words.size() == 2) {
            api_.RemoveCurOverlay();
            return true;
        }
        uint64 const id = api_.GetOverlayByName(du::Utf8ToWideStr(call.words[2].text));
        if (id == 0) {
            return call.Fail(2, "no overlay named '" + call.words[2].text + "'");
        }
        api_.RemoveOverlay(id);
        return true;
    }
    if (verb == "color" || verb == "colour" || verb == "visible") {
        return SetAnnotationRow(call, true);
    }
    return call.Fail(1, std::string("expected ") + usage + ", not '" + verb + "'");
}

bool Session::Image(Call const& call) {
    char const* const usage = "color NAME WORD or visible NAME yes|no";
    if (!call.Count(3, 3, usage)) {
        return false;
    }
    std::string const& verb = call.words[1].text;
    if (verb != "color" && verb != "colour" && verb != "visible") {
        return call.Fail(1, std::string("expected ") + usage + ", not '" + verb + "'");
    }
    return SetAnnotationRow(call, false);
}

bool Session::SetAnnotationRow(Call const& call, bool overlays) {
    char const* const what = overlays ? "overlay" : "image";
    if (!call.Count(3, 3,
                    overlays ? "overlay color|visible NAME VALUE"
                             : "image color|visible NAME VALUE")) {
        return false;
    }
    AnnoRows overlayRows;
    AnnoRows imageRows;
    api_.GetOverlayColorVisInfo(overlayRows);
    api_.GetImageColorVisInfo(imageRows);
    AnnoRows& rows = overlays ? overlayRows : imageRows;
    std::wstring const name = du::Utf8ToWideStr(call.words[2].text);
    auto const row =
        std::find_if(rows.begin(), rows.end(),
                     [&name](qzk::ecad::AnnoCVInfo const& r) { return r.name == name; });
    if (row == rows.end()) {
        return call.Fail(2, std::string("no ") + what + " named '" + call.words[2].text + "'");
    }
    std::string const& value = call.words[3].text;
    if (call.words[1].text == "visible") {
        if (value != "yes" && value != "no") {
            return call.Fail(3, "expected yes or no, not '" + value + "'");
        }
        row->visible = value == "yes";
    } else {
        long long word = 0;
        if (!ToInt(value, 0, 0xFFFFFFFFLL, word)) {
            return call.Fail(3, "expected a colour word such as 0x010000FF, not '" + value + "'");
        }
        row->color = static_cast<unsigned int>(word);
    }
    qzk::ecad::GroupCVInfoSet groups(false);
    api_.GetGroupColorVisInfo(groups);
    qzk::ecad::SublayerPCB_CVSet sublayers;
    api_.GetColorVisInfo(sublayers);
    auto const op = NewOperation(overlays ? "Overlay colour" : "Image colour");
    api_.SetFullColorVisInfo(groups, sublayers, overlayRows, imageRows, op,
                             qzkapp::ecad::ChangeSourceScene);
    // A value the row had already changes nothing and leaves nothing to undo.
    if (qzref::Inspect(*op).GetStepCount() != 0) {
        Record(op);
    }
    return true;
}

bool Session::Crosshair(Call const& call) {
    char const* const usage = "on, off, or at X Y";
    if (!call.Count(1, 3, usage)) {
        return false;
    }
    std::string const& verb = call.words[1].text;
    if (verb == "on" || verb == "off") {
        if (!call.Count(1, 1, verb == "on" ? "crosshair on" : "crosshair off")) {
            return false;
        }
        api_.SetSelectCrossHair(verb == "on");
        return true;
    }
    if (verb == "at") {
        double x = 0;
        double y = 0;
        if (!call.Count(3, 3, "crosshair at X Y")) {
            return false;
        }
        if (!ToDouble(call.words[2].text, x)) {
            return call.Fail(2, "expected a number, not '" + call.words[2].text + "'");
        }
        if (!ToDouble(call.words[3].text, y)) {
            return call.Fail(3, "expected a number, not '" + call.words[3].text + "'");
        }
        api_.SetCrosshairPosition(dg::DPoint2D(x, y));
        return true;
    }
    return call.Fail(1, std::string("expected ") + usage + ", not '" + verb + "'");
}

} // namespace qzhost
