#include "qzk/ecad/EcadSchematicData.h"

#include <string>

namespace qzk::ecad {
namespace {

std::string ToUtf8(std::wstring const& text) {
    std::string out;
    for (wchar_t wc : text) {
        auto c = static_cast<char32_t>(wc);
        if (c < 0x80) {
            out += static_cast<char>(c);
        } else if (c < 0x800) {
            out += static_cast<char>(0xC0 | (c >> 6));
            out += static_cast<char>(0x80 | (c & 0x3F));
        } else if (c < 0x10000) {
            out += static_cast<char>(0xE0 | (c >> 12));
            out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
            out += static_cast<char>(0x80 | (c & 0x3F));
        } else {
            out += static_cast<char>(0xF0 | (c >> 18));
            out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
            out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
            out += static_cast<char>(0x80 | (c & 0x3F));
        }
    }
    return out;
}

} // namespace

EcadSchematicData::EcadSchematicData(du::Symbol name) : EcadDesignData(std::move(name)) {}

EcadSchematicData::~EcadSchematicData() = default;

du::Symbol EcadSchematicData::GetLayerName(short layer) const {
    auto found = layerNames.find(layer);
    return found != layerNames.end() ? du::Symbol(ToUtf8(found->second)) : du::Symbol::EMPTY;
}

} // namespace qzk::ecad
