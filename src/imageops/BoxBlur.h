// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dib/PackedDib.h"

/// Largest window side of both blurs.
inline constexpr int kMaxBlurSize = 50;

/// Averages the square window around each pixel, each of the four bytes on its own, truncating. The window's
/// side is the smallest of `size` and the picture's sides, less 1 when even; outside the picture its edge
/// pixels repeat.
/// dib: 32 bits per pixel. size: 1..kMaxBlurSize, others are clamped. Empty when memory runs out.
/// The time does not depend on the size: window sums are kept and moved.
[[nodiscard]] CPackedDib BoxBlur(const CPackedDib& dib, int size);
