// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dib/PackedDib.h"
#include "platform/pen/SegmentMask.h"

/// Calls visit(pixel, coverage) for every pixel with a coverage above 0. corner: where the picture stands in
/// the mask's coordinates; the mask lies inside it.
template <typename Visit>
void ForEachCovered(const BitmapView& picture, Point corner, const CCoverageMask& mask, Visit visit)
{
    for (int y = mask.Bounds().top; y < mask.Bounds().bottom; ++y) {
        const CCoverageMask::Run run = mask.RunOf(y);
        if (run.left == run.right)
            continue;
        const uint8_t* coverage = mask.At(run.left, y);
        uint8_t* pixel = picture.Row(y - corner.y) + ptrdiff_t{run.left - corner.x} * 4;
        for (int x = run.left; x < run.right; ++x, ++coverage, pixel += 4) {
            if (*coverage != 0)
                visit(pixel, int{*coverage});
        }
    }
}
