// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/BrushOutline.h"

#include "platform/region/RegionBuilder.h"

Rect DabBox(Point point, const Pen& pen)
{
    // An even width stands on the corner of the pixel, an odd one on its centre.
    return Rect::At({AddClamped(point.x, -(pen.width / 2)), AddClamped(point.y, -(pen.width / 2))},
                    {pen.width, pen.width});
}

CSelectionOutline BrushOutline(Point point, const Pen& pen)
{
    CSelectionOutline outline;
    const Rect box = DabBox(point, pen);
    // A soft pen covers a pixel by half exactly where a hard one ends.
    const std::optional<CCoverageMask> mask =
        RasteriseSegment(box, point, point, {pen.width, pen.cap, 0}, CRegion());
    CRegionBuilder builder(static_cast<size_t>(box.Height()));
    if (!mask || builder.IsEmpty())
        return outline;
    for (int y = 0; y < box.Height(); ++y) {
        const CCoverageMask::Run run = mask->RunOf(y);
        if (run.left < run.right)
            builder.AddRun(box.top + y, box.left + run.left, box.left + run.right);
    }
    outline.Build(builder.Finish());
    return outline;
}
