#include "qzref/DesignGeometryReader.h"

#include <nlohmann/json.hpp>

#include <cmath>

namespace qzref {

namespace {

struct Form {
    char const* key;
    DesignShape::Kind kind;
    std::size_t least; // numbers
    bool pairs;        // any even count from least up
};

Form const kForms[] = {
    {"line", DesignShape::Line, 4, false},      {"arc", DesignShape::Arc, 5, false},
    {"circle", DesignShape::Circle, 3, false},  {"rect", DesignShape::Rectangle, 4, false},
    {"polygon", DesignShape::Polygon, 6, true}, {"pad", DesignShape::Pad, 4, false},
};

} // namespace

std::optional<std::string> ReadDesignGeometry(nlohmann::json const& list,
                                              std::vector<DesignShape>& out) {
    if (!list.is_array()) {
        return std::string(": not a list");
    }
    for (std::size_t i = 0; i < list.size(); ++i) {
        std::string const at = "/" + std::to_string(i);
        auto const& item = list[i];
        if (!item.is_object()) {
            return at + ": not an object";
        }
        Form const* form = nullptr;
        for (auto const& candidate : kForms) {
            if (item.contains(candidate.key)) {
                if (form != nullptr) {
                    return at + ": more than one shape in one entry";
                }
                form = &candidate;
            }
        }
        if (form == nullptr) {
            return at + ": no line, arc, circle, rect, polygon or pad";
        }
        auto const& numbers = item.at(form->key);
        std::string const where = at + "/" + form->key;
        if (!numbers.is_array() || numbers.size() < form->least ||
            (!form->pairs && numbers.size() != form->least) ||
            (form->pairs && numbers.size() % 2 != 0)) {
            return where + ": expected " + std::to_string(form->least) +
                   (form->pairs ? " or more numbers, in pairs" : " numbers");
        }
        DesignShape shape;
        shape.kind = form->kind;
        for (auto const& number : numbers) {
            if (!number.is_number() || !std::isfinite(number.get<double>())) {
                return where + ": not a number";
            }
            shape.points.push_back(number.get<double>());
        }
        if (auto const width = item.find("width"); width != item.end()) {
            if (!width->is_number() || width->get<double>() < 0) {
                return at + "/width: not a width in millimetres";
            }
            shape.width = width->get<double>();
        }
        if ((shape.kind == DesignShape::Circle && shape.points[2] < 0) ||
            (shape.kind == DesignShape::Pad && (shape.points[2] < 0 || shape.points[3] < 0))) {
            return where + ": a negative size";
        }
        out.push_back(std::move(shape));
    }
    return std::nullopt;
}

} // namespace qzref
