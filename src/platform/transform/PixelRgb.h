// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dib/PackedDib.h"

#include <span>

/// Colour of pixel x of a stored row with 1, 4, 8, 16 (5-5-5), 24 or 32 bits per pixel and no bit fields.
/// palette: used up to 8 bits; an index beyond it is black. The result's `reserved` is 0.
[[nodiscard]] RgbQuad GetPixelRGB(const uint8_t* row, int x, int bitCount, std::span<const RgbQuad> palette);

/// The palette index of pixel x of a row with 1, 4 or 8 bits per pixel.
[[nodiscard]] inline unsigned PaletteIndexAt(const uint8_t* row, int x, int bitCount)
{
    const ptrdiff_t bit = ptrdiff_t{x} * bitCount;
    const unsigned shift = static_cast<unsigned>(8 - bitCount - bit % 8);
    return (row[bit / 8] >> shift) & ((1u << bitCount) - 1);
}
