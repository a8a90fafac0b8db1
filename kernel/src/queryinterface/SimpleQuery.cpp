#include "queryinterface/SimpleQuery.h"

namespace queryinterface {

SimpleQuery::~SimpleQuery() = default;

std::string SimpleQuery::Describe() const {
    std::string out = "\"" + text + "\"";
    for (du::Symbol const& type : objectTypes) {
        out += " " + type.str();
    }
    if (caseSensitive) {
        out += " case";
    }
    if (wholeWord) {
        out += " word";
    }
    return out;
}

bool SimpleQuery::operator==(SimpleQuery const& other) const {
    return text == other.text && objectTypes == other.objectTypes &&
           caseSensitive == other.caseSensitive && wholeWord == other.wholeWord;
}

} // namespace queryinterface
