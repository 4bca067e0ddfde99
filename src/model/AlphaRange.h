// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dib/PackedDib.h"

#include <algorithm>
#include <cstdint>

/// Between which bounds some alphas lie.
struct AlphaRange {
    uint8_t lowest = 0;
    uint8_t highest = 255;

    [[nodiscard]] AlphaRange United(AlphaRange other) const
    {
        return {std::min(lowest, other.lowest), std::max(highest, other.highest)};
    }
    /// Of what is left of the alphas when a transparency is subtracted, not below 0.
    [[nodiscard]] AlphaRange Less(uint8_t transparency) const
    {
        const auto less = [transparency](uint8_t alpha) {
            return static_cast<uint8_t>(std::max(0, alpha - transparency));
        };
        return {less(lowest), less(highest)};
    }
    friend bool operator==(AlphaRange, AlphaRange) = default;
};

/// The lowest and the highest alpha of 32-bit pixels, at least one.
[[nodiscard]] AlphaRange FindAlphaRange(const ConstBitmapView& pixels);
