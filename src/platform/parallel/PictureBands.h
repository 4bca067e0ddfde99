// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dib/PackedDib.h"

#include <functional>

/// A new 32-bit picture of `size` whose rows begin to end - 1, counted from the top, `write` fills, for bands
/// as ForRowBands makes them. `write` must write every pixel of its rows and may return false when it runs
/// out of memory. Empty when the picture or a band cannot be made.
[[nodiscard]] CPackedDib
MakePictureInBands(Size size, int smallestBand,
                   const std::function<bool(CPackedDib& picture, int begin, int end)>& write);

/// Makes one row of pixels from the row that stands at its place in the source.
using RowMap = std::function<void(const uint32_t* source, uint32_t* result, size_t pixels)>;

/// A new picture of the same size, made row by row; empty for no picture and when memory runs out.
/// dib: 32 bits per pixel. pixelsPerMicrosecond: about how fast `map` is, see BandRows.
[[nodiscard]] CPackedDib MapPictureRows(const CPackedDib& dib, int pixelsPerMicrosecond, const RowMap& map);

/// Row y from the top as whole pixels.
[[nodiscard]] inline const uint32_t* PixelRow(const CPackedDib& dib, int y)
{
    return reinterpret_cast<const uint32_t*>(dib.Row(y));
}
[[nodiscard]] inline uint32_t* PixelRow(CPackedDib& dib, int y)
{
    return reinterpret_cast<uint32_t*>(dib.Row(y));
}
