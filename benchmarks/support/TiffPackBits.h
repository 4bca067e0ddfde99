// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dib/PackedDib.h"

#include <cstdint>
#include <vector>

/// libtiff's PackBits coder on files in memory: the four channels of a 32-bit picture as planes, row by row.
/// The copying from pixels to planes is not part of what is to be timed, so planes go in and out.
struct ChannelPlanes {
    int width = 0;
    int height = 0;
    std::vector<uint8_t> channels[4]; ///< width * height bytes each
};

ChannelPlanes PlanesOf(const CPackedDib& dib);
std::vector<uint8_t> EncodeTiffPackBits(const ChannelPlanes& planes);
/// planes: of the size that was encoded.
void DecodeTiffPackBits(const std::vector<uint8_t>& file, ChannelPlanes& planes);
