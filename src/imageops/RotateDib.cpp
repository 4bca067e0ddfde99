// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageops/RotateDib.h"

#include "platform/parallel/PictureBands.h"
#include "platform/parallel/RowBands.h"

#include <algorithm>
#include <cmath>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "imageops/RotateDib.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#ifndef PIXOLUNE_TURN
#define PIXOLUNE_TURN
namespace {

/// A slanting line through the source comes too late from memory when it is asked for pixel by pixel.
constexpr int kRowsAhead = 16;
constexpr int kPrefetchStep = 4;

struct Turn {
    double cosine = 1;
    double sine = 0;
    float sourceCentreX = 0;
    float sourceCentreY = 0;
    float centreX = 0; ///< of the result
    float centreY = 0;
    const uint32_t* source = nullptr; ///< bottom row first
    int width = 0;                    ///< of the source
    int height = 0;
    uint32_t fill = 0;

    /// The place in the source of result column x in a row `dy` above the centre, before truncation.
    [[nodiscard]] double SourceX(int x, double dy) const
    {
        return (static_cast<double>(x) - centreX) * cosine + sourceCentreX + dy * sine + 0.5;
    }
    /// The same, counted from the bottom row.
    [[nodiscard]] double SourceY(int x, double dy) const
    {
        return dy * cosine - (static_cast<double>(x) - centreX) * sine + sourceCentreY + 0.5;
    }
    /// Whether all of columns begin to end - 1 lie well outside the source: places change evenly along a row.
    [[nodiscard]] bool IsOutside(int begin, int end, double dy) const
    {
        constexpr double kMargin = 2;
        const auto beyond = [](double a, double b, int count) {
            return std::max(a, b) < -kMargin || std::min(a, b) > count + kMargin;
        };
        return beyond(SourceX(begin, dy), SourceX(end, dy), width) ||
               beyond(SourceY(begin, dy), SourceY(end, dy), height);
    }
};

} // namespace
#endif

HWY_BEFORE_NAMESPACE();
namespace {
namespace HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

/// Which pixels of the source the result's columns from x on show; -1 outside.
template <typename D>
HWY_INLINE hn::VFromD<hn::Rebind<int32_t, D>> PlacesOf(D doubles, const Turn& turn, double dy, int x)
{
    const hn::Rebind<int32_t, D> integers;
    const auto set = [&](double value) HWY_ATTR { return hn::Set(doubles, value); };
    const auto half = set(0.5);
    const auto dx = hn::Sub(hn::PromoteTo(doubles, hn::Add(hn::Iota(integers, 0), hn::Set(integers, x))),
                            set(turn.centreX));
    const auto sourceX = hn::Add(
        hn::Add(hn::Add(hn::Mul(dx, set(turn.cosine)), set(turn.sourceCentreX)), set(dy * turn.sine)), half);
    const auto sourceY = hn::Add(
        hn::Add(hn::Sub(set(dy * turn.cosine), hn::Mul(dx, set(turn.sine))), set(turn.sourceCentreY)), half);
    const auto column = hn::DemoteTo(integers, sourceX);
    const auto row = hn::DemoteTo(integers, sourceY);
    const auto before = hn::Set(integers, -1);
    const auto width = hn::Set(integers, turn.width);
    const auto inColumns = hn::And(hn::Gt(column, before), hn::Lt(column, width));
    const auto inRows = hn::And(hn::Gt(row, before), hn::Lt(row, hn::Set(integers, turn.height)));
    const auto isInside = hn::And(inColumns, inRows);
    return hn::IfThenElse(isInside, hn::Add(hn::Mul(row, width), column), before);
}

template <typename D>
HWY_INLINE void TurnPixels(D doubles, const Turn& turn, double dy, int x, uint32_t* HWY_RESTRICT turned)
{
    const hn::Rebind<int32_t, D> integers;
    const hn::Rebind<uint32_t, D> words;
    const auto places = PlacesOf(doubles, turn, dy, x);
    const auto isOutside = hn::RebindMask(words, hn::Lt(places, hn::Zero(integers)));
    const auto pixels = hn::GatherIndex(words, turn.source, hn::Max(places, hn::Zero(integers)));
    hn::StoreU(hn::IfThenElse(isOutside, hn::Set(words, turn.fill), pixels), words, turned + x);
}

/// Asks for what a row of the result will need. A line of the cache serves some rows, so that each of them may
/// ask for other columns. Never called: a compiler drops calls that only fetch.
HWY_INLINE void PrefetchRow(const Turn& turn, int begin, int end, double dy)
{
    for (int x = begin; x < end; x += kPrefetchStep) {
        const auto column = static_cast<int>(turn.SourceX(x, dy));
        const auto row = static_cast<int>(turn.SourceY(x, dy));
        if (column >= 0 && column < turn.width && row >= 0 && row < turn.height)
            __builtin_prefetch(turn.source + (ptrdiff_t{row} * turn.width + column));
    }
}

/// Columns begin to end - 1 of the result's row y from the top.
void TurnRow(const Turn& shared, int y, int begin, int end, uint32_t* HWY_RESTRICT turned)
{
    const hn::ScalableTag<double> doubles;
    const int lanes = static_cast<int>(hn::Lanes(doubles));
    const Turn turn = shared; // of its own, which the stores below cannot change
    const double dy = static_cast<double>(turn.centreY) - y;
    if (turn.IsOutside(begin, end, dy)) {
        std::fill(turned + begin, turned + end, turn.fill);
        return;
    }
    PrefetchRow(turn, begin + y % kPrefetchStep, end, dy - kRowsAhead);
    int x = begin;
    for (; x + lanes <= end; x += lanes)
        TurnPixels(doubles, turn, dy, x, turned);
    for (; x < end; ++x)
        TurnPixels(hn::CappedTag<double, 1>(), turn, dy, x, turned);
}

} // namespace HWY_NAMESPACE
} // namespace
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

namespace {

HWY_EXPORT(TurnRow);
constexpr int kPixelsPerMicrosecond = 300;
/// Columns made together: the source rows that a slanting line crosses stay in the cache for the next line.
constexpr int kTilePixels = 64;

float CentreOf(int count)
{
    return static_cast<float>((count - 1) * 0.5);
}

/// How far the turned corners lie apart, rounded. The far corners stand at the size, not at the last pixel.
Size TurnedSize(Size source, const Turn& turn)
{
    const double left = -turn.sourceCentreX;
    const double bottom = -turn.sourceCentreY;
    const double right = static_cast<float>(source.width) - turn.sourceCentreX;
    const double top = static_cast<float>(source.height) - turn.sourceCentreY;
    const auto turnedX = [&](double x, double y) { return x * turn.cosine - y * turn.sine; };
    const auto turnedY = [&](double x, double y) { return x * turn.sine + y * turn.cosine; };
    const auto [minX, maxX] =
        std::minmax({turnedX(left, bottom), turnedX(right, bottom), turnedX(left, top), turnedX(right, top)});
    const auto [minY, maxY] =
        std::minmax({turnedY(left, bottom), turnedY(right, bottom), turnedY(left, top), turnedY(right, top)});
    return {static_cast<int>(maxX - minX + 0.5), static_cast<int>(maxY - minY + 0.5)};
}

uint32_t FillPixel(uint32_t colour)
{
    return (colour & 0xFF) << 16 | (colour & 0xFF00) | (colour >> 16 & 0xFF);
}

} // namespace

CPackedDib RotateDib(const CPackedDib& dib, double angleDegrees, uint32_t fillColour)
{
    if (dib.IsEmpty() || !std::isfinite(angleDegrees))
        return {};
    const double angle = angleDegrees * 0.011111111111111112 * 1.5707963;
    Turn turn;
    turn.cosine = std::cos(angle);
    turn.sine = std::sin(angle);
    turn.sourceCentreX = CentreOf(dib.Width());
    turn.sourceCentreY = CentreOf(dib.Height());
    turn.source = reinterpret_cast<const uint32_t*>(dib.Bits().data());
    turn.width = dib.Width();
    turn.height = dib.Height();
    turn.fill = FillPixel(fillColour);
    const Size size = TurnedSize(dib.Size(), turn);
    turn.centreX = CentreOf(size.width);
    turn.centreY = CentreOf(size.height);
    const auto turnRow = HWY_DYNAMIC_DISPATCH(TurnRow);
    const auto turnRows = [&](CPackedDib& turned, int begin, int end) {
        for (int left = 0; left < size.width; left += kTilePixels) {
            const int right = std::min(left + kTilePixels, size.width);
            for (int y = begin; y < end; ++y)
                turnRow(turn, y, left, right, PixelRow(turned, y));
        }
        return true;
    };
    return MakePictureInBands(size, BandRows(size.width, kPixelsPerMicrosecond), turnRows);
}

#endif
