// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "canvas/BitRuns.h"
#include "platform/dib/PackedDib.h"
#include "platform/region/Region.h"

#include <cstdint>
#include <span>

/// The pixels whose blue, green, red and alpha all lie between those of two others, ends included; the
/// values are 0xAARRGGBB.
struct PixelRange {
    uint32_t low = 0;
    uint32_t high = 0;

    [[nodiscard]] constexpr bool Matches(uint32_t pixel) const
    {
        for (int shift = 0; shift < 32; shift += 8) {
            const uint32_t byte = pixel >> shift & 255;
            if (byte < (low >> shift & 255) || byte > (high >> shift & 255))
                return false;
        }
        return true;
    }
};

/// Colours at most `tolerance` (0 to 255) from those of `pixel` in each channel, with alphas of a range.
[[nodiscard]] PixelRange RangeAround(uint32_t pixel, int tolerance, uint8_t lowestAlpha,
                                     uint8_t highestAlpha);

/// About how many pixels a processor matches in a microsecond.
inline constexpr int kMatchedPerMicrosecond = 2500;

/// Sets the bit of every pixel of row y, from `left` on, that matches and lies in the region; an empty region
/// stands for everywhere. left: a multiple of kBitsPerWord. Pixels beyond the end of the row give 0.
void MatchPixels(const ConstBitmapView& picture, int y, int left, std::span<uint64_t> words,
                 const PixelRange& range, const CRegion& clip);
