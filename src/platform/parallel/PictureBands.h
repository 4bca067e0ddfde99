// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dib/PackedDib.h"

#include <functional>

/// How the pixels of a new picture reach the memory.
enum class RowStores {
    Cached,
    Streamed, ///< past the caches, where a large picture would not stay; its memory is not read first
};

/// A row of a 32-bit picture that is being made; every pixel is to be written.
struct ResultRow {
    int y = 0; ///< from the top
    uint32_t* pixels = nullptr;
    size_t count = 0;
    RowStores stores = RowStores::Cached;
};

/// The stores that suit a 32-bit picture of a size.
[[nodiscard]] RowStores StoresFor(Size size);

/// A new 32-bit picture of `size` whose rows begin to end - 1, counted from the top, `write` fills, for bands
/// as ForRowBands makes them. `write` must write every pixel of its rows and may return false when it runs
/// out of memory. Empty when the picture or a band cannot be made.
[[nodiscard]] CPackedDib
MakePictureInBands(Size size, int smallestBand,
                   const std::function<bool(CPackedDib& picture, int begin, int end)>& write);

/// A new picture of `size`, each row made on its own in the order in which rows stand in memory; empty when
/// memory runs out. pixelsPerMicrosecond: about how fast `make` is, see BandRows.
[[nodiscard]] CPackedDib MakePictureRows(Size size, int pixelsPerMicrosecond,
                                         const std::function<void(const ResultRow& row)>& make);

/// Makes one row of pixels from the row that stands at its place in the source.
using RowMap = std::function<void(const uint32_t* source, const ResultRow& result)>;

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
