// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageops/GrayDib.h"

#include "platform/parallel/PictureBands.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "imageops/GrayDib.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "platform/parallel/FillRow-inl.h"

HWY_BEFORE_NAMESPACE();
namespace {
namespace HWY_NAMESPACE {

template <typename D> HWY_INLINE hn::Vec<D> GrayPixels(D words, hn::Vec<D> pixel)
{
    const hn::Rebind<double, D> doubles;
    const hn::Rebind<int32_t, D> integers;
    const auto byteMask = hn::Set(words, 255);
    const auto asDouble = [&](auto byte) { return hn::PromoteTo(doubles, hn::BitCast(integers, byte)); };

    const auto blue = asDouble(hn::And(pixel, byteMask));
    const auto green = asDouble(hn::And(hn::ShiftRight<8>(pixel), byteMask));
    const auto red = asDouble(hn::And(hn::ShiftRight<16>(pixel), byteMask));
    // No fused multiply-add: the products are rounded before they are summed.
    const auto sum =
        hn::Add(hn::Add(hn::Mul(blue, hn::Set(doubles, 0.11)), hn::Mul(green, hn::Set(doubles, 0.59))),
                hn::Mul(red, hn::Set(doubles, 0.3)));
    const auto level = hn::BitCast(words, hn::DemoteTo(integers, sum));
    const auto twice = hn::Or(level, hn::ShiftLeft<8>(level));
    const auto colour = hn::Or(twice, hn::ShiftLeft<16>(level));
    return hn::Or(colour, hn::AndNot(hn::Set(words, 0xFFFFFF), pixel));
}

void GrayRow(const uint32_t* HWY_RESTRICT source, const ResultRow& gray)
{
    const hn::Rebind<uint32_t, hn::ScalableTag<double>> words;
    FillRowFrom(source, words, gray,
                [](auto pixels, auto tag, size_t) HWY_ATTR { return GrayPixels(tag, pixels); });
}

} // namespace HWY_NAMESPACE
} // namespace
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

namespace {
HWY_EXPORT(GrayRow);
constexpr int kPixelsPerMicrosecond = 800;
} // namespace

CPackedDib GrayDib(const CPackedDib& dib)
{
    return MapPictureRows(dib, kPixelsPerMicrosecond, HWY_DYNAMIC_DISPATCH(GrayRow));
}

#endif
