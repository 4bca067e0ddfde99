// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageops/NegativeDib.h"

#include "platform/parallel/PictureBands.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "imageops/NegativeDib.cpp"
#include <hwy/foreach_target.h>
// After foreach_target.h.
#include <hwy/highway.h>

#include "platform/parallel/FillRow-inl.h"

HWY_BEFORE_NAMESPACE();
namespace {
namespace HWY_NAMESPACE {

void NegateRow(const uint32_t* HWY_RESTRICT source, const ResultRow& negative)
{
    FillRowFrom(source, hn::ScalableTag<uint32_t>(), negative, [](auto pixels, auto words, size_t) HWY_ATTR {
        return hn::Xor(pixels, hn::Set(words, 0x00FFFFFF));
    });
}

} // namespace HWY_NAMESPACE
} // namespace
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

namespace {
HWY_EXPORT(NegateRow);
constexpr int kPixelsPerMicrosecond = 2000;
} // namespace

CPackedDib NegativeDib(const CPackedDib& dib)
{
    return MapPictureRows(dib, kPixelsPerMicrosecond, HWY_DYNAMIC_DISPATCH(NegateRow));
}

#endif
