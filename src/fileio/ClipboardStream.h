// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dib/PackedDib.h"

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

/// A picture to be copied, which somebody else owns. 8, 24 or 32 bits per pixel.
struct CopiedPicture {
    const CPackedDib& dib;
    uint8_t transparency = 0; ///< the source object's; 0 for a merged picture
};

/// A picture that was pasted.
struct PastedPicture {
    CPackedDib dib; ///< the depth that the stream states: 8, 16, 24 or 32 bits per pixel
    uint8_t transparency = 0;
};

/// The private clipboard form of pictures in stacking order. Empty when memory runs out.
[[nodiscard]] std::vector<uint8_t> BuildClipboardStream(std::span<const CopiedPicture> pictures);

/// Reads such a stream; none when it is not valid or ends early.
[[nodiscard]] std::optional<std::vector<PastedPicture>> ParseClipboardStream(std::span<const uint8_t> stream);
