// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dib/PackedDib.h"
#include "platform/geometry/Geometry.h"

#include <span>

/// Unfinished shapes, drawn one pixel wide by inverting what is below, so that they show on every background.
/// `target` shows the client rectangle `area`; points are client points and may lie far outside. No pixel is
/// inverted twice by one call.

/// The lines from point to point, both ends drawn.
void InvertPolyline(const BitmapView& target, const Rect& area, std::span<const Point> points);
/// The frame along the inner edge of the rectangle.
void InvertRectangle(const BitmapView& target, const Rect& area, const Rect& rect);
/// The ellipse inscribed in the rectangle.
void InvertEllipse(const BitmapView& target, const Rect& area, const Rect& rect);
