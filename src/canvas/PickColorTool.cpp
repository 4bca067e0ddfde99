// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/PickColorTool.h"

#include "canvas/PaintSettings.h"
#include "canvas/PixoluneView.h"
#include "canvas/ShownPixel.h"

void CPickColorTool::Move(const MouseInput& input)
{
    const CObjectCanvas& canvas = View().Document().Canvas();
    const Point point = View().Geometry().ToDocument(input.client);
    if (View().Host() != nullptr && canvas.Rectangle().Contains(point))
        View().Host()->OnColourUnderPointer(ShownPixel(canvas, point));
}

void CPickColorTool::Down(const MouseInput& input)
{
    const CPixoluneDoc& document = View().Document();
    const Point point = View().Geometry().ToDocument(input.client);
    if (!document.Canvas().Rectangle().Contains(point))
        return;
    const uint32_t shown = ShownPixel(document.Canvas(), point);
    if (shown >> 24 == 0)
        return;
    // Both orders of the channels are each other's mirror.
    document.Services().settings.Set(ColourSettingOf(input.button),
                                     static_cast<int32_t>(ColourOf(static_cast<int32_t>(shown))));
    if (View().Host() != nullptr)
        View().Host()->OnPaintColoursChanged();
}
