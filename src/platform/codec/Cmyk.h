// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>

/// Whether 255 means full ink or, as in files with Adobe's marker, none.
enum class Ink { Plain, Inverted };

/// a * b / 255, rounded; both 0 to 255.
[[nodiscard]] constexpr uint8_t MultiplyBytes(uint32_t a, uint32_t b)
{
    const uint32_t product = a * b + 128;
    return static_cast<uint8_t>((product + (product >> 8)) >> 8);
}

/// Turns `width` pixels cyan, magenta, yellow, black into opaque blue, green, red, alpha in their place: each
/// ink lets pass what it does not cover, and black covers all three.
inline void CmykRowToBgra(uint8_t* row, int width, Ink ink)
{
    const uint32_t flip = ink == Ink::Inverted ? 0 : 255;
    for (uint8_t* pixel = row; pixel != row + ptrdiff_t{width} * 4; pixel += 4) {
        const uint32_t light = pixel[3] ^ flip;
        const uint8_t red = MultiplyBytes(pixel[0] ^ flip, light);
        pixel[0] = MultiplyBytes(pixel[2] ^ flip, light);
        pixel[1] = MultiplyBytes(pixel[1] ^ flip, light);
        pixel[2] = red;
        pixel[3] = 255;
    }
}
