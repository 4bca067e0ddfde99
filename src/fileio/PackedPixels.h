// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dib/PackedDib.h"

#include <cstdint>
#include <functional>
#include <span>

/// Takes the next bytes of a stream; false stops the writer.
using ByteSink = std::function<bool(std::span<const uint8_t>)>;

/// Packs a picture of 8, 24 or 32 bits per pixel: channel by channel (red, green, blue, alpha; a palette
/// picture has one), each channel's rows from the top down, every row on its own.
/// False when the sink refuses or memory runs out.
[[nodiscard]] bool PackPixels(const CPackedDib& dib, const ByteSink& write);

/// Unpacks such a picture from the front of `packed` and moves that to what follows the picture. The four
/// channels always go to bytes 2, 1, 0 and 3 of a pixel, so that only pictures of 24 and 32 bits come back
/// as they were; what would land outside the picture is dropped. bitCount: 8, 16, 24 or 32.
/// Memory is asked for only once the data is known to be complete. Empty when it is not, or when the size
/// is refused.
[[nodiscard]] CPackedDib UnpackPixels(std::span<const uint8_t>& packed, uint32_t width, uint32_t height,
                                      uint32_t bitCount);
