// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/SelectedPixels.h"

#include "model/DibOperations.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr ptrdiff_t kPixelBytes = 4;
constexpr ptrdiff_t kAlpha = 3;

/// Calls visit(row, from, to) for every run of the region on the picture, in the picture's coordinates;
/// stops when visit returns true, and returns whether it did.
template <typename Visit> bool AnyRun(Size size, Point corner, const CRegion& region, Visit visit)
{
    const Rect shown = Rect::At(corner, size).Intersected(region.Bounds());
    bool stopped = false;
    for (int y = shown.top; y < shown.bottom && !stopped; ++y) {
        VisitRow(region, y, shown.left, shown.right, [&](int from, int to) {
            stopped = stopped || visit(y - corner.y, from - corner.x, to - corner.x);
        });
    }
    return stopped;
}

} // namespace

PictureCutting CutToRegion(const CPackedDib& dib, Point corner, const CRegion& region)
{
    if (region.IsEmpty())
        return {dib.Duplicate(), corner};
    const Rect part = Rect::At(corner, dib.Size()).Intersected(region.Bounds());
    if (part.IsEmpty())
        return {};
    PictureCutting cutting{CPackedDib::CreateTransparent(part.Width(), part.Height()), part.Corner()};
    if (cutting.dib.IsEmpty())
        return {};
    const int left = part.left - corner.x;
    const int top = part.top - corner.y;
    AnyRun(dib.Size(), corner, region, [&](int row, int from, int to) {
        std::memcpy(cutting.dib.Row(row - top) + (from - left) * kPixelBytes,
                    dib.Row(row) + from * kPixelBytes, static_cast<size_t>((to - from) * kPixelBytes));
        return false;
    });
    return cutting;
}

bool HasOpaquePixel(const CPackedDib& dib, Point corner, const CRegion& region)
{
    if (region.IsEmpty())
        return !OpaqueBounds(dib).IsEmpty();
    return AnyRun(dib.Size(), corner, region, [&](int row, int from, int to) {
        const uint8_t* pixels = dib.Row(row);
        for (int x = from; x < to; ++x) {
            if (pixels[x * kPixelBytes + kAlpha] != 0)
                return true;
        }
        return false;
    });
}

void ClearRegion(CPackedDib& dib, Point corner, const CRegion& region)
{
    AnyRun(dib.Size(), corner, region, [&](int row, int from, int to) {
        SetAlphaInRect(dib, {from, row, to, row + 1}, 0);
        return false;
    });
}
