// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dib/PackedDib.h"

class IProgress;

/// Adds a number to each red, green and blue, clamped to 0..255; alpha stays.
/// dib: 32 bits per pixel. red, green, blue: -255..255, others are clamped. All 0 gives the same bytes.
/// progress: may be none. flag: reserved, 0. Empty when memory runs out.
[[nodiscard]] CPackedDib AdjustDIBRGB(const CPackedDib& dib, int red, int green, int blue,
                                      IProgress* progress = nullptr, int flag = 0);
