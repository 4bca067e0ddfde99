// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/EraseStroke.h"

#include "canvas/MaskedPixels.h"

#include <algorithm>

void ErasePixels(const BitmapView& picture, const CCoverageMask& mask, uint8_t transparence)
{
    ForEachCovered(picture, {}, mask, [&](uint8_t* pixel, int coverage) {
        pixel[3] = static_cast<uint8_t>(std::max(0, pixel[3] - coverage * transparence / 255));
    });
}
