// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageops/EmbossDib.h"

#include "platform/parallel/PictureBands.h"

#include <algorithm>
#include <cmath>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "imageops/EmbossDib.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "platform/parallel/FillRow-inl.h"

#ifndef PIXOLUNE_RELIEF
#define PIXOLUNE_RELIEF
namespace {

constexpr double kThird = 0.3333333333333333;
constexpr int kThirdOf65536 = 21846; ///< times up to kMostThirds the quotient is exact
constexpr int kMostThirds = 3 * 255 + 2;

struct Relief {
    double weight = 0;
    double elevation = 0;
    int columnStep = 0;   ///< from a pixel to its neighbour: -1, 0 or 1
    int rowStep = 0;      ///< the same, upward
    bool isWhole = false; ///< whether whole numbers give the same heights

    /// The height, clamped to a byte, where the sums of red, green and blue differ by `difference`.
    [[nodiscard]] int HeightAt(int difference) const
    {
        const double height = difference * kThird * weight + elevation;
        return static_cast<int>(std::clamp(height, 0.0, 255.0));
    }
    /// The same in whole numbers; a little less or more where the doubles round to either side of one.
    [[nodiscard]] int WholeHeightAt(int difference) const
    {
        const int thirds = difference * static_cast<int>(weight) + 3 * static_cast<int>(elevation);
        return std::clamp(thirds, 0, kMostThirds) * kThirdOf65536 >> 16;
    }
};

} // namespace
#endif

HWY_BEFORE_NAMESPACE();
namespace {
namespace HWY_NAMESPACE {

/// The height of the relief where the sums of red, green and blue differ by `difference`.
template <typename D>
HWY_INLINE auto HeightOf(D doubles, const Relief& relief, hn::Vec<hn::Rebind<int32_t, D>> difference)
{
    const auto third = hn::Mul(hn::PromoteTo(doubles, difference), hn::Set(doubles, kThird));
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

/// The level of every pixel in whole numbers, see Relief.
template <typename D>
HWY_INLINE hn::Vec<D> WholeLevels(D words, const Relief& relief, hn::Vec<D> pixel, hn::Vec<D> neighbour)
{
#if HWY_TARGET == HWY_SCALAR
    (void)pixel;
    (void)neighbour;
    (void)relief;
    return hn::Zero(words);
#else
    const hn::RepartitionToNarrow<D> unsignedHalves;
    const hn::RebindToSigned<decltype(unsignedHalves)> halves;
    // Blue and green in the lower half, red in the upper one.
    const auto partialSums = [&](auto colour) HWY_ATTR {
        const auto blueAndRed = hn::And(colour, hn::Set(words, 0x00FF00FF));
        return hn::Add(hn::BitCast(halves, blueAndRed),
                       hn::BitCast(halves, hn::And(hn::ShiftRight<8>(colour), hn::Set(words, 0xFF))));
    };
    const auto partial = hn::Sub(partialSums(pixel), partialSums(neighbour));
    const auto difference =
        hn::Add(partial, hn::BitCast(halves, hn::ShiftRight<16>(hn::BitCast(words, partial))));
    const auto thirds = hn::Add(hn::Mul(difference, hn::Set(halves, static_cast<int16_t>(relief.weight))),
                                hn::Set(halves, static_cast<int16_t>(3 * relief.elevation)));
    const auto clamped =
        hn::Min(hn::Max(thirds, hn::Zero(halves)), hn::Set(halves, static_cast<int16_t>(kMostThirds)));
    const auto level = hn::MulHigh(hn::BitCast(unsignedHalves, clamped),
                                   hn::Set(unsignedHalves, static_cast<uint16_t>(kThirdOf65536)));
    return hn::And(hn::BitCast(words, level), hn::Set(words, 0xFF));
#endif
}

template <typename D>
HWY_INLINE hn::Vec<D> Levels(D words, const Relief& relief, hn::Vec<D> pixel, hn::Vec<D> neighbour)
{
    const hn::RebindToSigned<D> integers;
    const auto byteMask = hn::Set(words, 255);
    const auto sumOf = [&](auto colour) {
        const auto blueAndGreen =
            hn::Add(hn::And(colour, byteMask), hn::And(hn::ShiftRight<8>(colour), byteMask));
        return hn::Add(blueAndGreen, hn::And(hn::ShiftRight<16>(colour), byteMask));
    };
    const auto difference = hn::Sub(sumOf(pixel), sumOf(neighbour));
    const auto height = HeightsOf(integers, relief, hn::BitCast(integers, difference));
    const auto clamped = hn::Min(hn::Max(height, hn::Zero(integers)), hn::Set(integers, 255));
    return hn::BitCast(words, clamped);
}

template <typename D>
HWY_INLINE hn::Vec<D> EmbossPixels(D words, const Relief& relief, hn::Vec<D> pixel, hn::Vec<D> neighbour)
{
    const auto level = relief.isWhole && HWY_TARGET != HWY_SCALAR
                           ? WholeLevels(words, relief, pixel, neighbour)
                           : Levels(words, relief, pixel, neighbour);
    const auto gray = hn::Or(hn::Or(level, hn::ShiftLeft<8>(level)), hn::ShiftLeft<16>(level));
    return hn::Or(gray, hn::AndNot(hn::Set(words, 0xFFFFFF), pixel));
}

void EmbossRow(const Relief& shared, const uint32_t* HWY_RESTRICT source,
               const uint32_t* HWY_RESTRICT neighbours, const ResultRow& embossed)
{
    const Relief relief = shared; // of its own, which the stores below cannot change
    const ptrdiff_t step = relief.columnStep;
    const auto emboss = [&](auto words, size_t x, ptrdiff_t neighbour) HWY_ATTR {
        return EmbossPixels(words, relief, hn::LoadU(words, source + x),
                            hn::LoadU(words, neighbours + neighbour));
    };
    // The pixel at the edge is its own neighbour's column.
    ResultRow inner = embossed;
    const ptrdiff_t first = step < 0 ? 1 : 0;
    if (step != 0) {
        const size_t edge = step < 0 ? 0 : embossed.count - 1;
        const hn::CappedTag<uint32_t, 1> single;
        hn::StoreU(emboss(single, edge, static_cast<ptrdiff_t>(edge)), single, embossed.pixels + edge);
        inner.pixels += first;
        --inner.count;
    }
    FillRow(hn::ScalableTag<uint32_t>(), inner, [&](auto words, size_t at) HWY_ATTR {
        const ptrdiff_t x = static_cast<ptrdiff_t>(at) + first;
        return emboss(words, static_cast<size_t>(x), x + step);
    });
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

/// Tries every difference that two pixels can have.
bool IsWhole(const Relief& relief)
{
    constexpr int kMostDifference = 3 * 255;
    // Beyond these the sums of whole numbers would leave their 16 bits; dialogs stay far within.
    if (std::abs(relief.weight) > 20 || std::abs(relief.elevation) > 1000)
        return false;
    for (int difference = -kMostDifference; difference <= kMostDifference; ++difference) {
        if (relief.HeightAt(difference) != relief.WholeHeightAt(difference))
            return false;
    }
    return true;
}

} // namespace

CPackedDib EmbossDib(const CPackedDib& dib, int elevation, int weight, int angleDegrees)
{
    if (dib.IsEmpty())
        return {};
    Relief relief{static_cast<double>(weight), static_cast<double>(elevation)};
    SetDirection(relief, (angleDegrees % 360 + 360) % 360);
    relief.isWhole = IsWhole(relief);
    const auto embossRow = HWY_DYNAMIC_DISPATCH(EmbossRow);
    return MapPictureRows(dib, kPixelsPerMicrosecond, [&](const uint32_t* source, const ResultRow& embossed) {
        const int neighbour = std::clamp(embossed.y - relief.rowStep, 0, dib.Height() - 1);
        if (embossed.count > 0)
            embossRow(relief, source, PixelRow(dib, neighbour), embossed);
    });
}

#endif
