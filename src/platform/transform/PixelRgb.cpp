// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/transform/PixelRgb.h"

namespace {

/// A 5-bit value as 8 bits, to the nearest.
constexpr uint8_t Widen5(unsigned value)
{
    return static_cast<uint8_t>(((value & 31) * 255 + 15) / 31);
}

} // namespace

RgbQuad GetPixelRGB(const uint8_t* row, int x, int bitCount, std::span<const RgbQuad> palette)
{
    if (bitCount <= 8) {
        const unsigned index = PaletteIndexAt(row, x, bitCount);
        if (index >= palette.size())
            return {};
        const RgbQuad& entry = palette[index];
        return {entry.blue, entry.green, entry.red, 0};
    }
    const uint8_t* pixel = row + ptrdiff_t{x} * (bitCount / 8);
    if (bitCount == 16) {
        const unsigned value = pixel[0] | unsigned{pixel[1]} << 8;
        return {Widen5(value), Widen5(value >> 5), Widen5(value >> 10), 0};
    }
    return {pixel[0], pixel[1], pixel[2], 0};
}
