#include "qzk/ecad/OverlayPrefs.h"

#include "PrefRead.h"

namespace qzk::ecad {

void OverlayPrefs::Init() {
    *this = OverlayPrefs();
    for (int quarter : {90, 180, 270}) {
        bool on = false;
        prefread::Flag(du::Symbol("Ecad/Overlay/rotate_" + std::to_string(quarter)), on);
        if (on) {
            rotation = quarter;
            break;
        }
    }
    prefread::Flag(du::Symbol("Ecad/Overlay/flip_horizontal"), flipHorizontal);
    prefread::Flag(du::Symbol("Ecad/Overlay/flip_vertical"), flipVertical);
}

void OverlayPrefs::ApplyTransform(dg::DMat33& matrix, dg::DPoint2D const& center) const {
    dg::DMat33 own = dg::DMat33::Rotation(rotation, center);
    if (flipHorizontal) {
        own = dg::DMat33::FlipHorizontal(center) * own;
    }
    if (flipVertical) {
        own = dg::DMat33::FlipVertical(center) * own;
    }
    matrix *= own;
}

bool OverlayPrefs::operator==(OverlayPrefs const& other) const noexcept {
    return rotation == other.rotation && flipHorizontal == other.flipHorizontal &&
           flipVertical == other.flipVertical;
}

} // namespace qzk::ecad
