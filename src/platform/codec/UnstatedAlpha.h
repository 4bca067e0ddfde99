// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dib/PackedDib.h"

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
