// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageops/MirrorDib.h"

#include "platform/parallel/PictureBands.h"
#include "platform/parallel/RowBands.h"

#include <cstring>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "imageops/MirrorDib.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace {
namespace HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

void ReverseRow(const uint32_t* HWY_RESTRICT source, uint32_t* HWY_RESTRICT reversed, size_t pixels)
{
    const hn::ScalableTag<uint32_t> words;
    const size_t lanes = hn::Lanes(words);
    size_t x = 0;
    for (; x + lanes <= pixels; x += lanes)
        hn::StoreU(hn::Reverse(words, hn::LoadU(words, source + pixels - lanes - x)), words, reversed + x);
    for (; x < pixels; ++x)
        reversed[x] = source[pixels - 1 - x];
}

} // namespace HWY_NAMESPACE
} // namespace
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

namespace {
HWY_EXPORT(ReverseRow);
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
    const auto copyRows = [&](CPackedDib& mirrored, int begin, int end) {
        for (int y = begin; y < end; ++y)
            std::memcpy(mirrored.Row(y), dib.Row(dib.Height() - 1 - y), dib.Stride());
        return true;
    };
    return MakePictureInBands(dib.Size(), BandRows(dib.Width(), kPixelsPerMicrosecond), copyRows);
}

#endif
