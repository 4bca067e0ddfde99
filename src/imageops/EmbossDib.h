// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dib/PackedDib.h"

/// A gray relief: ((red + green + blue) - (those of a neighbour)) * 0.3333333333333333 * weight + elevation
/// in double precision, clamped to 0..255 and truncated, in blue, green and red; alpha stays. The neighbour
/// is the pixel next to this one in the direction of the angle, clamped into the picture. dib: 32 bits per
/// pixel. elevation: 0..255. weight: 0..15. angleDegrees: 0 is right, 90 up; 360 is 0. Empty when memory runs
/// out.
[[nodiscard]] CPackedDib EmbossDib(const CPackedDib& dib, int elevation, int weight, int angleDegrees);
