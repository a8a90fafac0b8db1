#include "qzref/gerber/GerberMacro.h"

#include "qzref/gerber/GerberOutlines.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdlib>
#include <map>
#include <numbers>
#include <stdexcept>

namespace qzref::gerber {

namespace {

// The largest magnitude a primitive's value may have, in the film's unit or as a count.
constexpr double kLargestValue = 1e9;

// Macro arithmetic: numbers, $n variables, + - x / and brackets, x and / binding tighter.
class Expression {
public:
    Expression(std::string const& text, std::map<int, double> const& variables)
        : text_(text), variables_(variables) {}

    double Value() {
        double const value = Sum();
        if (at_ != text_.size()) {
            Fail();
        }
        return value;
    }

private:
    [[noreturn]] void Fail() const {
        throw std::invalid_argument("cannot work out \"" + text_ + "\"");
    }

    char Peek() const { return at_ < text_.size() ? text_[at_] : '\0'; }

    double Sum() {
        double value = Product();
        for (char c = Peek(); c == '+' || c == '-'; c = Peek()) {
            ++at_;
            double const right = Product();
            value = c == '+' ? value + right : value - right;
        }
        return value;
    }

    double Product() {
        double value = Unary();
        for (char c = Peek(); c == 'x' || c == 'X' || c == '/'; c = Peek()) {
            ++at_;
            double const right = Unary();
            value = c == '/' ? value / right : value * right;
        }
        return value;
    }

    double Unary() {
        char const c = Peek();
        if (c == '-' || c == '+') {
            ++at_;
            if (++depth_ > kMaxDepth) {
                Fail();
            }
            double const value = Unary();
            --depth_;
            return c == '-' ? -value : value;
        }
        if (c == '(') {
            ++at_;
            if (++depth_ > kMaxDepth) {
                Fail();
            }
            double const value = Sum();
            --depth_;
            if (Peek() != ')') {
                Fail();
            }
            ++at_;
            return value;
        }
        if (c == '$') {
            ++at_;
            std::size_t const start = at_;
            while (std::isdigit(static_cast<unsigned char>(Peek())) != 0) {
                ++at_;
            }
            if (at_ == start || at_ - start > 6) {
                Fail();
            }
            auto const found = variables_.find(std::atoi(text_.c_str() + start));
            return found == variables_.end() ? 0.0 : found->second;
        }
        std::size_t const start = at_;
        while (std::isdigit(static_cast<unsigned char>(Peek())) != 0 || Peek() == '.') {
            ++at_;
        }
        if (at_ == start) {
            Fail();
        }
        return std::strtod(text_.substr(start, at_ - start).c_str(), nullptr);
    }

    // Signs and brackets nest as deep as the text is long: no real macro needs more than a few,
    // and the recursion must not run out of stack on a film made to do that.
    static constexpr int kMaxDepth = 64;

    std::string const& text_;
    std::map<int, double> const& variables_;
    std::size_t at_ = 0;
    int depth_ = 0;
};

std::vector<std::string> Split(std::string const& text, char at) {
    std::vector<std::string> out(1);
    for (char c : text) {
        if (c == at) {
            out.emplace_back();
        } else {
            out.back() += c;
        }
    }
    return out;
}

// The quarter of a thermal's ring in the first quadrant, between the cross's arms of width gap.
Points ThermalQuarter(double outer, double inner, double gap) {
    double const ro = outer / 2;
    double const ri = inner / 2;
    double const g = gap / 2;
    Points out;
    if (g >= ro) {
        return out;
    }
    double const ao = std::asin(g / ro);
    out = {ro * std::cos(ao), g};
    AppendArc(out, 0, 0, ro, ao, std::numbers::pi / 2 - ao);
    if (ri > g) {
        double const ai = std::asin(g / ri);
        out.push_back(g);
        out.push_back(ri * std::cos(ai));
        AppendArc(out, 0, 0, ri, std::numbers::pi / 2 - ai, ai);
    } else {
        out.push_back(g);
        out.push_back(g);
    }
    return out;
}

// A ring as one contour whose hole the non-zero rule leaves empty.
Points Ring(double cx, double cy, double outer, double inner) {
    return WithHole(Circle(cx, cy, outer / 2), cx, cy, inner);
}

} // namespace

GerberMacro::GerberMacro(std::vector<std::string> statements)
    : statements_(std::move(statements)) {}

DesignShape GerberMacro::Evaluate(std::vector<double> const& parameters, double unit) const {
    std::map<int, double> variables;
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        variables[static_cast<int>(i) + 1] = parameters[i];
    }
    DesignShape shape;
    shape.kind = DesignShape::Polygon;
    auto const add = [&](Points points, bool on, double rotation) {
        if (points.size() < 6) {
            return;
        }
        Rotate(points, rotation);
        for (double& v : points) {
            v *= unit;
        }
        int const count = static_cast<int>(points.size() / 2);
        shape.contours.push_back(on ? count : -count);
        shape.points.insert(shape.points.end(), points.begin(), points.end());
    };
    for (std::string const& statement : statements_) {
        if (statement.empty() || statement[0] == '0') {
            continue; // a comment
        }
        if (statement[0] == '$') {
            std::size_t const equals = statement.find('=');
            if (equals == std::string::npos || equals < 2 || equals > 7) {
                throw std::invalid_argument("a variable without a value: \"" + statement + "\"");
            }
            int const name = std::atoi(statement.c_str() + 1);
            variables[name] = Expression(statement.substr(equals + 1), variables).Value();
            continue;
        }
        std::vector<std::string> const fields = Split(statement, ',');
        std::vector<double> v;
        v.reserve(fields.size());
        for (std::string const& field : fields) {
            v.push_back(Expression(field, variables).Value());
            // A division by zero or an overflow in a bad film: no size or count on a film comes
            // near this, and every cast and outline below may rely on it.
            if (!(std::abs(v.back()) <= kLargestValue)) {
                throw std::invalid_argument("a value out of range in \"" + statement + "\"");
            }
        }
        auto const need = [&](std::size_t n) {
            if (v.size() < n) {
                throw std::invalid_argument("too few values in \"" + statement + "\"");
            }
        };
        auto const at = [&](std::size_t i) { return i < v.size() ? v[i] : 0.0; };
        int const code = static_cast<int>(v[0]);
        bool const on = v.size() > 1 && v[1] != 0;
        switch (code) {
        case 1: // circle: exposure, diameter, x, y[, rotation]
            need(5);
            add(Circle(v[3], v[4], v[2] / 2), on, at(5));
            break;
        case 2:
        case 20: { // vector line: exposure, width, x1, y1, x2, y2, rotation
            need(7);
            double const dx = v[5] - v[3];
            double const dy = v[6] - v[4];
            double const length = std::hypot(dx, dy);
            if (length == 0) {
                break;
            }
            double const nx = -dy / length * v[2] / 2;
            double const ny = dx / length * v[2] / 2;
            add({v[3] - nx, v[4] - ny, v[5] - nx, v[6] - ny, v[5] + nx, v[6] + ny, v[3] + nx,
                 v[4] + ny},
                on, at(7));
            break;
        }
        case 21: // centre line: exposure, width, height, x, y, rotation
            need(6);
            add(Rectangle(v[4], v[5], v[2], v[3]), on, at(6));
            break;
        case 22: // lower-left line: exposure, width, height, x, y, rotation
            need(6);
            add(Rectangle(v[4] + v[2] / 2, v[5] + v[3] / 2, v[2], v[3]), on, at(6));
            break;
        case 4: { // outline: exposure, n, n + 1 points, rotation
            need(3);
            auto const n = static_cast<std::size_t>(std::max(0.0, v[2]));
            if (n < 1 || n > 100000) {
                throw std::invalid_argument("an outline of " + fields[2] + " points");
            }
            need(3 + 2 * (n + 1) + 1);
            Points points(v.begin() + 3, v.begin() + 3 + 2 * static_cast<long>(n));
            add(std::move(points), on, v[3 + 2 * (n + 1)]);
            break;
        }
        case 5: { // polygon: exposure, n, x, y, diameter, rotation
            need(6);
            int const n = static_cast<int>(v[2]);
            if (n < 3 || n > 12) {
                throw std::invalid_argument("a polygon of " + fields[2] + " corners");
            }
            add(RegularPolygon(v[3], v[4], v[5], n, 0), on, at(6));
            break;
        }
        case 6: { // moire: x, y, outer diameter, ring width, gap, rings, cross width, length, rot
            need(9);
            double outer = v[3];
            for (int ring = 0; ring < static_cast<int>(std::min(v[6], 1000.0)) && outer > 0;
                 ++ring) {
                add(Ring(v[1], v[2], outer, std::max(0.0, outer - 2 * v[4])), true, at(9));
                outer -= 2 * (v[4] + v[5]);
            }
            add(Rectangle(v[1], v[2], v[8], v[7]), true, at(9));
            add(Rectangle(v[1], v[2], v[7], v[8]), true, at(9));
            break;
        }
        case 7: { // thermal: x, y, outer diameter, inner diameter, gap, rotation
            need(6);
            Points const quarter = ThermalQuarter(v[3], v[4], v[5]);
            for (int q = 0; q < 4; ++q) {
                Points piece = quarter;
                Rotate(piece, 90.0 * q);
                Translate(piece, v[1], v[2]);
                add(std::move(piece), true, at(6));
            }
            break;
        }
        default:
            throw std::invalid_argument("an unknown primitive in \"" + statement + "\"");
        }
    }
    return shape;
}

} // namespace qzref::gerber
