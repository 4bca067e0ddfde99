// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/WindowBuffer.h"

#include "platform/parallel/RowBands.h"

#include <cstring>

namespace {

constexpr int kPixelsPerMicrosecond = 500;

} // namespace

void CopyPixels(const BitmapView& to, const ConstBitmapView& from)
{
    ForRowBands(to.height, BandRows(to.width, kPixelsPerMicrosecond), [&](int begin, int end) {
        for (int y = begin; y < end; ++y)
            std::memcpy(to.Row(y), from.Row(y), static_cast<size_t>(to.width) * 4);
    });
}

bool WindowBuffer::Allocate(Size window)
{
    if (pixels.IsEmpty())
        *this = {CPackedDib::CreateForOverwrite(window.width, window.height), {}, {}};
    return !pixels.IsEmpty();
}

void WindowBuffer::Remove(const Rect& rect)
{
    if (!valid.Subtract(CRegion(rect)))
        valid = {};
}

void WindowBuffer::Add(const Rect& rect)
{
    const CRegion added(rect);
    if (!valid.Unite(added) || !shown.Unite(added))
        Clear();
}

void WindowBuffer::Shift(int dx, int dy)
{
    if (pixels.IsEmpty() || shown.IsEmpty())
        return;
    const BitmapView all = ViewOf(pixels);
    const Rect whole{0, 0, all.width, all.height};
    const Rect kept = whole.Intersected(whole.Moved(dx, dy));
    const auto follows = [&](CRegion& region) {
        return region.Intersect(CRegion(kept)) && region.Translate(-dx, -dy);
    };
    if (kept.IsEmpty() || !follows(valid) || !follows(shown)) {
        Clear();
        return;
    }
    const auto moveRow = [&](int y) {
        std::memmove(all.Row(y - dy) + ptrdiff_t{kept.left - dx} * 4, all.Row(y) + ptrdiff_t{kept.left} * 4,
                     static_cast<size_t>(kept.Width()) * 4);
    };
    if (dy >= 0) {
        for (int y = kept.top; y < kept.bottom; ++y)
            moveRow(y);
    } else {
        for (int y = kept.bottom - 1; y >= kept.top; --y)
            moveRow(y);
    }
}

CRegion WindowBuffer::Missing(const Rect& rect) const
{
    CRegion missing(rect);
    return missing.Subtract(valid) ? missing : CRegion(rect);
}
