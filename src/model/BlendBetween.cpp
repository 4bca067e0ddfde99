// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/BlendBetween.h"

void BlendBetween(uint8_t* __restrict background, const uint8_t* __restrict onBlack,
                  const uint8_t* __restrict onWhite, size_t pixels)
{
    for (size_t i = 0; i < pixels * 4; ++i) {
        const auto distance = static_cast<uint16_t>(onWhite[i] - onBlack[i]);
        // Division by 255, rounded; all of it fits in 16 bits.
        const auto product = static_cast<uint16_t>(distance * background[i] + 128);
        const auto share = static_cast<uint16_t>(static_cast<uint16_t>(product + (product >> 8)) >> 8);
        background[i] = static_cast<uint8_t>(onBlack[i] + share);
    }
}
