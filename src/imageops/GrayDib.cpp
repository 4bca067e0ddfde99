// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageops/GrayDib.h"

#include "platform/parallel/PictureBands.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "imageops/GrayDib.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace {
namespace HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

/// `D` is double or, for the last pixels, a vector of one double.
template <typename D>
HWY_INLINE void GrayPixels(D doubles, const uint32_t* HWY_RESTRICT source, uint32_t* HWY_RESTRICT gray)
{
    const hn::Rebind<uint32_t, D> words;
    const hn::Rebind<int32_t, D> integers;
    const auto byteMask = hn::Set(words, 255);
    const auto asDouble = [&](auto byte) { return hn::PromoteTo(doubles, hn::BitCast(integers, byte)); };

    const auto pixel = hn::LoadU(words, source);
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
    hn::StoreU(hn::Or(colour, hn::AndNot(hn::Set(words, 0xFFFFFF), pixel)), words, gray);
}

void GrayRow(const uint32_t* HWY_RESTRICT source, uint32_t* HWY_RESTRICT gray, size_t pixels)
{
    const hn::ScalableTag<double> doubles;
    const size_t lanes = hn::Lanes(doubles);
    size_t x = 0;
    for (; x + lanes <= pixels; x += lanes)
        GrayPixels(doubles, source + x, gray + x);
    for (; x < pixels; ++x)
        GrayPixels(hn::CappedTag<double, 1>(), source + x, gray + x);
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
