// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cstdint>

/// The blends of single pixels, without vector instructions. e: the source alpha less a transparency; at 0
/// and below nothing is left of the source.

/// e = 255 copies the source pixel, e <= 0 does nothing, and a mix of
/// ((destination - source) * w + source * 256) >> 8, w = e * 256 / 255, goes into the source's colour bytes,
/// which is where this path has always put it.
inline void BlendPixelInteger(uint8_t* destination, uint8_t* source, int e)
{
    if (e == 255)
        std::copy_n(source, 4, destination);
    if (e <= 0 || e == 255)
        return;
    const int weight = e * 256 / 255;
    for (int c = 0; c < 3; ++c)
        source[c] = static_cast<uint8_t>(((destination[c] - source[c]) * weight + source[c] * 256) >> 8);
}

/// See BlendRowWeighted.
inline void BlendPixelWeighted(uint8_t* destination, const uint8_t* source, int e)
{
    if (e == 255)
        std::copy_n(source, 4, destination);
    if (e <= 0 || e == 255)
        return;
    const int weight = e * 32768 / 255;
    for (int c = 0; c < 4; ++c) {
        const int kept = (destination[c] * (32768 - weight)) >> 16;
        destination[c] = static_cast<uint8_t>(2 * kept + 2 * ((source[c] * weight) >> 16));
    }
}

/// See CompositeOver.
inline void BlendPixelOver(uint8_t* destination, const uint8_t* source, int e)
{
    const int s = std::max(0, e);
    const int below = (255 - s) * destination[3];
    const int alpha = 255 - (255 - destination[3]) * (255 - s) / 255;
    for (int c = 0; c < 3; ++c) {
        const int sum = below * destination[c] / 255 + s * source[c];
        destination[c] = static_cast<uint8_t>(std::min(255, sum / std::max(1, alpha)));
    }
    destination[3] = static_cast<uint8_t>(alpha);
}

/// Takes the source's colour and what is left of its alpha.
inline void CopyPixelLessTransparency(uint8_t* destination, const uint8_t* source, int e)
{
    std::copy_n(source, 3, destination);
    destination[3] = static_cast<uint8_t>(std::max(0, e));
}
