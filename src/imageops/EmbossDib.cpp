// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageops/EmbossDib.h"

#include "platform/parallel/PictureBands.h"
#include "platform/parallel/RowBands.h"

#include <algorithm>
#include <cmath>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "imageops/EmbossDib.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#ifndef PIXOLUNE_RELIEF
#define PIXOLUNE_RELIEF
namespace {

struct Relief {
    double weight = 0;
    double elevation = 0;
    int columnStep = 0; ///< from a pixel to its neighbour: -1, 0 or 1
    int rowStep = 0;    ///< the same, upward
};

} // namespace
#endif

HWY_BEFORE_NAMESPACE();
namespace {
namespace HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

/// The height of the relief where the sums of red, green and blue differ by `difference`.
template <typename D>
HWY_INLINE auto HeightOf(D doubles, const Relief& relief, hn::Vec<hn::Rebind<int32_t, D>> difference)
{
    const auto third = hn::Mul(hn::PromoteTo(doubles, difference), hn::Set(doubles, 0.3333333333333333));
    const auto slope = hn::Mul(third, hn::Set(doubles, relief.weight));
    return hn::DemoteTo(hn::Rebind<int32_t, D>(), hn::Add(slope, hn::Set(doubles, relief.elevation)));
}

/// As many heights as there are 32-bit lanes, which is two vectors of doubles.
template <typename D>
HWY_INLINE hn::Vec<D> HeightsOf([[maybe_unused]] D integers, const Relief& relief, hn::Vec<D> difference)
{
#if HWY_TARGET != HWY_SCALAR
    if constexpr (hn::MaxLanes(D()) > 1) {
        const hn::Half<D> half;
        const hn::Rebind<double, decltype(half)> doubles;
        return hn::Combine(integers, HeightOf(doubles, relief, hn::UpperHalf(half, difference)),
                           HeightOf(doubles, relief, hn::LowerHalf(half, difference)));
    } else
#endif
    {
        return HeightOf(hn::Rebind<double, D>(), relief, difference);
    }
}

template <typename D>
HWY_INLINE void EmbossPixels(D words, const Relief& relief, const uint32_t* HWY_RESTRICT source,
                             const uint32_t* HWY_RESTRICT neighbour, uint32_t* HWY_RESTRICT embossed)
{
    const hn::RebindToSigned<D> integers;
    const auto byteMask = hn::Set(words, 255);
    const auto sumOf = [&](auto pixel) {
        const auto blueAndGreen =
            hn::Add(hn::And(pixel, byteMask), hn::And(hn::ShiftRight<8>(pixel), byteMask));
        return hn::Add(blueAndGreen, hn::And(hn::ShiftRight<16>(pixel), byteMask));
    };
    const auto pixel = hn::LoadU(words, source);
    const auto difference = hn::Sub(sumOf(pixel), sumOf(hn::LoadU(words, neighbour)));
    const auto height = HeightsOf(integers, relief, hn::BitCast(integers, difference));
    const auto clamped = hn::Min(hn::Max(height, hn::Zero(integers)), hn::Set(integers, 255));
    const auto level = hn::BitCast(words, clamped);
    const auto colour = hn::Or(hn::Or(level, hn::ShiftLeft<8>(level)), hn::ShiftLeft<16>(level));
    hn::StoreU(hn::Or(colour, hn::AndNot(hn::Set(words, 0xFFFFFF), pixel)), words, embossed);
}

void EmbossRow(const Relief& shared, const uint32_t* HWY_RESTRICT source,
               const uint32_t* HWY_RESTRICT neighbours, size_t pixels, uint32_t* HWY_RESTRICT embossed)
{
    const hn::ScalableTag<uint32_t> words;
    const hn::CappedTag<uint32_t, 1> single;
    const size_t lanes = hn::Lanes(words);
    const Relief relief = shared; // of its own, which the stores below cannot change
    const ptrdiff_t step = relief.columnStep;
    size_t x = 0;
    if (step < 0) {
        EmbossPixels(single, relief, source, neighbours, embossed);
        x = 1;
    }
    const size_t end = step > 0 ? pixels - 1 : pixels;
    for (; x + lanes <= end; x += lanes)
        EmbossPixels(words, relief, source + x, neighbours + x + step, embossed + x);
    for (; x < end; ++x)
        EmbossPixels(single, relief, source + x, neighbours + x + step, embossed + x);
    if (step > 0)
        EmbossPixels(single, relief, source + end, neighbours + end, embossed + end);
}

} // namespace HWY_NAMESPACE
} // namespace
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

namespace {

HWY_EXPORT(EmbossRow);
constexpr int kPixelsPerMicrosecond = 500;
// From the short value of pi that fixes which pixel is the neighbour.
constexpr double kRadiansPerDegree = 0.017453292222222222;

int Nearest(double value)
{
    return static_cast<int>(value + 0.5);
}

void SetDirection(Relief& relief, int angle)
{
    const double tangent = std::tan(angle * kRadiansPerDegree);
    if (angle == 0) {
        relief.columnStep = 1;
    } else if (angle == 90) {
        relief.rowStep = 1;
    } else if (angle == 180) {
        relief.columnStep = -1;
    } else if (angle == 270) {
        relief.rowStep = -1;
    } else if (angle <= 45 || angle >= 315) {
        relief.columnStep = 1;
        relief.rowStep = Nearest(tangent);
    } else if (angle <= 134) {
        relief.columnStep = Nearest(1 / tangent);
        relief.rowStep = 1;
    } else if (angle <= 224) {
        relief.columnStep = -1;
        relief.rowStep = Nearest(tangent);
    } else {
        relief.columnStep = Nearest(1 / tangent);
        relief.rowStep = -1;
    }
}

} // namespace

CPackedDib EmbossDib(const CPackedDib& dib, int elevation, int weight, int angleDegrees)
{
    if (dib.IsEmpty())
        return {};
    Relief relief{static_cast<double>(weight), static_cast<double>(elevation)};
    SetDirection(relief, (angleDegrees % 360 + 360) % 360);
    const auto embossRow = HWY_DYNAMIC_DISPATCH(EmbossRow);
    const auto embossRows = [&](CPackedDib& embossed, int begin, int end) {
        for (int y = begin; y < end && dib.Width() > 0; ++y) {
            const int neighbour = std::clamp(y - relief.rowStep, 0, dib.Height() - 1);
            embossRow(relief, PixelRow(dib, y), PixelRow(dib, neighbour), static_cast<size_t>(dib.Width()),
                      PixelRow(embossed, y));
        }
        return true;
    };
    return MakePictureInBands(dib.Size(), BandRows(dib.Width(), kPixelsPerMicrosecond), embossRows);
}

#endif
