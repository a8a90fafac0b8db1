#include "qzk/ecad/SublayerEcad.h"

#include "PrefRead.h"
#include "qzk/ecad/ColorVisInfo.h"

#include <map>
#include <mutex>

namespace qzk::ecad {
namespace {

constexpr short kLastPrefLayer = 63;

// The kernel's own colours for the schematic layers it knows (the layers of the default
// display order); every other layer is opaque black and shown.
std::map<short, ColorVisInfo> BuiltIns() {
    return {
        {7, ColorVisInfo(0x01800000u, true)},  {8, ColorVisInfo(0x01008000u, true)},
        {10, ColorVisInfo(0x01000080u, true)}, {11, ColorVisInfo(0x01808000u, true)},
        {12, ColorVisInfo(0x010000C0u, true)}, {19, ColorVisInfo(0x01800080u, true)},
        {28, ColorVisInfo(0x01404040u, true)}, {29, ColorVisInfo(0x01008080u, true)},
        {30, ColorVisInfo(0x010080FFu, true)}, {32, ColorVisInfo(0x01808080u, true)},
    };
}

struct Table {
    std::mutex mutex;
    std::map<short, ColorVisInfo> entries = BuiltIns();
};

Table& GetTable() {
    static Table table;
    return table;
}

} // namespace

SublayerEcad::~SublayerEcad() = default;

void SublayerEcad::RefillColorVisInfo() {
    std::map<short, ColorVisInfo> entries = BuiltIns();
    for (short layer = 0; layer <= kLastPrefLayer; ++layer) {
        std::string node;
        GetNodeName(node, layer, 0, false);
        ColorVisInfo info = entries.count(layer) != 0 ? entries[layer] : ColorVisInfo();
        bool const hasColor = prefread::ColorWord(du::Symbol(node + "/color"), info.color);
        bool const hasVisible = prefread::Flag(du::Symbol(node + "/visible"), info.visible);
        if (hasColor || hasVisible) {
            entries[layer] = info;
        }
    }
    Table& table = GetTable();
    std::lock_guard lock(table.mutex);
    table.entries.swap(entries);
}

void SublayerEcad::GetDefaultSchematicColorVis(SublayerEcad& sublayer) {
    ColorVisInfo info;
    {
        Table& table = GetTable();
        std::lock_guard lock(table.mutex);
        if (auto found = table.entries.find(sublayer.layer); found != table.entries.end()) {
            info = found->second;
        }
    }
    sublayer.color = info.color;
    sublayer.attributes = info.visible ? VISIBLE_BIT : 0u;
}

void SublayerEcad::GetNodeName(std::string& out, short layer, short sublayer, bool pcb) {
    out = pcb ? "Ecad/PCB/sublayer/" : "Ecad/Schematic/sublayer/";
    out += std::to_string(layer);
    if (sublayer != 0) {
        out += '/';
        out += std::to_string(sublayer);
    }
}

} // namespace qzk::ecad
