// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dib/PackedDib.h"

/// Blue, green and red all become blue * 0.11 + green * 0.59 + red * 0.3, summed in that order in double
/// precision and truncated; alpha stays.
/// dib: 32 bits per pixel. Returns a new picture of the same size; empty when memory runs out.
[[nodiscard]] CPackedDib GrayDib(const CPackedDib& dib);
