// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/ViewPainting.h"

#include "model/DibOperations.h"

#include <cstring>

namespace {

constexpr uint32_t kWhite = 0xFFFFFFFF;
constexpr uint32_t kBlack = 0xFF000000;
constexpr Rgb kSquareA{255, 255, 255};
constexpr Rgb kSquareB{212, 212, 212};
constexpr int kDash = 4;

void SetPixel(uint8_t* at, uint32_t pixel)
{
    std::memcpy(at, &pixel, sizeof pixel);
}

void FillRect(const BitmapView& target, const Rect& area, const Rect& rect, uint32_t pixel)
{
    const Rect shown = rect.Intersected(area);
    if (shown.IsEmpty())
        return;
    for (int y = shown.top; y < shown.bottom; ++y) {
        uint8_t* row = target.Row(y - area.top);
        for (int x = shown.left; x < shown.right; ++x)
            SetPixel(row + ptrdiff_t{x - area.left} * 4, pixel);
    }
}

void OutlineRect(const BitmapView& target, const Rect& area, const Rect& rect, uint32_t pixel)
{
    FillRect(target, area, {rect.left, rect.top, rect.right, rect.top + 1}, pixel);
    FillRect(target, area, {rect.left, rect.bottom - 1, rect.right, rect.bottom}, pixel);
    FillRect(target, area, {rect.left, rect.top, rect.left + 1, rect.bottom}, pixel);
    FillRect(target, area, {rect.right - 1, rect.top, rect.right, rect.bottom}, pixel);
}

uint32_t DashAt(int along)
{
    return (along / kDash) % 2 == 0 ? kBlack : kWhite;
}

} // namespace

void PaintSurroundings(const BitmapView& target, const Rect& area, const ViewGeometry& geometry,
                       const SurroundingColours& colours)
{
    const Rect image = geometry.ImageInClient();
    const Rect inner = image.Intersected(area);
    // Only the space around the image: what lies inside is painted over anyway.
    if (inner.IsEmpty()) {
        FillRect(target, area, area, colours.window);
    } else {
        FillRect(target, area, {area.left, area.top, area.right, inner.top}, colours.window);
        FillRect(target, area, {area.left, inner.bottom, area.right, area.bottom}, colours.window);
        FillRect(target, area, {area.left, inner.top, inner.left, inner.bottom}, colours.window);
        FillRect(target, area, {inner.right, inner.top, area.right, inner.bottom}, colours.window);
    }
    OutlineRect(target, area, image.Inflated(2), colours.border);
    OutlineRect(target, area, image.Inflated(1), colours.edge);
}

void PaintBackdrop(const BitmapView& target, Point origin)
{
    for (int y = 0; y < target.height; ++y) // the squares leave the alpha as it is
        std::memset(target.Row(y), 255, static_cast<size_t>(target.width) * 4);
    DrawCheckerboard(target, kSquareA, kSquareB, origin);
}

void PaintFrame(const BitmapView& target, const Rect& area, const Rect& frame)
{
    const Rect shown = frame.Intersected(area);
    if (shown.IsEmpty())
        return;
    for (const int y : {frame.top, frame.bottom - 1}) {
        if (y < area.top || y >= area.bottom)
            continue;
        for (int x = shown.left; x < shown.right; ++x)
            SetPixel(target.Row(y - area.top) + ptrdiff_t{x - area.left} * 4, DashAt(x));
    }
    for (const int x : {frame.left, frame.right - 1}) {
        if (x < area.left || x >= area.right)
            continue;
        for (int y = shown.top; y < shown.bottom; ++y)
            SetPixel(target.Row(y - area.top) + ptrdiff_t{x - area.left} * 4, DashAt(y));
    }
}
