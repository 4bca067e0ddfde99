// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/parallel/PictureBands.h"

#include "platform/parallel/RowBands.h"

#include <atomic>
#include <cassert>

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
    });
    return complete ? std::move(picture) : CPackedDib();
}

CPackedDib MapPictureRows(const CPackedDib& dib, int pixelsPerMicrosecond, const RowMap& map)
{
    if (dib.IsEmpty())
        return {};
    assert(dib.BitCount() == 32);
    const auto write = [&](CPackedDib& picture, int begin, int end) {
        for (int y = begin; y < end; ++y)
            map(PixelRow(dib, y), PixelRow(picture, y), static_cast<size_t>(dib.Width()));
        return true;
    };
    return MakePictureInBands(dib.Size(), BandRows(dib.Width(), pixelsPerMicrosecond), write);
}
