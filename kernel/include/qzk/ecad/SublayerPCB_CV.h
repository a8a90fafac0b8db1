// The colour and visibility of one board sublayer, keyed by (layer, sublayer).
//
// Where defaults come from (GetDefaultColorVis), strongest last:
//   1. the values the caller preset in cv;
//   2. the board's own sublayer of that key (its colour and visibility from the design file);
//   3. the user's stored preference for that key, when prefs holds it, unless overlayData
//      (an overlay shows its own colours: preferences are about boards) or factoryDefaults
//      (the caller wants the design's colours, not the user's) is set.
// A sublayer that neither the board nor the preferences know keeps the presets. A region
// sublayer (DefaultColorVisibility::IsRegionSublayer) that comes from the board alone starts
// hidden, as the kernel's default visibility has it.
//
// Preference keys (read by GetPrefs): "Ecad/PCB/sublayer/<layer>/<sublayer>/color" (a colour
// word) and ".../visible" (a boolean), handles in decimal. A sublayer with a colour or a
// visibility stored gives an entry; the missing half is the blank default of ColorVisInfo.
// Preferences exist for the fixed sublayer handles (0 to 32) of layers -16 to 64 only: from 33
// up a handle is the design's own and means different things on different boards.
#pragma once

#include "du/SmartPtr.h"
#include "qzk/ecad/ColorVisInfo.h"
#include "qzk/ecad/SublayerPCBBase.h"

#include <string>

namespace qzk::ecad {

class EcadPCBData;
class SublayerPCB_CVSet;

class SublayerPCB_CV : public SublayerPCBBase, public ColorVisInfo {
public:
    explicit SublayerPCB_CV(SublayerPCBBase const& key) : SublayerPCBBase(key) {}
    SublayerPCB_CV(short layer, short sublayer, unsigned int color, bool visible)
        : SublayerPCBBase(layer, sublayer), ColorVisInfo(color, visible) {}
    SublayerPCB_CV(SublayerPCB_CV const&) = default;
    SublayerPCB_CV& operator=(SublayerPCB_CV const&) = default;
    ~SublayerPCB_CV() override;

    // Clears out and fills it with every sublayer the preferences hold.
    static void GetPrefs(SublayerPCB_CVSet& out);
    static void GetDefaultColorVis(du::SmartPtr<EcadPCBData> const& board,
                                   SublayerPCB_CVSet const& prefs, SublayerPCB_CV& cv,
                                   bool overlayData, bool factoryDefaults);
    // True when the sets hold different keys, or a key with another colour or visibility.
    static bool AreDifferent(SublayerPCB_CVSet const& a, SublayerPCB_CVSet const& b);

    // "Ecad/PCB/sublayer/<layer>/<sublayer>"; the preference keys hang below it.
    static std::string PrefNode(short layer, short sublayer);
};

} // namespace qzk::ecad
