// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dib/PackedDib.h"

#include <cstdint>

/// How covered pixels are coloured. Modes 1 to 5 run from the first to the second colour: left to right, top
/// to bottom, along the diagonal from the top-left corner, along the other one from the top-right corner,
/// and from the centre outwards.
struct ColourFill {
    uint32_t first = 0;  ///< 0x00bbggrr
    uint32_t second = 0; ///< 0x00bbggrr
    int mode = 0;        ///< 0 a single colour, the first; 1 to 5 gradients
    friend bool operator==(const ColourFill&, const ColourFill&) = default;
};

/// A 32-bit picture of the coverage's size (8 bits per pixel, index = coverage): the fill's colours with the
/// coverage as alpha. Every picture corner and edge that a gradient begins or ends at has exactly its colour;
/// the radial one reaches the second colour in the corners. Empty when memory runs out.
[[nodiscard]] CPackedDib ColourCoverage(const CPackedDib& coverage, const ColourFill& fill);
