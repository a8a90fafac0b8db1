// The kernel's knowledge of which board sublayers are shown by default.
//
// The handle rules are the board data's (qzk/ecad/EcadPCBData.h): s_miscLayer is its
// MISC_LAYER, and a region sublayer is one that EcadPCBData::IsRegionHandle names. Region
// sublayers (areas such as keep-outs and rooms) are hidden by default.
#pragma once

namespace qzk::ecad {

class DefaultColorVisibility {
public:
    static short const s_miscLayer;

    // False for a region sublayer; otherwise fallback, the caller's answer for a sublayer the
    // kernel has no rule for.
    static bool GetVisibility(short layer, short sublayer, bool fallback);
    static bool IsRegionSublayer(short layer, short sublayer);
};

} // namespace qzk::ecad
