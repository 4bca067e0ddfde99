// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/ObjectCanvas.h"

#include <cstdint>

/// What the visible objects show at a point of the canvas, 0xAARRGGBB: their pixels, each with the object's
/// transparency taken off its alpha, composited from the bottom up; 0 where there is none.
[[nodiscard]] uint32_t ShownPixel(const CObjectCanvas& canvas, Point point);

/// A point of the canvas in an object's own coordinates.
[[nodiscard]] Point ToObject(const CPicObject& object, Point point);
