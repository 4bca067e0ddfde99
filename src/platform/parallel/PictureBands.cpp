// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/parallel/PictureBands.h"

#include "platform/parallel/RowBands.h"

#include <hwy/cache_control.h>

#include <atomic>
#include <cassert>

namespace {

/// Pixels of a picture that is small enough to wait in a cache for who reads it next.
constexpr int64_t kCachedPixels = int64_t{1} << 19;

} // namespace

RowStores StoresFor(Size size)
{
    return int64_t{size.width} * size.height > kCachedPixels ? RowStores::Streamed : RowStores::Cached;
}

CPackedDib MakePictureInBands(Size size, int smallestBand,
                              const std::function<bool(CPackedDib& picture, int begin, int end)>& write)
{
    CPackedDib picture = CPackedDib::CreateForOverwrite(size.width, size.height);
    if (picture.IsEmpty())
        return {};
    std::atomic<bool> complete = true;
    ForRowBands(size.height, smallestBand, [&](int begin, int end) {
        if (!write(picture, begin, end))
            complete = false;
        hwy::FlushStream(); // streamed pixels are there before another thread learns that the band is done
    });
    return complete ? std::move(picture) : CPackedDib();
}

CPackedDib MakePictureRows(Size size, int pixelsPerMicrosecond,
                           const std::function<void(const ResultRow& row)>& make)
{
    const RowStores stores = StoresFor(size);
    const auto write = [&](CPackedDib& picture, int begin, int end) {
        for (int y = end - 1; y >= begin; --y)
            make({y, PixelRow(picture, y), static_cast<size_t>(size.width), stores});
        return true;
    };
    return MakePictureInBands(size, BandRows(size.width, pixelsPerMicrosecond), write);
}

CPackedDib MapPictureRows(const CPackedDib& dib, int pixelsPerMicrosecond, const RowMap& map)
{
    if (dib.IsEmpty())
        return {};
    assert(dib.BitCount() == 32);
    return MakePictureRows(dib.Size(), pixelsPerMicrosecond,
                           [&](const ResultRow& row) { map(PixelRow(dib, row.y), row); });
}
