// A colour of four floats and its 32-bit word, the form every colour record stores.
//
// Word layout: red in bits 0-7, green in bits 8-15, blue in bits 16-23, and a flag byte in
// bits 24-31 whose value 0x01 marks an opaque colour. So 0x010000FF is opaque red and
// 0x01DC0000 an opaque blue. The word carries no finer alpha than opaque or not: GetAsHexUI
// writes 0x01 when alpha is at least one half and 0x00 otherwise.
#pragma once

namespace dg {

class Color {
public:
    // The blank default: opaque black.
    Color() noexcept = default;
    Color(float red, float green, float blue, float alpha) noexcept;
    // useWordAlpha true: alpha is 1 when the flag byte is not zero and 0 when it is (any
    // non-zero flag byte counts as opaque, so 0xFFFFFFFF reads as opaque white).
    // useWordAlpha false: the flag byte is ignored and the colour is opaque.
    Color(unsigned int word, bool useWordAlpha) noexcept;

    // Channels are clamped to [0, 1] and rounded to the nearest byte.
    unsigned int GetAsHexUI() const noexcept;

    // Exact comparison of the four floats; a word read back compares equal to the colour
    // that wrote it only when the channels are multiples of 1/255.
    bool operator==(Color const& other) const noexcept;
    bool operator!=(Color const& other) const noexcept { return !(*this == other); }

    float red = 0.0f;
    float green = 0.0f;
    float blue = 0.0f;
    float alpha = 1.0f;
};

} // namespace dg
