// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/DibOperations.h"

#include <cassert>
#include <cstring>

CPackedDib CropByMargins(const CPackedDib& dib, int left, int top, int right, int bottom)
{
    assert(dib.BitCount() == 32);
    const int width = dib.Width() - left - right;
    const int height = dib.Height() - top - bottom;
    assert(left >= 0 && top >= 0 && right >= 0 && bottom >= 0 && width >= 0 && height >= 0);
    CPackedDib inner = CPackedDib::Create(width, height, 32);
    for (int y = 0; !inner.IsEmpty() && y < height; ++y)
        std::memcpy(inner.Row(y), dib.Row(y + top) + ptrdiff_t{left} * 4, static_cast<size_t>(width) * 4);
    return inner;
}

bool IsOpaqueAt(const CPackedDib& dib, Point point)
{
    return point.x >= 0 && point.y >= 0 && point.x < dib.Width() && point.y < dib.Height() &&
           dib.Row(point.y)[ptrdiff_t{point.x} * 4 + 3] != 0;
}

void SetAlphaInRect(CPackedDib& dib, const Rect& rect, uint8_t alpha)
{
    const Rect inside = rect.Intersected({0, 0, dib.Width(), dib.Height()});
    for (int y = inside.top; y < inside.bottom; ++y) {
        uint8_t* row = dib.Row(y);
        for (int x = inside.left; x < inside.right; ++x)
            row[ptrdiff_t{x} * 4 + 3] = alpha;
    }
}

Rect OpaqueBounds(const CPackedDib& dib)
{
    Rect bounds;
    for (int y = 0; y < dib.Height(); ++y) {
        const uint8_t* row = dib.Row(y);
        const auto isClear = [row](int x) { return row[ptrdiff_t{x} * 4 + 3] == 0; };
        int first = 0;
        int end = dib.Width();
        while (first < end && isClear(first))
            ++first;
        while (first < end && isClear(end - 1))
            --end;
        bounds = bounds.United({first, y, end, y + 1});
    }
    return bounds;
}
