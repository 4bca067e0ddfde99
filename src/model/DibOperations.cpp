// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/DibOperations.h"

#include "platform/dib/Pixel.h"

#include <algorithm>
#include <cassert>
#include <cstring>

namespace {

constexpr ptrdiff_t kPixelBytes = 4;
constexpr int kBlock = 64; ///< pixels that are searched as one

/// Whether a pixel of the columns has an alpha above 0.
bool HasOpaque(const uint8_t* row, int begin, int end)
{
    uint32_t any = 0;
    for (int x = begin; x < end; ++x)
        any |= LoadPixel(row + x * kPixelBytes);
    return (any & kOpaquePixel) != 0;
}

/// The first column in [begin, end) with an alpha above 0, or `end`.
int FirstOpaque(const uint8_t* row, int begin, int end)
{
    while (begin < end && !HasOpaque(row, begin, std::min(end, begin + kBlock)))
        begin = std::min(end, begin + kBlock);
    while (begin < end && !HasOpaque(row, begin, begin + 1))
        ++begin;
    return begin;
}

/// One past the last column in [begin, end) with an alpha above 0, or `begin`.
int EndOfOpaque(const uint8_t* row, int begin, int end)
{
    while (begin < end && !HasOpaque(row, std::max(begin, end - kBlock), end))
        end = std::max(begin, end - kBlock);
    while (begin < end && !HasOpaque(row, end - 1, end))
        --end;
    return end;
}

} // namespace

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
        for (int x = inside.left; x < inside.right; ++x) {
            uint8_t* pixel = row + x * kPixelBytes;
            StorePixel(pixel, (LoadPixel(pixel) & ~kOpaquePixel) | uint32_t{alpha} << 24);
        }
    }
}

Rect OpaqueBounds(const CPackedDib& dib)
{
    const int width = dib.Width();
    Rect bounds{width, 0, 0, dib.Height()};
    while (bounds.top < bounds.bottom && !HasOpaque(dib.Row(bounds.top), 0, width))
        ++bounds.top;
    if (bounds.top == bounds.bottom)
        return {};
    while (!HasOpaque(dib.Row(bounds.bottom - 1), 0, width))
        --bounds.bottom;
    // Of each row only what lies outside the bounds so far can widen them.
    for (int y = bounds.top; y < bounds.bottom; ++y) {
        const uint8_t* row = dib.Row(y);
        bounds.left = FirstOpaque(row, 0, bounds.left);
        bounds.right = EndOfOpaque(row, bounds.right, width);
    }
    return bounds;
}
