// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dib/PackedDib.h"

#include <array>

/// Colour of a checkerboard square.
struct Rgb {
    uint8_t red = 0;
    uint8_t green = 0;
    uint8_t blue = 0;
};

/// A picture of any depth as 32 bits per pixel with alpha 255. Where `mask` (1 bit per pixel, the same size)
/// has a set bit, the pixel's alpha is 0; empty means no mask. 16 bits with bit fields honour the masks.
/// Empty when memory runs out.
[[nodiscard]] CPackedDib ConvertTo32Bits(const CPackedDib& dib, const CPackedDib& mask = {});

/// The inner rectangle of a 32-bit picture. Margins may leave nothing; they must not overlap.
/// Empty when memory runs out.
[[nodiscard]] CPackedDib CropByMargins(const CPackedDib& dib, int left, int top, int right, int bottom);

/// Whether the point lies in the 32-bit picture and is not fully transparent.
[[nodiscard]] bool IsOpaqueAt(const CPackedDib& dib, Point point);

/// Writes the alpha byte of every pixel in the rectangle, as far as it lies in the picture.
void SetAlphaInRect(CPackedDib& dib, const Rect& rect, uint8_t alpha);

/// The smallest rectangle around all pixels with alpha above 0; empty without one.
[[nodiscard]] Rect OpaqueBounds(const CPackedDib& dib);

/// Squares of 8 x 8 pixels; the alpha bytes stay. Pixel (x, y) takes colour a where
/// (x + offset.x) / 8 + (y + offset.y) / 8 is even, the divisions truncating toward zero.
/// y counts the view's rows from its top; a caller that means stored rows passes a view of those.
void DrawCheckerboard(const BitmapView& view, Rgb a, Rgb b, Point offset);
