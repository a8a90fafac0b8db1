#include "qzref/GerberReader.h"

#include "qzref/gerber/GerberMacro.h"
#include "qzref/gerber/GerberOutlines.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <memory>
#include <numbers>
#include <optional>
#include <unordered_map>
#include <utility>
#include <vector>

namespace qzref {

namespace {

using gerber::Points;

constexpr double kPi = std::numbers::pi;
constexpr double kDegree = kPi / 180;
// Step and repeat multiplies what a block draws; a film of a few bytes must not ask for more
// shapes than a real panel holds.
constexpr std::size_t kMaxRepeatedShapes = std::size_t{1} << 26;

struct Aperture {
    enum Kind { Circle, Rect, Obround, Polygon, Macro };
    Kind kind = Circle;
    double width = 0;  // mm: the circle's diameter, the others' outer width
    double height = 0; // mm: rectangles and obrounds
    bool hasHole = false;
    DesignShape flash; // about the flash point
    std::string function;
};

void TranslateShape(DesignShape& shape, double dx, double dy) {
    auto& p = shape.points;
    switch (shape.kind) {
    case DesignShape::Arc:
    case DesignShape::Circle:
    case DesignShape::Pad:
        if (p.size() >= 2) {
            p[0] += dx;
            p[1] += dy;
        }
        break;
    default:
        gerber::Translate(p, dx, dy);
    }
}

// A pad's outline as points.
Points OutlineOf(DesignShape const& pad) {
    auto const& p = pad.points;
    return gerber::Rectangle(p[0], p[1], p[2], p[3]);
}

bool StartsWith(std::string_view text, std::string_view prefix) {
    return text.substr(0, prefix.size()) == prefix;
}

std::optional<double> Number(std::string_view text) {
    double value = 0;
    char const* end = text.data() + text.size();
    char const* begin = text.data();
    if (begin != end && *begin == '+') {
        ++begin;
    }
    auto const [ptr, ec] = std::from_chars(begin, end, value);
    if (ec != std::errc() || ptr != end || !std::isfinite(value)) {
        return std::nullopt;
    }
    return value;
}

std::vector<std::string_view> Split(std::string_view text, char at) {
    std::vector<std::string_view> out;
    std::size_t start = 0;
    for (;;) {
        std::size_t const end = text.find(at, start);
        out.push_back(text.substr(start, end == std::string_view::npos ? end : end - start));
        if (end == std::string_view::npos) {
            return out;
        }
        start = end + 1;
    }
}

std::string Join(std::vector<std::string_view> const& fields, std::size_t from) {
    std::string out;
    for (std::size_t i = from; i < fields.size(); ++i) {
        if (i > from) {
            out += ',';
        }
        out += fields[i];
    }
    return out;
}

class Parser {
public:
    Parser(std::string_view text, GerberReader::Sink const& sink,
           std::function<void(int)> const& progress, std::map<std::string, std::string>& file)
        : text_(text), sink_(sink), progress_(progress), fileAttributes_(file) {}

    void Run() {
        Report(0);
        std::size_t nextReport = kReportEvery;
        for (;;) {
            SkipSpace();
            if (at_ >= text_.size()) {
                // Reported at the last command read.
                command_ = {};
                Fail("the film ends without M02 (it may be cut short)");
            }
            if (at_ >= nextReport) {
                Report(static_cast<int>(at_ * 100 / text_.size()));
                nextReport = at_ + kReportEvery;
            }
            commandLine_ = line_;
            if (text_[at_] == '%') {
                ++at_;
                Extended();
            } else if (Function(Word())) {
                break;
            }
        }
        Report(100);
    }

private:
    static constexpr std::size_t kReportEvery = std::size_t{1} << 20;

    void Report(int percent) {
        if (progress_) {
            progress_(percent);
        }
    }

    [[noreturn]] void Fail(std::string const& why) const {
        std::string shown(command_.substr(0, 40));
        if (command_.size() > 40) {
            shown += "...";
        }
        throw GerberReader::Error(commandLine_, shown, why);
    }

    void SkipSpace() {
        while (at_ < text_.size()) {
            char const c = text_[at_];
            if (c == '\n') {
                ++line_;
            } else if (c != '\r' && c != ' ' && c != '\t') {
                return;
            }
            ++at_;
        }
    }

    // The next word up to its '*', line breaks inside it left out; valid until the next call.
    std::string_view Word() {
        std::size_t const start = at_;
        void const* star = std::memchr(text_.data() + start, '*', text_.size() - start);
        if (star == nullptr) {
            command_ = text_.substr(start, 40);
            Fail("the film ends inside a command (it is cut short)");
        }
        std::size_t const end = static_cast<char const*>(star) - text_.data();
        at_ = end + 1;
        std::string_view word = text_.substr(start, end - start);
        if (word.find_first_of("\r\n%") != std::string_view::npos) {
            cleaned_.clear();
            for (char c : word) {
                if (c == '\n') {
                    ++line_;
                } else if (c == '%') {
                    command_ = word;
                    Fail("a command is not ended by '*'");
                } else if (c != '\r') {
                    cleaned_ += c;
                }
            }
            word = cleaned_;
        }
        command_ = word;
        return word;
    }

    void Extended() {
        std::vector<std::string> words;
        for (;;) {
            SkipSpace();
            if (at_ >= text_.size()) {
                command_ = words.empty() ? std::string_view("%") : std::string_view(words[0]);
                Fail("the film ends inside a %-command (it is cut short)");
            }
            if (text_[at_] == '%') {
                ++at_;
                break;
            }
            words.emplace_back(Word());
        }
        if (words.empty()) {
            return;
        }
        if (StartsWith(words[0], "AM")) {
            command_ = words[0];
            std::string name = words[0].substr(2);
            if (name.empty()) {
                Fail("a macro without a name");
            }
            macros_.insert_or_assign(std::move(name),
                                     std::make_shared<gerber::GerberMacro>(
                                         std::vector<std::string>(words.begin() + 1, words.end())));
            return;
        }
        for (std::string const& word : words) {
            command_ = word;
            Parameter(word);
        }
    }

    void Parameter(std::string_view word) {
        std::string_view const code = word.substr(0, 2);
        std::string_view const rest = word.substr(std::min<std::size_t>(2, word.size()));
        if (code == "FS") {
            Format(rest);
        } else if (code == "MO") {
            if (rest == "MM") {
                unit_ = 1;
            } else if (rest == "IN") {
                unit_ = 25.4;
            } else {
                Fail("units are MM or IN");
            }
        } else if (code == "AD") {
            DefineAperture(rest);
        } else if (code == "LP") {
            if (rest != "D" && rest != "C") {
                Fail("polarity is D or C");
            }
            clear_ = rest == "C";
        } else if (code == "LM") {
            if (rest != "N" && rest != "X" && rest != "Y" && rest != "XY") {
                Fail("mirroring is N, X, Y or XY");
            }
            mirrorX_ = rest == "X" || rest == "XY";
            mirrorY_ = rest == "Y" || rest == "XY";
        } else if (code == "LR") {
            rotation_ = Value(rest, "a rotation");
        } else if (code == "LS") {
            scale_ = Value(rest, "a scale");
            if (scale_ <= 0) {
                Fail("a scale must be positive");
            }
        } else if (code == "SR") {
            StepAndRepeat(rest);
        } else if (code == "TF" || code == "TA" || code == "TO" || code == "TD") {
            Attribute(code, rest);
        } else if (code == "IN" || code == "LN" || word == "IPPOS") {
            // Names of the image and of the layer, and the positive image: nothing to draw.
        } else {
            Fail("an unknown or unsupported command");
        }
    }

    double Value(std::string_view text, char const* what) {
        auto const value = Number(text);
        if (!value) {
            Fail(std::string("expected ") + what + ", not \"" + std::string(text) + "\"");
        }
        return *value;
    }

    void Format(std::string_view rest) {
        // [L|T][A|I]X<int><dec>Y<int><dec>
        std::size_t i = 0;
        trailing_ = false;
        if (i < rest.size() && (rest[i] == 'L' || rest[i] == 'T' || rest[i] == 'D')) {
            trailing_ = rest[i] == 'T';
            ++i;
        }
        if (i < rest.size() && rest[i] == 'I') {
            Fail("incremental coordinates are not supported");
        }
        if (i < rest.size() && rest[i] == 'A') {
            ++i;
        }
        auto const digits = [&](char axis, int& integer, int& decimal) {
            if (i + 3 > rest.size() || rest[i] != axis ||
                std::isdigit(static_cast<unsigned char>(rest[i + 1])) == 0 ||
                std::isdigit(static_cast<unsigned char>(rest[i + 2])) == 0) {
                Fail("expected a format like LAX26Y26");
            }
            integer = rest[i + 1] - '0';
            decimal = rest[i + 2] - '0';
            i += 3;
        };
        digits('X', integerX_, decimalX_);
        digits('Y', integerY_, decimalY_);
        if (i != rest.size() || integerX_ + decimalX_ > 15 || integerY_ + decimalY_ > 15) {
            Fail("expected a format like LAX26Y26");
        }
        formatted_ = true;
    }

    void DefineAperture(std::string_view rest) {
        if (rest.empty() || rest[0] != 'D') {
            Fail("expected an aperture number after ADD");
        }
        std::size_t i = 1;
        while (i < rest.size() && std::isdigit(static_cast<unsigned char>(rest[i])) != 0) {
            ++i;
        }
        int number = 0;
        if (i == 1 || i > 10 ||
            std::from_chars(rest.data() + 1, rest.data() + i, number).ec != std::errc() ||
            number < 10) {
            Fail("an aperture number is 10 or more");
        }
        std::string_view const body = rest.substr(i);
        std::size_t const comma = body.find(',');
        std::string const name(body.substr(0, comma));
        std::vector<double> values;
        if (comma != std::string_view::npos) {
            for (std::string_view field : Split(body.substr(comma + 1), 'X')) {
                values.push_back(Value(field, "a number"));
            }
        }
        Aperture aperture;
        if (auto const function = apertureAttributes_.find("AperFunction");
            function != apertureAttributes_.end()) {
            aperture.function = function->second;
        }
        double const u = unit_;
        auto const need = [&](std::size_t least, std::size_t most) {
            if (values.size() < least || values.size() > most) {
                Fail("aperture " + name + " takes " + std::to_string(least) + " to " +
                     std::to_string(most) + " values");
            }
            for (double v : values) {
                if (v < 0 && name != "P") {
                    Fail("a negative size");
                }
            }
        };
        auto const hole = [&](std::size_t at) { return values.size() > at ? values[at] * u : 0.0; };
        DesignShape& flash = aperture.flash;
        if (name == "C") {
            need(1, 2);
            aperture.kind = Aperture::Circle;
            aperture.width = values[0] * u;
            if (hole(1) > 0 && hole(1) < aperture.width) {
                // A ring is a full circle stroked between the hole and the rim.
                flash.kind = DesignShape::Arc;
                flash.points = {0, 0, (aperture.width + hole(1)) / 4, 0, 360};
                flash.width = (aperture.width - hole(1)) / 2;
            } else if (hole(1) > 0) {
                flash.kind = DesignShape::Polygon; // all hole: nothing to draw
            } else {
                flash.kind = DesignShape::Circle;
                flash.points = {0, 0, aperture.width / 2};
            }
        } else if (name == "R" || name == "O") {
            need(2, 3);
            aperture.kind = name == "R" ? Aperture::Rect : Aperture::Obround;
            aperture.width = values[0] * u;
            aperture.height = values[1] * u;
            double const w = aperture.width;
            double const h = aperture.height;
            if (name == "R" && hole(2) <= 0) {
                flash.kind = DesignShape::Pad;
                flash.points = {0, 0, w, h};
            } else if (hole(2) <= 0) {
                // An obround is a line of its smaller size with round ends: four numbers where
                // an outline would take dozens, and pads are most of a film.
                flash.kind = DesignShape::Line;
                flash.width = std::min(w, h);
                flash.points = w >= h ? Points{-(w - h) / 2, 0, (w - h) / 2, 0}
                                      : Points{0, -(h - w) / 2, 0, (h - w) / 2};
            } else {
                flash.kind = DesignShape::Polygon;
                flash.points = gerber::WithHole(
                    name == "R" ? gerber::Rectangle(0, 0, aperture.width, aperture.height)
                                : gerber::Obround(0, 0, aperture.width, aperture.height),
                    0, 0, hole(2));
            }
        } else if (name == "P") {
            need(2, 4);
            // Checked as a number first: a count beyond an int's range cannot be converted.
            if (values[0] < 0 || !(values[1] >= 3 && values[1] <= 12) ||
                values[1] != std::floor(values[1])) {
                Fail("a polygon aperture has a size and 3 to 12 corners");
            }
            int const corners = static_cast<int>(values[1]);
            aperture.kind = Aperture::Polygon;
            aperture.width = values[0] * u;
            flash.kind = DesignShape::Polygon;
            flash.points =
                gerber::WithHole(gerber::RegularPolygon(0, 0, aperture.width, corners,
                                                        values.size() > 2 ? values[2] : 0.0),
                                 0, 0, hole(3));
        } else {
            auto const macro = macros_.find(name);
            if (macro == macros_.end()) {
                Fail("no aperture macro called \"" + name + "\"");
            }
            aperture.kind = Aperture::Macro;
            try {
                flash = macro->second->Evaluate(values, u);
            } catch (std::invalid_argument const& error) {
                Fail(std::string("macro ") + name + ": " + error.what());
            }
        }
        apertures_.insert_or_assign(number, std::move(aperture));
    }

    void StepAndRepeat(std::string_view rest) {
        FlushRepeat();
        if (rest.empty()) {
            return;
        }
        std::size_t i = 0;
        auto const field = [&](char name) -> std::string_view {
            if (i >= rest.size() || rest[i] != name) {
                Fail("expected a step and repeat like X2Y3I5.0J4.0");
            }
            std::size_t const start = ++i;
            while (i < rest.size() && std::isalpha(static_cast<unsigned char>(rest[i])) == 0) {
                ++i;
            }
            return rest.substr(start, i - start);
        };
        double const x = Value(field('X'), "a count");
        double const y = Value(field('Y'), "a count");
        double const stepX = Value(field('I'), "a step");
        double const stepY = Value(field('J'), "a step");
        if (i != rest.size() || x < 1 || y < 1 || x != std::floor(x) || y != std::floor(y) ||
            x * y > static_cast<double>(kMaxRepeatedShapes)) {
            Fail("expected counts of 1 or more, like X2Y3I5.0J4.0");
        }
        repeatX_ = static_cast<std::size_t>(x);
        repeatY_ = static_cast<std::size_t>(y);
        stepX_ = stepX * unit_;
        stepY_ = stepY * unit_;
        repeating_ = repeatX_ > 1 || repeatY_ > 1;
    }

    // Draws what the open step and repeat block holds at every place of the block and ends it.
    void FlushRepeat() {
        if (!repeating_) {
            return;
        }
        repeating_ = false;
        auto block = std::move(block_);
        block_.clear();
        for (std::size_t y = 0; y < repeatY_; ++y) {
            for (std::size_t x = 0; x < repeatX_; ++x) {
                for (auto const& [shape, names] : block) {
                    DesignShape copy = shape;
                    TranslateShape(copy, stepX_ * static_cast<double>(x),
                                   stepY_ * static_cast<double>(y));
                    sink_(std::move(copy), names);
                }
            }
        }
    }

    void Attribute(std::string_view code, std::string_view rest) {
        std::vector<std::string_view> fields = Split(rest, ',');
        std::string name(fields[0].substr(fields[0].starts_with('.') ? 1 : 0));
        if (code != "TD" && name.empty()) {
            Fail("an attribute without a name");
        }
        if (code == "TF") {
            fileAttributes_[name] = Join(fields, 1);
        } else if (code == "TA") {
            apertureAttributes_[name] = Join(fields, 1);
            regionNames_.function =
                name == "AperFunction" ? Join(fields, 1) : regionNames_.function;
        } else if (code == "TO") {
            if (name == "N") {
                objectNames_.net = Join(fields, 1);
            } else if (name == "C") {
                objectNames_.component = Join(fields, 1);
            } else if (name == "P") {
                objectNames_.component = fields.size() > 1 ? std::string(fields[1]) : "";
                objectNames_.pin = fields.size() > 2 ? std::string(fields[2]) : "";
            }
        } else { // TD
            if (name.empty()) {
                objectNames_ = {};
                apertureAttributes_.clear();
            } else if (name == "N") {
                objectNames_.net.clear();
            } else if (name == "C") {
                objectNames_.component.clear();
            } else if (name == "P") {
                objectNames_.pin.clear();
            } else {
                apertureAttributes_.erase(name);
            }
            if (name.empty() || name == "AperFunction") {
                regionNames_.function.clear();
            }
        }
        UpdateNames();
    }

    void UpdateNames() {
        std::string const function = regionNames_.function;
        regionNames_ = objectNames_;
        regionNames_.function = function;
        std::string const drawFunction = aperture_ != nullptr ? aperture_->function : "";
        drawNames_ = objectNames_;
        drawNames_.function = drawFunction;
    }

    // Returns true at the end of the film (M02).
    bool Function(std::string_view word) {
        if (StartsWith(word, "G04") || StartsWith(word, "G4") || word.empty()) {
            return false; // a comment, or an empty word
        }
        std::size_t i = 0;
        std::optional<double> x, y, iOffset, jOffset;
        int d = -1;
        bool end = false;
        auto const number = [&]() {
            std::size_t const start = i;
            while (i < word.size() && std::isdigit(static_cast<unsigned char>(word[i])) != 0) {
                ++i;
            }
            int value = 0;
            if (i == start || i - start > 6 ||
                std::from_chars(word.data() + start, word.data() + i, value).ec != std::errc()) {
                Fail("an unknown command");
            }
            return value;
        };
        while (i < word.size()) {
            char const c = word[i++];
            switch (c) {
            case 'G':
                Mode(number());
                break;
            case 'X':
                x = Coordinate(word, i, integerX_, decimalX_);
                break;
            case 'Y':
                y = Coordinate(word, i, integerY_, decimalY_);
                break;
            case 'I':
                iOffset = Coordinate(word, i, integerX_, decimalX_);
                break;
            case 'J':
                jOffset = Coordinate(word, i, integerY_, decimalY_);
                break;
            case 'D':
                d = number();
                break;
            case 'M': {
                int const m = number();
                if (m == 2) {
                    end = true;
                } else if (m != 0 && m != 1) {
                    Fail("an unknown command");
                }
                break;
            }
            default:
                Fail("an unknown command");
            }
        }
        bool const moved = x || y || iOffset || jOffset;
        if (d >= 10) {
            auto const found = apertures_.find(d);
            if (found == apertures_.end()) {
                Fail("aperture D" + std::to_string(d) + " is not defined");
            }
            aperture_ = &found->second;
            UpdateNames();
        } else if (d >= 1 && d <= 3) {
            lastOperation_ = d;
            Operate(d, x, y, iOffset, jOffset);
        } else if (d != -1) {
            Fail("an unknown command");
        } else if (moved) {
            // Coordinates alone repeat the last operation, as old films expect.
            if (lastOperation_ == 0) {
                Fail("coordinates without D01, D02 or D03");
            }
            Operate(lastOperation_, x, y, iOffset, jOffset);
        }
        if (end) {
            if (region_) {
                Fail("the film ends inside a region (G36 without G37)");
            }
            FlushRepeat();
        }
        return end;
    }

    void Mode(int g) {
        switch (g) {
        case 1:
        case 2:
        case 3:
            interpolation_ = g;
            break;
        case 74:
            singleQuadrant_ = true;
            break;
        case 75:
            singleQuadrant_ = false;
            break;
        case 36:
            if (region_) {
                Fail("a region inside a region (G36 twice)");
            }
            region_ = true;
            contour_.clear();
            break;
        case 37:
            if (!region_) {
                Fail("the end of a region that was not started (G37 without G36)");
            }
            EndContour();
            region_ = false;
            break;
        case 54:
        case 55:
        case 90:
            break; // selects the aperture that follows / prepares a flash / absolute: as it is
        case 70:
            unit_ = 25.4;
            break;
        case 71:
            unit_ = 1;
            break;
        default:
            Fail("an unknown command");
        }
    }

    // A coordinate in millimetres; i is just past the axis letter.
    double Coordinate(std::string_view word, std::size_t& i, int integer, int decimal) {
        if (!formatted_) {
            Fail("a coordinate before the format (%FS) is given");
        }
        std::size_t const start = i;
        bool negative = false;
        if (i < word.size() && (word[i] == '+' || word[i] == '-')) {
            negative = word[i] == '-';
            ++i;
        }
        std::size_t const digitsStart = i;
        bool point = false;
        while (i < word.size() &&
               (std::isdigit(static_cast<unsigned char>(word[i])) != 0 || word[i] == '.')) {
            point = point || word[i] == '.';
            ++i;
        }
        std::string_view const digits = word.substr(digitsStart, i - digitsStart);
        if (digits.empty()) {
            Fail("a coordinate without digits");
        }
        if (point) {
            // Some writers put the point in; the number is then in units as it stands.
            auto const value = Number(digits);
            if (!value) {
                Fail("a coordinate that is not a number");
            }
            return (negative ? -*value : *value) * unit_;
        }
        auto const width = static_cast<std::size_t>(integer) + static_cast<std::size_t>(decimal);
        if (digits.size() > width) {
            Fail("coordinate " + std::string(word.substr(start - 1, i - start + 1)) +
                 " overflows the format of " + std::to_string(integer) + " integer and " +
                 std::to_string(decimal) + " decimal digits");
        }
        long long value = 0;
        for (char c : digits) {
            value = value * 10 + (c - '0');
        }
        int shift = decimal;
        if (trailing_) {
            shift -= static_cast<int>(width - digits.size());
        }
        double result = static_cast<double>(value);
        if (shift >= 0) {
            result /= kPowers[shift];
        } else {
            result *= kPowers[-shift];
        }
        return (negative ? -result : result) * unit_;
    }

    static constexpr double kPowers[16] = {1,   1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                           1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

    void Emit(DesignShape&& shape, GerberReader::Names const& names) {
        shape.clear = clear_;
        if (repeating_) {
            if (block_.size() * repeatX_ * repeatY_ >= kMaxRepeatedShapes) {
                Fail("a step and repeat block that draws too many shapes");
            }
            block_.emplace_back(std::move(shape), names);
        } else {
            sink_(std::move(shape), names);
        }
    }

    void EndContour() {
        if (contour_.size() >= 6) {
            DesignShape shape;
            shape.kind = DesignShape::Polygon;
            shape.points = std::move(contour_);
            Emit(std::move(shape), regionNames_);
        }
        contour_.clear();
    }

    Aperture const& Current() {
        if (aperture_ == nullptr) {
            Fail("no aperture is selected (Dnn before D01 or D03)");
        }
        return *aperture_;
    }

    void Operate(int d, std::optional<double> x, std::optional<double> y, std::optional<double> i,
                 std::optional<double> j) {
        double const x0 = x0_;
        double const y0 = y0_;
        double const x1 = x.value_or(x0_);
        double const y1 = y.value_or(y0_);
        x0_ = x1;
        y0_ = y1;
        if (d == 2) {
            if (region_) {
                EndContour();
            }
            return;
        }
        if (d == 3) {
            if (region_) {
                Fail("a flash inside a region");
            }
            Flash(Current(), x1, y1);
            return;
        }
        if (interpolation_ == 1) {
            if (region_) {
                StartContour(x0, y0);
                contour_.push_back(x1);
                contour_.push_back(y1);
            } else {
                Line(Current(), x0, y0, x1, y1);
            }
            return;
        }
        auto const arc = ArcOf(x0, y0, x1, y1, i.value_or(0), j.value_or(0));
        if (region_) {
            StartContour(x0, y0);
            gerber::AppendArc(contour_, arc.cx, arc.cy, arc.r, arc.a0, arc.a1);
            // The last chord ends where the film says the arc ends.
            contour_[contour_.size() - 2] = x1;
            contour_.back() = y1;
            return;
        }
        Aperture const& aperture = Current();
        DesignShape shape;
        shape.kind = DesignShape::Arc;
        double const from = std::min(arc.a0, arc.a1) / kDegree;
        double const to = std::max(arc.a0, arc.a1) / kDegree;
        shape.points = {arc.cx, arc.cy, arc.r, from, to};
        shape.width = StrokeWidth(aperture);
        Emit(std::move(shape), drawNames_);
    }

    void StartContour(double x, double y) {
        if (contour_.empty()) {
            contour_.push_back(x);
            contour_.push_back(y);
        }
    }

    struct ArcGeometry {
        double cx, cy, r, a0, a1; // a1 < a0 runs clockwise
    };

    ArcGeometry ArcOf(double x0, double y0, double x1, double y1, double i, double j) const {
        bool const clockwise = interpolation_ == 2;
        auto const sweep = [&](double cx, double cy) {
            double const a0 = std::atan2(y0 - cy, x0 - cx);
            double a1 = std::atan2(y1 - cy, x1 - cx);
            if (clockwise) {
                while (a1 >= a0) {
                    a1 -= 2 * kPi;
                }
            } else {
                while (a1 <= a0) {
                    a1 += 2 * kPi;
                }
            }
            return ArcGeometry{cx, cy, std::hypot(x0 - cx, y0 - cy), a0, a1};
        };
        if (!singleQuadrant_) {
            ArcGeometry arc = sweep(x0 + i, y0 + j);
            if (x0 == x1 && y0 == y1) {
                arc.a1 = arc.a0 + (clockwise ? -2 * kPi : 2 * kPi);
            }
            return arc;
        }
        // Single quadrant: the offsets are unsigned; the centre is the one that gives an arc of
        // at most a quarter turn whose ends are nearest the same distance from it.
        std::optional<ArcGeometry> best;
        double bestMismatch = 0;
        for (double si : {1.0, -1.0}) {
            for (double sj : {1.0, -1.0}) {
                double const cx = x0 + si * std::abs(i);
                double const cy = y0 + sj * std::abs(j);
                ArcGeometry const arc = sweep(cx, cy);
                if (std::abs(arc.a1 - arc.a0) > kPi / 2 + 1e-6) {
                    continue;
                }
                double const mismatch = std::abs(std::hypot(x1 - cx, y1 - cy) - arc.r);
                if (!best || mismatch < bestMismatch) {
                    best = arc;
                    bestMismatch = mismatch;
                }
            }
        }
        if (!best) {
            Fail("no centre gives a single-quadrant arc");
        }
        return *best;
    }

    double StrokeWidth(Aperture const& aperture) const {
        switch (aperture.kind) {
        case Aperture::Circle:
        case Aperture::Polygon:
            return aperture.width * scale_;
        case Aperture::Rect:
        case Aperture::Obround:
            return std::min(aperture.width, aperture.height) * scale_;
        case Aperture::Macro:
            return 0;
        }
        return 0;
    }

    void Line(Aperture const& aperture, double x0, double y0, double x1, double y1) {
        DesignShape shape;
        if (aperture.kind == Aperture::Rect && !Transformed()) {
            // The rectangle swept along the line.
            double const w = aperture.width / 2;
            double const h = aperture.height / 2;
            shape.kind = DesignShape::Polygon;
            shape.points =
                gerber::Hull({x0 - w, y0 - h, x0 + w, y0 - h, x0 + w, y0 + h, x0 - w, y0 + h,
                              x1 - w, y1 - h, x1 + w, y1 - h, x1 + w, y1 + h, x1 - w, y1 + h});
        } else {
            shape.kind = DesignShape::Line;
            shape.points = {x0, y0, x1, y1};
            shape.width = StrokeWidth(aperture);
        }
        Emit(std::move(shape), drawNames_);
    }

    bool Transformed() const { return mirrorX_ || mirrorY_ || rotation_ != 0 || scale_ != 1; }

    void Flash(Aperture const& aperture, double x, double y) {
        DesignShape shape = aperture.flash;
        if (Transformed()) {
            auto& p = shape.points;
            if (shape.kind == DesignShape::Circle || shape.kind == DesignShape::Arc) {
                // Round and about the flash point: only the size changes.
                p[2] *= scale_;
                shape.width *= scale_;
            } else {
                if (shape.kind == DesignShape::Pad) {
                    p = OutlineOf(shape);
                    shape.kind = DesignShape::Polygon;
                }
                for (std::size_t k = 0; k + 1 < p.size(); k += 2) {
                    p[k] *= (mirrorX_ ? -scale_ : scale_);
                    p[k + 1] *= (mirrorY_ ? -scale_ : scale_);
                }
                gerber::Rotate(p, rotation_);
                shape.width *= scale_;
            }
        }
        TranslateShape(shape, x, y);
        Emit(std::move(shape), drawNames_);
    }

    std::string_view text_;
    GerberReader::Sink const& sink_;
    std::function<void(int)> const& progress_;
    std::map<std::string, std::string>& fileAttributes_;

    std::size_t at_ = 0;
    std::size_t line_ = 1;
    std::size_t commandLine_ = 1;
    std::string_view command_;
    std::string cleaned_;

    bool formatted_ = false;
    bool trailing_ = false;
    int integerX_ = 2, decimalX_ = 6, integerY_ = 2, decimalY_ = 6;
    // Films without %MO are old inch films.
    double unit_ = 25.4;

    std::unordered_map<int, Aperture> apertures_;
    std::map<std::string, std::shared_ptr<gerber::GerberMacro>> macros_;
    Aperture const* aperture_ = nullptr;

    int interpolation_ = 1;
    bool singleQuadrant_ = false;
    int lastOperation_ = 0;
    double x0_ = 0, y0_ = 0;
    bool region_ = false;
    Points contour_;

    bool clear_ = false;
    bool mirrorX_ = false, mirrorY_ = false;
    double rotation_ = 0, scale_ = 1;

    bool repeating_ = false;
    std::size_t repeatX_ = 1, repeatY_ = 1;
    double stepX_ = 0, stepY_ = 0;
    std::vector<std::pair<DesignShape, GerberReader::Names>> block_;

    std::map<std::string, std::string> apertureAttributes_;
    GerberReader::Names objectNames_;
    GerberReader::Names drawNames_;
    GerberReader::Names regionNames_;
};

} // namespace

GerberReader::Error::Error(std::size_t line, std::string command, std::string const& why)
    : std::runtime_error(why), line(line), command(std::move(command)) {}

GerberReader::GerberReader(std::string_view text) : text_(text) {}

void GerberReader::Read(Sink const& sink, std::function<void(int)> const& progress) {
    fileAttributes_.clear();
    Parser(text_, sink, progress, fileAttributes_).Run();
}

} // namespace qzref
