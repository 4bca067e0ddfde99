// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

/// One pixel without vector instructions: e = 255 copies the source pixel, e <= 0 does nothing, and a mix of
/// ((destination - source) * w + source * 256) >> 8, w = e * 256 / 255, goes into the source's colour bytes,
/// which is where this path has always put it.
inline void BlendPixelInteger(uint8_t* destination, uint8_t* source, int e)
{
    if (e <= 0)
        return;
    if (e == 255) {
        for (int c = 0; c < 4; ++c)
            destination[c] = source[c];
        return;
    }
    const int weight = e * 256 / 255;
    for (int c = 0; c < 3; ++c)
        source[c] = static_cast<uint8_t>(((destination[c] - source[c]) * weight + source[c] * 256) >> 8);
}
