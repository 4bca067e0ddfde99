// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageops/MirrorDib.h"

#include "platform/parallel/PictureBands.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "imageops/MirrorDib.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "platform/parallel/FillRow-inl.h"

HWY_BEFORE_NAMESPACE();
namespace {
namespace HWY_NAMESPACE {

void ReverseRow(const uint32_t* HWY_RESTRICT source, const ResultRow& reversed)
{
    const uint32_t* const end = source + reversed.count;
    FillRow(hn::ScalableTag<uint32_t>(), reversed, [end](auto words, size_t x) HWY_ATTR {
        return hn::Reverse(words, hn::LoadU(words, end - x - hn::Lanes(words)));
    });
}

void CopyRow(const uint32_t* HWY_RESTRICT source, const ResultRow& copy)
{
    StorePixels(source, copy, 0, copy.count);
}

} // namespace HWY_NAMESPACE
} // namespace
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

namespace {
HWY_EXPORT(ReverseRow);
HWY_EXPORT(CopyRow);
constexpr int kPixelsPerMicrosecond = 2000;
} // namespace

CPackedDib MirrorHorizontally(const CPackedDib& dib)
{
    return MapPictureRows(dib, kPixelsPerMicrosecond, HWY_DYNAMIC_DISPATCH(ReverseRow));
}

CPackedDib MirrorVertically(const CPackedDib& dib)
{
    if (dib.IsEmpty())
        return {};
    const auto copyRow = HWY_DYNAMIC_DISPATCH(CopyRow);
    return MakePictureRows(dib.Size(), kPixelsPerMicrosecond, [&](const ResultRow& row) {
        copyRow(PixelRow(dib, dib.Height() - 1 - row.y), row);
    });
}

#endif
