// A schematic sublayer and the kernel's table of schematic default colours.
//
// The table starts from the kernel's built-in colours (opaque black, shown, for a handle it has
// no colour of its own for) and RefillColorVisInfo lays the user's preferences for the handles
// 0 to 63 over it: "Ecad/Schematic/sublayer/<layer>/color" and ".../visible".
// GetDefaultSchematicColorVis reads the table as it was at the last refill (built-ins only
// before the first one); the table is shared by the process and guarded by a mutex.
#pragma once

#include <string>

namespace qzk::ecad {

class SublayerEcad {
public:
    static constexpr unsigned int VISIBLE_BIT = 0x80000000u;

    explicit SublayerEcad(short layer) : layer(layer) {}
    virtual ~SublayerEcad();

    static void RefillColorVisInfo();
    // Fills color and attributes for sublayer.layer.
    static void GetDefaultSchematicColorVis(SublayerEcad& sublayer);
    // The preference node of a layer's colour settings: "Ecad/PCB/sublayer/<layer>" for a board
    // (pcb true), "Ecad/Schematic/sublayer/<layer>" for a schematic, with "/<sublayer>" added
    // when sublayer is not 0.
    static void GetNodeName(std::string& out, short layer, short sublayer, bool pcb);

    bool IsVisible() const noexcept { return (attributes & VISIBLE_BIT) != 0; }

    short layer;
    // Both 0 until GetDefaultSchematicColorVis fills them.
    unsigned int color = 0;
    // Top bit: visible. The other bits are the kernel's and 0 in the reference kernel.
    unsigned int attributes = 0;
};

} // namespace qzk::ecad
