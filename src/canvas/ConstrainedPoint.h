// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/geometry/Geometry.h"

/// The point nearest to `point` that lies in a direction of a multiple of 15 degrees from `anchor`.
[[nodiscard]] Point SnapDirection(Point anchor, Point point);

/// The corner that makes the box from `anchor` a square: the longer side wins, the signs stay.
[[nodiscard]] Point SnapSquare(Point anchor, Point point);
