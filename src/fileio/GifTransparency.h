// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dib/PackedDib.h"

#include <cstdint>

/// A pixel of a GIF file is opaque or clear: from this alpha on it is opaque.
inline constexpr uint8_t kLowestOpaqueAlpha = 128;

/// A bit for each pixel whose alpha is below 128; empty when there is none or memory runs out. What these
/// pixels hide is blanked with the first opaque colour, so that it takes no palette entry.
/// frame: 32 bits per pixel.
[[nodiscard]] CPackedDib TakeTransparency(CPackedDib& frame, bool& outOfMemory);
