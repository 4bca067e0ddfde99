// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dib/PackedDib.h"

/// Lightens blue, green and red around a spot by (1 - d2 / D) * brightness, truncated, where d2 is the
/// squared distance from the spot and D that of the farthest corner pixel; alpha stays. A single pixel gets
/// the full brightness. dib: 32 bits per pixel. horizontalPos: percent of the width from the left.
/// verticalPos: percent of the height from the bottom. brightness: 0..255. Values outside their ranges are
/// clamped. Empty when memory runs out.
[[nodiscard]] CPackedDib SunspotDib(const CPackedDib& dib, int horizontalPos, int verticalPos,
                                    int brightness);
