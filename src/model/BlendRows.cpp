// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/BlendRows.h"

#include <algorithm>
#include <cstring>

namespace {

int RemainingAlpha(const uint8_t* source, uint8_t transparency)
{
    return std::max(0, source[3] - transparency);
}

} // namespace

void BlendRowWeighted(uint8_t* destination, const uint8_t* source, size_t pixels, uint8_t transparency)
{
    for (; pixels > 0; --pixels, destination += 4, source += 4) {
        const int e = RemainingAlpha(source, transparency);
        if (e == 0)
            continue;
        if (e == 255) {
            std::memcpy(destination, source, 4);
            continue;
        }
        const int weight = e * 32768 / 255;
        for (int c = 0; c < 4; ++c) {
            const int mixed =
                2 * ((destination[c] * (32768 - weight)) >> 16) + 2 * ((source[c] * weight) >> 16);
            destination[c] = static_cast<uint8_t>(mixed);
        }
    }
}

void BlendRowOver(uint8_t* destination, const uint8_t* source, size_t pixels, uint8_t transparency)
{
    for (; pixels > 0; --pixels, destination += 4, source += 4) {
        const int s = RemainingAlpha(source, transparency);
        const int below = (255 - s) * destination[3];
        const int alpha = 255 - (255 - destination[3]) * (255 - s) / 255;
        for (int c = 0; c < 3; ++c) {
            const int sum = below * destination[c] / 255 + s * source[c];
            destination[c] = static_cast<uint8_t>(std::min(255, sum / std::max(1, alpha)));
        }
        destination[3] = static_cast<uint8_t>(alpha);
    }
}

void CopyRowLessTransparency(uint8_t* destination, const uint8_t* source, size_t pixels, uint8_t transparency)
{
    for (; pixels > 0; --pixels, destination += 4, source += 4) {
        std::memcpy(destination, source, 3);
        destination[3] = static_cast<uint8_t>(RemainingAlpha(source, transparency));
    }
}
