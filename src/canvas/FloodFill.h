// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "canvas/FillBrush.h"
#include "platform/dib/PackedDib.h"
#include "platform/region/Region.h"

/// Flood fill on a 32-bit picture. A pixel outside `clip` is neither painted nor passed; an empty region
/// stands for everywhere. The connected fills return false when memory runs out; nothing is painted then.

/// Which colours a fill takes: those at most `tolerance` (0 to 255) from the seed's in each channel.
/// seed: 0xAARRGGBB, its alpha does not count. Pixels with alpha 0 never match.
struct FillSeed {
    uint32_t pixel = 0;
    int tolerance = 0;
};

/// Composites the paint over the area of matching pixels around `start`, which is inside the picture and is
/// painted whether it matches or not. Pixels that touch at corners only are not connected.
[[nodiscard]] bool FillConnected(CPackedDib& dib, const FillSeed& seed, const Paint& paint, Point start,
                                 const CRegion& clip);
/// Composites the paint over every matching pixel.
void FillEverywhere(CPackedDib& dib, const FillSeed& seed, const Paint& paint, const CRegion& clip);
/// Sets the area of pixels with alpha 0 around `start` to the paint's colour and alpha.
[[nodiscard]] bool FillConnectedTransparent(CPackedDib& dib, const Paint& paint, Point start,
                                            const CRegion& clip);
/// Sets every pixel with alpha 0 to the paint's colour and alpha.
void FillTransparentEverywhere(CPackedDib& dib, const Paint& paint, const CRegion& clip);
