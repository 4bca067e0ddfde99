// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/PencilStroke.h"

#include "canvas/MaskedPixels.h"

#include <algorithm>
#include <cstring>

void AddToLayer(const BitmapView& layer, Point corner, const CCoverageMask& mask, uint8_t opacity)
{
    ForEachCovered(layer, corner, mask, [&](uint8_t* pixel, int coverage) {
        pixel[3] = static_cast<uint8_t>(std::min(255, pixel[3] + coverage * opacity / 255));
    });
}

void PaintOntoPixels(const BitmapView& picture, const CCoverageMask& mask, const Paint& paint)
{
    ForEachCovered(picture, {}, mask, [&](uint8_t* pixel, int coverage) {
        if (pixel[3] == 0)
            return;
        uint32_t value = 0;
        std::memcpy(&value, pixel, sizeof value);
        const Paint part{paint.colour, static_cast<uint8_t>(coverage * paint.alpha / 255)};
        value = (Over(value, part.Pixel()) & 0x00FFFFFF) | (value & 0xFF000000);
        std::memcpy(pixel, &value, sizeof value);
    });
}
