// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/geometry/Geometry.h"

#include <cstdint>

/// Where a picture shows in a destination at some zoom, and which of its pixels a destination pixel takes.
struct Placement {
    Rect area;           ///< destination pixels that the picture covers; empty when it is out of sight
    int64_t offsetX = 0; ///< distance from the picture's left edge to destination column 0
    int64_t offsetY = 0;
    int enlargement = 1; ///< destination pixels per picture pixel
    int step = 1;        ///< picture pixels per destination pixel

    /// Whether destination and picture have pixels of one size.
    [[nodiscard]] bool IsPlain() const { return enlargement == 1 && step == 1; }
    /// The picture's column shown in a destination column of the area.
    [[nodiscard]] int SourceX(int x) const { return Sample(static_cast<int>(x + offsetX)); }
    [[nodiscard]] int SourceY(int y) const { return Sample(static_cast<int>(y + offsetY)); }

private:
    [[nodiscard]] int Sample(int distance) const
    {
        return enlargement == 1 ? distance * step : distance / enlargement;
    }
};

/// Places a picture with its corner at `position` of a canvas. zoom: n above 1 multiplies the picture's edges
/// by n, -n below -1 divides them by n toward zero, anything else leaves them. origin: the zoomed canvas
/// pixel in the destination's top-left corner. Any position is allowed; what lies out of reach is out of
/// sight.
[[nodiscard]] Placement Place(Size picture, Point position, int zoom, Size destination, Point origin);
