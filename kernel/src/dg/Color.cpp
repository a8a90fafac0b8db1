#include "dg/Color.h"

#include <algorithm>
#include <cmath>

namespace dg {
namespace {

unsigned int ToByte(float channel) noexcept {
    if (!(channel > 0.0f)) {
        return 0;
    }
    return static_cast<unsigned int>(std::lround(std::min(channel, 1.0f) * 255.0f));
}

float FromByte(unsigned int word, int shift) noexcept {
    return static_cast<float>((word >> shift) & 0xFFu) / 255.0f;
}

} // namespace

Color::Color(float red, float green, float blue, float alpha) noexcept
    : red(red), green(green), blue(blue), alpha(alpha) {}

Color::Color(unsigned int word, bool useWordAlpha) noexcept
    : red(FromByte(word, 0)), green(FromByte(word, 8)), blue(FromByte(word, 16)),
      alpha(!useWordAlpha || (word >> 24) != 0 ? 1.0f : 0.0f) {}

unsigned int Color::GetAsHexUI() const noexcept {
    unsigned int const flag = alpha >= 0.5f ? 0x01u : 0x00u;
    return ToByte(red) | (ToByte(green) << 8) | (ToByte(blue) << 16) | (flag << 24);
}

bool Color::operator==(Color const& other) const noexcept {
    return red == other.red && green == other.green && blue == other.blue && alpha == other.alpha;
}

} // namespace dg
