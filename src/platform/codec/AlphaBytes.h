// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dib/PackedDib.h"

/// Whether every alpha byte of a 32-bit picture is 255.
[[nodiscard]] inline bool IsOpaque(const CPackedDib& dib)
{
    const std::span<const uint8_t> bits = dib.Bits();
    for (int y = 0; y < dib.Height(); ++y) {
        // Row by row without a branch, which the compiler turns into vectors.
        uint8_t all = 255;
        const uint8_t* row = bits.data() + static_cast<size_t>(y) * dib.Stride();
        for (size_t at = 3; at < dib.Stride(); at += 4)
            all &= row[at];
        if (all != 255)
            return false;
    }
    return true;
}

/// For four bytes a pixel without a word about alpha: the fourth one is alpha, unless it is 0 in the whole
/// picture, which then becomes opaque.
inline void SettleUnstatedAlpha(CPackedDib& dib)
{
    const std::span<uint8_t> bits = dib.Bits();
    for (size_t at = 3; at < bits.size(); at += 4) {
        if (bits[at] != 0)
            return;
    }
    for (size_t at = 3; at < bits.size(); at += 4)
        bits[at] = 255;
}
