// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageops/SunspotDib.h"

#include "platform/parallel/PictureBands.h"

#include <algorithm>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "imageops/SunspotDib.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "platform/parallel/FillRow-inl.h"

#ifndef PIXOLUNE_SPOT
#define PIXOLUNE_SPOT
namespace {

/// Distances are whole pixels; their squares are exact in double precision.
struct Spot {
    int column = 0;
    int row = 0; ///< from the top
    double farthestSquare = 0;
    double brightness = 0;
};

} // namespace
#endif

HWY_BEFORE_NAMESPACE();
namespace {
namespace HWY_NAMESPACE {

template <typename D>
HWY_INLINE hn::Vec<D> LightenPixels(D words, const Spot& spot, double rowSquare, size_t x, hn::Vec<D> pixel)
{
    const hn::Rebind<double, D> doubles;
    const hn::Rebind<int32_t, D> integers;
    const auto distance = hn::Sub(
        hn::PromoteTo(doubles, hn::Add(hn::Iota(integers, 0), hn::Set(integers, static_cast<int32_t>(x)))),
        hn::Set(doubles, static_cast<double>(spot.column)));
    const auto square = hn::Add(hn::Mul(distance, distance), hn::Set(doubles, rowSquare));
    const auto share = hn::Sub(hn::Set(doubles, 1.0), hn::Div(square, hn::Set(doubles, spot.farthestSquare)));
    const auto delta =
        hn::BitCast(words, hn::DemoteTo(integers, hn::Mul(share, hn::Set(doubles, spot.brightness))));
    const auto byteMask = hn::Set(words, 255);
    const auto lightened = [&](auto channel) {
        return hn::Min(hn::Add(hn::And(channel, byteMask), delta), byteMask);
    };
    const auto blue = lightened(pixel);
    const auto green = hn::ShiftLeft<8>(lightened(hn::ShiftRight<8>(pixel)));
    const auto red = hn::ShiftLeft<16>(lightened(hn::ShiftRight<16>(pixel)));
    const auto alpha = hn::AndNot(hn::Set(words, 0xFFFFFF), pixel);
    return hn::Or(hn::Or(blue, green), hn::Or(red, alpha));
}

void LightenRow(const Spot& shared, const uint32_t* HWY_RESTRICT source, const ResultRow& lightened)
{
    const hn::Rebind<uint32_t, hn::ScalableTag<double>> words;
    const Spot spot = shared; // of its own, which the stores below cannot change
    const double rowDistance = lightened.y - spot.row;
    const double rowSquare = rowDistance * rowDistance;
    FillRowFrom(source, words, lightened, [&](auto pixels, auto tag, size_t x) HWY_ATTR {
        return LightenPixels(tag, spot, rowSquare, x, pixels);
    });
}

} // namespace HWY_NAMESPACE
} // namespace
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

namespace {

HWY_EXPORT(LightenRow);
constexpr int kPixelsPerMicrosecond = 500;

Spot SpotOn(Size size, int horizontalPos, int verticalPos, int brightness)
{
    Spot spot;
    const int right = size.width - 1;
    const int bottom = size.height - 1;
    spot.column = static_cast<int>(int64_t{right} * std::clamp(horizontalPos, 0, 100) / 100);
    spot.row = static_cast<int>((1.0 - std::clamp(verticalPos, 0, 100) * 0.01) * bottom);
    spot.brightness = std::clamp(brightness, 0, 255);
    const double across = std::max(spot.column, right - spot.column);
    const double along = std::max(spot.row, bottom - spot.row);
    spot.farthestSquare = across * across + along * along;
    // Of a single pixel every distance is 0: any divisor above 0 gives it the full brightness.
    if (spot.farthestSquare == 0)
        spot.farthestSquare = 1;
    return spot;
}

} // namespace

CPackedDib SunspotDib(const CPackedDib& dib, int horizontalPos, int verticalPos, int brightness)
{
    if (dib.IsEmpty())
        return {};
    const Spot spot = SpotOn(dib.Size(), horizontalPos, verticalPos, brightness);
    const auto lightenRow = HWY_DYNAMIC_DISPATCH(LightenRow);
    return MapPictureRows(
        dib, kPixelsPerMicrosecond,
        [&](const uint32_t* source, const ResultRow& lightened) { lightenRow(spot, source, lightened); });
}

#endif
