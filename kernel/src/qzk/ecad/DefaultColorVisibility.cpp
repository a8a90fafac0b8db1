#include "qzk/ecad/DefaultColorVisibility.h"

#include "qzk/ecad/EcadPCBData.h"

namespace qzk::ecad {

short const DefaultColorVisibility::s_miscLayer = EcadPCBData::MISC_LAYER;

bool DefaultColorVisibility::GetVisibility(short layer, short sublayer, bool fallback) {
    return IsRegionSublayer(layer, sublayer) ? false : fallback;
}

bool DefaultColorVisibility::IsRegionSublayer(short layer, short sublayer) {
    return EcadPCBData::IsRegionHandle(layer, sublayer);
}

} // namespace qzk::ecad
