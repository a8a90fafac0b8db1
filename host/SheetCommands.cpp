#include "SheetCommands.h"

#include "dg/Location.h"
#include "qzk/ecad/BaseView.h"
#include "qzref/Inspect.h"
#include "schematic/SheetViewStateHolder.h"

#include <sstream>

namespace qzhost {

namespace {

std::string Number(double value) {
    std::ostringstream out;
    out << value;
    return out.str();
}

} // namespace

SheetCommands::SheetCommands(qzkapp::ecad::SheetViewStateHolder& holder,
                             du::SmartPtr<qzk::ecad::BaseView> view,
                             std::function<unsigned int()> count,
                             std::function<std::string(unsigned int)> name)
    : holder_(holder), view_(std::move(view)), count_(std::move(count)), name_(std::move(name)) {}

unsigned int SheetCommands::ShownSheet() const {
    return qzref::Inspect(*view_).GetPage();
}

bool SheetCommands::SheetNumber(ScriptRunner::Call const& call, std::size_t word,
                                short& out) const {
    long long sheet = 0;
    if (!ToInt(call.words[word].text, 0, 32767, sheet)) {
        return call.Fail(word,
                         "expected a sheet number from 0, not '" + call.words[word].text + "'");
    }
    if (static_cast<unsigned long long>(sheet) >= count_()) {
        return call.Fail(word, "no sheet " + call.words[word].text + "; the design has " +
                                   std::to_string(count_()));
    }
    out = static_cast<short>(sheet);
    return true;
}

bool SheetCommands::Sheet(ScriptRunner::Call const& call) const {
    char const* const usage = "go SHEET, preview SHEET or preview end";
    if (!call.Count(2, 2, usage)) {
        return false;
    }
    std::string const& verb = call.words[1].text;
    if (verb == "go") {
        short sheet = 0;
        if (!SheetNumber(call, 2, sheet)) {
            return false;
        }
        holder_.PageNav(sheet, view_);
        return true;
    }
    if (verb == "preview") {
        short sheet = -1;
        if (call.words[2].text != "end" && !SheetNumber(call, 2, sheet)) {
            return false;
        }
        // A negative sheet ends the preview.
        holder_.PreviewPageNav(sheet, view_);
        return true;
    }
    return call.Fail(1, std::string("expected ") + usage + ", not '" + verb + "'");
}

bool SheetCommands::Pan(ScriptRunner::Call const& call) const {
    if (!call.Count(3, 3, "X Y WIDTH (millimetres)")) {
        return false;
    }
    double values[3] = {};
    for (std::size_t i = 1; i <= 3; ++i) {
        try {
            std::size_t used = 0;
            values[i - 1] = std::stod(call.words[i].text, &used);
            if (used != call.words[i].text.size()) {
                throw std::invalid_argument("trailing");
            }
        } catch (std::exception const&) {
            return call.Fail(i, "expected a number, not '" + call.words[i].text + "'");
        }
    }
    if (!(values[2] > 0.0)) {
        return call.Fail(3, "expected a width above 0, not '" + call.words[3].text + "'");
    }
    // What the user's pan and zoom does to the view; the layer reads it back when the sheet
    // changes.
    view_->StoreLocation(dg::Location(dg::DPoint2D(values[0], values[1]), values[2]));
    view_->SetOrthoWidth(values[2]);
    return true;
}

std::optional<std::string> SheetCommands::Query(std::vector<std::string> const& words) const {
    std::string const name = words.empty() ? std::string() : words[0];
    if (name == "sheets" && words.size() == 1) {
        std::string out;
        for (unsigned int sheet = 0; sheet < count_(); ++sheet) {
            out += (out.empty() ? "" : ", ") + std::to_string(sheet) + " " + name_(sheet);
        }
        return out.empty() ? "none" : out;
    }
    if (name == "sheet" && words.size() == 1) {
        unsigned int const sheet = ShownSheet();
        return std::to_string(sheet) + " " + name_(sheet);
    }
    if (name == "view" && words.size() == 1) {
        dg::Location const location = qzref::Inspect(*view_).GetLocation();
        double width = 0.0;
        view_->GetOrthoWidth(width);
        return "sheet " + std::to_string(ShownSheet()) + " centre " + Number(location.center.x) +
               " " + Number(location.center.y) + " width " + Number(width);
    }
    return std::nullopt;
}

} // namespace qzhost
