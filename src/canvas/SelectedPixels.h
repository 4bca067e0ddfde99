// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dib/PackedDib.h"
#include "platform/region/Region.h"

/// A part of a picture with the place of its corner on the canvas.
struct PictureCutting {
    CPackedDib dib; ///< empty when nothing is left
    Point corner;
};

/// The pixels of a 32-bit picture, standing at `corner`, that the region (document pixels) holds: the
/// smallest rectangle around them, transparent outside the region. With an empty region the whole picture.
[[nodiscard]] PictureCutting CutToRegion(const CPackedDib& dib, Point corner, const CRegion& region);

/// Whether any pixel of the picture inside the region has alpha above 0. An empty region stands for all.
[[nodiscard]] bool HasOpaquePixel(const CPackedDib& dib, Point corner, const CRegion& region);

/// Sets the alpha of every pixel inside the region to 0.
void ClearRegion(CPackedDib& dib, Point corner, const CRegion& region);
