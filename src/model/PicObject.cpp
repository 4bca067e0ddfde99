// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/PicObject.h"

::Size CPicObject::Size() const
{
    if (!image)
        return fallbackSize;
    return {image->Width(), image->Height()};
}

bool CPicObject::IsHit(Point point) const
{
    const Rect rect = Rectangle();
    if (point.x < rect.left || point.x >= rect.right || point.y < 0 || point.y >= rect.bottom)
        return false;
    if (!image || image->Dib().IsEmpty())
        return true;
    constexpr uint32_t kAlphaMask = 0xFF000000u;
    // Inside the horizontal range and above the bottom, so only the top side can overflow.
    const int64_t row = int64_t{point.y} - y;
    if (row < 0)
        return false;
    return (image->PixelAt(point.x - x, static_cast<int>(row)) & kAlphaMask) != 0;
}
