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

/// Pixels matched at a time; a multiple of kBitsPerWord.
inline constexpr int kStripPixels = 4096;
inline constexpr int kStripWords = WordsFor(kStripPixels);

/// Number of strips that a row of so many pixels has.
[[nodiscard]] constexpr int StripsFor(int pixels)
{
    return (pixels + kStripPixels - 1) / kStripPixels;
}

/// Sets the bit of every pixel of a row's strip that matches and lies in the region; an empty region stands
/// for everywhere. Writes as many words as the strip has; returns them.
std::span<uint64_t> MatchStrip(const CPackedDib& dib, int y, int strip, const PixelRange& range,
                               const CRegion& clip, uint64_t* words);
