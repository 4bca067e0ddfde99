// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dib/PackedDib.h"

/// Moves each byte, alpha included, away from the mean of its eight neighbours:
/// P + (P - N) * amount, clamped to 0..255, with N = (sum of the 3 x 3 window - P) / 8 and
/// amount = sharpness / 100, both divided in integers. So there are three steps only: below 100 nothing
/// changes. Outside the picture its edge pixels repeat.
/// dib: 32 bits per pixel. sharpness: 0..255, others are clamped. Empty when memory runs out.
[[nodiscard]] CPackedDib SharpenDib(const CPackedDib& dib, int sharpness);
