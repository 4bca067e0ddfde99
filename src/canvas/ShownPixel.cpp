// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/ShownPixel.h"

#include "canvas/FillBrush.h"

#include <algorithm>

namespace {

uint32_t LessTransparency(uint32_t pixel, uint8_t transparency)
{
    const uint32_t alpha = pixel >> 24;
    return (pixel & 0x00FFFFFF) | (alpha > transparency ? alpha - transparency : 0) << 24;
}

} // namespace

uint32_t ShownPixel(const CObjectCanvas& canvas, Point point)
{
    uint32_t shown = 0;
    bool isFirst = true;
    for (const Ref<CPicObject>& object : canvas.objects) {
        if (!object->visible || !object->image)
            continue;
        const Point own = ToObject(*object, point);
        const uint32_t pixel = LessTransparency(object->image->PixelAt(own.x, own.y), object->transparency);
        shown = isFirst ? pixel : Over(shown, pixel);
        isFirst = false;
    }
    return shown;
}

Point ToObject(const CPicObject& object, Point point)
{
    // Rectangles take differences of any two coordinates.
    const Rect between{object.x, object.y, point.x, point.y};
    return {between.Width(), between.Height()};
}
