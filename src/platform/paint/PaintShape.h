// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dib/PackedDib.h"

#include <span>

/// How much of each pixel a shape covers.
struct ShapeCoverage {
    CPackedDib dib; ///< 8 bits per pixel, palette of 256 greys, 255 fully covered; empty without a shape
    Point corner;   ///< of its top-left pixel in document coordinates
    bool outOfMemory = false; ///< there is a shape, but not the memory for it
};

enum class ShapeKind { Rectangle, Ellipse };
/// Filled: the inside alone. Outline: a line of the outline width, centred on the edge, with mitred joins.
enum class ShapeFill { Outline, Filled };

/// A rectangle or an ellipse inscribed in `rect` (document coordinates, normalised).
/// outlineWidth: pixels, at least 1; used by outlines only. cornerSize: diameters of the rounded corners of a
/// rectangle, 0 for square ones; an ellipse ignores it.
/// No coverage for a rectangle without width or height, one beyond kMaxPicturePixels, and when memory runs
/// out.
[[nodiscard]] ShapeCoverage PaintShapeOnPic(const Rect& rect, int outlineWidth, ShapeKind kind,
                                            ShapeFill fill, Point cornerSize);

/// The closed polygon through the points; where it crosses itself, the parts inside alternate.
/// No coverage for fewer than 2 points when outlined and 3 when filled, and as above.
[[nodiscard]] ShapeCoverage PaintPolygonOnPic(std::span<const Point> points, int outlineWidth,
                                              ShapeFill fill);
