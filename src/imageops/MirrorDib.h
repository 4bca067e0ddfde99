// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dib/PackedDib.h"

/// Column x of the result is column width - 1 - x of the picture; whole pixels are copied.
/// dib: 32 bits per pixel. Empty when memory runs out.
[[nodiscard]] CPackedDib MirrorHorizontally(const CPackedDib& dib);

/// The top row becomes the bottom row and so on.
[[nodiscard]] CPackedDib MirrorVertically(const CPackedDib& dib);
