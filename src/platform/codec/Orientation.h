// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dib/PackedDib.h"

#include <cstdint>
#include <span>

/// How a camera was held: the values of the orientation tag of EXIF 2.3, section 4.6.4. Named after where the
/// first stored row and the first stored column belong.
enum class Orientation {
    TopLeft = 1,
    TopRight,
    BottomRight,
    BottomLeft,
    LeftTop,
    RightTop,
    RightBottom,
    LeftBottom
};

/// From the content of a JPEG APP1 segment; TopLeft where it does not tell.
[[nodiscard]] Orientation ExifOrientation(std::span<const uint8_t> segment);

/// The 32-bit picture turned upright; empty when memory runs out.
[[nodiscard]] CPackedDib TurnUpright(CPackedDib stored, Orientation orientation);
