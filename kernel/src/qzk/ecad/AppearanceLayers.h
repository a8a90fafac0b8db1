// The appearance layers a kernel scene keeps looks for: 0 selection, 1 highlight, 2 group.
#pragma once

namespace qzk::ecad {

inline constexpr int kAppearanceLayerCount = 3;

inline bool IsAppearanceLayer(int layer) {
    return layer >= 0 && layer < kAppearanceLayerCount;
}

} // namespace qzk::ecad
