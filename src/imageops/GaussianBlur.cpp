// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageops/GaussianBlur.h"

#include "imageops/BoxBlur.h"
#include "platform/parallel/RowBands.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cmath>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "imageops/GaussianBlur.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#ifndef PIXOLUNE_GAUSSIAN_BLUR
#define PIXOLUNE_GAUSSIAN_BLUR
namespace {

/// Columns that are blurred together over the picture's whole height: the rows of doubles that their second
/// pass reads stay in the second cache.
constexpr int kStripPixels = 128;
constexpr size_t kStripValues = kStripPixels * 4;
/// Distance of those rows: not a power of two, so that they do not share few places of the cache.
constexpr size_t kRowStride = kStripValues + 16;
/// Result rows that share the reading of those rows.
constexpr int kGroupRows = 4;
constexpr int kMaxReach = (kMaxBlurSize - 1) / 2;
constexpr double kRoundingGuard = 1e-6;
/// Sums of other roundings than the plain ones differ from them by less than 1e-11. A result that lies this
/// near to a whole number is made anew in the plain way.
constexpr double kUnsure = 1e-9;

struct Taps {
    int reach = 0;
    /// Tap d stands at kGroupRows + reach + d; zeroes around them let a row of the group read the rows of its
    /// neighbours without effect.
    std::array<double, 2 * (kMaxReach + kGroupRows) + 1> weights = {};

    [[nodiscard]] const double* First() const { return weights.data() + kGroupRows; }
    /// The sum of the weights that lie inside when the middle stands at `at` of `count`.
    [[nodiscard]] double Used(int at, int count) const
    {
        double used = 0;
        for (int d = -reach; d <= reach; ++d) {
            if (at + d >= 0 && at + d < count)
                used += First()[reach + d];
        }
        return used;
    }
};

/// One byte of the result, rounded at every step as the definition has it.
uint8_t PlainByte(const CPackedDib& source, const Taps& taps, int x, int y, int channel)
{
    const auto inside = [&taps](int at, int count, const auto& use) {
        for (int d = std::max(-taps.reach, -at); d <= std::min(taps.reach, count - 1 - at); ++d)
            use(at + d, taps.First()[taps.reach + d]);
    };
    double sum = 0;
    inside(y, source.Height(), [&](int row, double rowWeight) {
        double along = 0;
        inside(x, source.Width(), [&](int column, double weight) {
            along += source.Row(row)[ptrdiff_t{column} * 4 + channel] * weight;
        });
        sum += along / taps.Used(x, source.Width()) * rowWeight;
    });
    return static_cast<uint8_t>(sum / taps.Used(y, source.Height()) + kRoundingGuard);
}

/// What one strip needs besides source and result.
struct GaussianScratch {
    double* source = nullptr;  ///< a row of the strip and what its taps reach, as doubles
    double* shifted = nullptr; ///< the same from the second pixel on, so that all loads are aligned
    double* inverse = nullptr; ///< of each value 1 / the sum of the weights inside
    double* rows = nullptr;    ///< results of the first pass, row y at y % rowCount
    int rowCount = 0;

    [[nodiscard]] double* Row(int y) const { return rows + static_cast<size_t>(y % rowCount) * kRowStride; }
};

struct GaussianStrip {
    const CPackedDib& source;
    CPackedDib& blurred;
    const Taps& taps;
    GaussianScratch scratch;
    int left = 0;
    int right = 0;

    [[nodiscard]] size_t Values() const { return static_cast<size_t>(right - left) * 4; }
};

} // namespace
#endif

HWY_BEFORE_NAMESPACE();
namespace {
namespace HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;
using Doubles = hn::CappedTag<double, 8>;

/// Fills scratch.source from row y; outside the picture it stays zero, which adds nothing to a sum.
void WidenRow(const GaussianStrip& strip, int y)
{
    const int first = strip.left - strip.taps.reach;
    const int begin = std::max(0, first);
    const int end = std::min(strip.source.Width(), strip.right + strip.taps.reach);
    const uint8_t* row = strip.source.Row(y) + ptrdiff_t{begin} * 4;
    double* HWY_RESTRICT to = strip.scratch.source + ptrdiff_t{begin - first} * 4;
    double* HWY_RESTRICT shifted = strip.scratch.shifted + (ptrdiff_t{begin - first} - 1) * 4;
    const hn::CappedTag<double, 4> pixel;
    const hn::Rebind<uint8_t, decltype(pixel)> bytes;
    const hn::Rebind<int32_t, decltype(pixel)> integers;
    const size_t lanes = hn::Lanes(pixel);
    for (size_t at = 0, count = static_cast<size_t>(end - begin) * 4; at < count; at += lanes) {
        const auto level = hn::PromoteTo(pixel, hn::PromoteTo(integers, hn::LoadU(bytes, row + at)));
        hn::StoreU(level, pixel, to + at);
        hn::StoreU(level, pixel, shifted + at);
    }
}

void BlurAlongRow(const GaussianStrip& strip, int y)
{
    constexpr size_t kVectors = 8;
    const Doubles doubles;
    const size_t lanes = hn::Lanes(doubles);
    WidenRow(strip, y);
    double* HWY_RESTRICT to = strip.scratch.Row(y);
    const double* const weights = strip.taps.First();
    const size_t taps = static_cast<size_t>(strip.taps.reach) * 2 + 1;
    const double* const rows[2] = {strip.scratch.source, strip.scratch.shifted};
    for (size_t at = 0; at < strip.Values(); at += kVectors * lanes) {
        auto sum0 = hn::Zero(doubles), sum1 = sum0, sum2 = sum0, sum3 = sum0;
        auto sum4 = sum0, sum5 = sum0, sum6 = sum0, sum7 = sum0;
        for (size_t tap = 0; tap < taps; ++tap) {
            const double* HWY_RESTRICT from = rows[tap % 2] + at + tap / 2 * 8;
            const auto weight = hn::Set(doubles, weights[tap]);
            sum0 = hn::MulAdd(hn::Load(doubles, from), weight, sum0);
            sum1 = hn::MulAdd(hn::Load(doubles, from + lanes), weight, sum1);
            sum2 = hn::MulAdd(hn::Load(doubles, from + 2 * lanes), weight, sum2);
            sum3 = hn::MulAdd(hn::Load(doubles, from + 3 * lanes), weight, sum3);
            sum4 = hn::MulAdd(hn::Load(doubles, from + 4 * lanes), weight, sum4);
            sum5 = hn::MulAdd(hn::Load(doubles, from + 5 * lanes), weight, sum5);
            sum6 = hn::MulAdd(hn::Load(doubles, from + 6 * lanes), weight, sum6);
            sum7 = hn::MulAdd(hn::Load(doubles, from + 7 * lanes), weight, sum7);
        }
        const auto store = [&](auto sum, size_t vector) HWY_ATTR {
            const size_t place = at + vector * lanes;
            hn::Store(hn::Mul(sum, hn::Load(doubles, strip.scratch.inverse + place)), doubles, to + place);
        };
        store(sum0, 0);
        store(sum1, 1);
        store(sum2, 2);
        store(sum3, 3);
        store(sum4, 4);
        store(sum5, 5);
        store(sum6, 6);
        store(sum7, 7);
    }
}

/// A group of rows of the strip, and what its second pass reads.
struct RowGroup {
    const double* from[2 * kMaxReach + kGroupRows]; ///< results of the first pass
    int count = 0;                                  ///< of those
    const double* weights = nullptr; ///< of the first of them for the first row; one less for each next row
    double inverse[kGroupRows];
    uint8_t* to[kGroupRows];
    int top = 0;
    int rows = 0;
};

/// Stores the bytes at `at` of a row of the group.
template <typename D>
HWY_INLINE void StoreBytes(D doubles, const GaussianStrip& strip, const RowGroup& group, int r, size_t at,
                           hn::Vec<D> sum)
{
    const auto value = hn::MulAdd(sum, hn::Set(doubles, group.inverse[r]), hn::Set(doubles, kRoundingGuard));
    const hn::Rebind<int32_t, D> integers;
    const hn::Rebind<uint8_t, D> bytes;
    hn::StoreU(hn::DemoteTo(bytes, hn::DemoteTo(integers, value)), bytes, group.to[r] + at);
    const auto distance = hn::Abs(hn::Sub(value, hn::Round(value)));
    if (!hn::AllFalse(doubles, hn::Lt(distance, hn::Set(doubles, kUnsure)))) {
        for (size_t byte = at; byte < at + hn::Lanes(doubles); ++byte) {
            const int channel = static_cast<int>(byte % 4);
            group.to[r][byte] = PlainByte(strip.source, strip.taps, strip.left + static_cast<int>(byte / 4),
                                          group.top + r, channel);
        }
    }
}

/// Blurs along the columns the values of two vectors, beginning with that at `at`.
template <typename D>
HWY_INLINE void BlurGroup(D doubles, const GaussianStrip& strip, const RowGroup& group, size_t at)
{
    const size_t next = at + hn::Lanes(doubles);
    auto sum0 = hn::Zero(doubles), sum1 = sum0, sum2 = sum0, sum3 = sum0;
    auto next0 = sum0, next1 = sum0, next2 = sum0, next3 = sum0;
    const double* weights = group.weights;
    for (int row = 0; row < group.count; ++row, ++weights) {
        const auto value = hn::Load(doubles, group.from[row] + at);
        const auto nextValue = hn::Load(doubles, group.from[row] + next);
        const auto weight0 = hn::Set(doubles, weights[0]);
        const auto weight1 = hn::Set(doubles, weights[-1]);
        const auto weight2 = hn::Set(doubles, weights[-2]);
        const auto weight3 = hn::Set(doubles, weights[-3]);
        sum0 = hn::MulAdd(value, weight0, sum0);
        sum1 = hn::MulAdd(value, weight1, sum1);
        sum2 = hn::MulAdd(value, weight2, sum2);
        sum3 = hn::MulAdd(value, weight3, sum3);
        next0 = hn::MulAdd(nextValue, weight0, next0);
        next1 = hn::MulAdd(nextValue, weight1, next1);
        next2 = hn::MulAdd(nextValue, weight2, next2);
        next3 = hn::MulAdd(nextValue, weight3, next3);
    }
    const auto store = [&](int r, auto sum, auto nextSum) HWY_ATTR {
        if (r < group.rows) {
            StoreBytes(doubles, strip, group, r, at, sum);
            StoreBytes(doubles, strip, group, r, next, nextSum);
        }
    };
    store(0, sum0, next0);
    store(1, sum1, next1);
    store(2, sum2, next2);
    store(3, sum3, next3);
}

RowGroup GroupFrom(const GaussianStrip& strip, int top)
{
    const int height = strip.source.Height();
    const int reach = strip.taps.reach;
    RowGroup group;
    group.top = top;
    group.rows = std::min(kGroupRows, height - top);
    const int begin = std::max(0, top - reach);
    const int end = std::min(height, top + kGroupRows + reach);
    for (int row = begin; row < end; ++row)
        group.from[group.count++] = strip.scratch.Row(row);
    group.weights = strip.taps.First() + (begin - top + reach);
    for (int r = 0; r < group.rows; ++r) {
        group.inverse[r] = 1 / strip.taps.Used(top + r, height);
        group.to[r] = strip.blurred.Row(top + r) + ptrdiff_t{strip.left} * 4;
    }
    return group;
}

void BlurStrip(const GaussianStrip& strip)
{
    const Doubles doubles;
    const size_t step = 2 * hn::Lanes(doubles);
    const int height = strip.source.Height();
    int ready = 0;
    for (int y = 0; y < height; y += kGroupRows) {
        for (const int needed = std::min(height, y + kGroupRows + strip.taps.reach); ready < needed; ++ready)
            BlurAlongRow(strip, ready);
        const RowGroup group = GroupFrom(strip, y);
        size_t at = 0;
        for (; at + step <= strip.Values(); at += step)
            BlurGroup(doubles, strip, group, at);
        for (; at < strip.Values(); at += 2)
            BlurGroup(hn::CappedTag<double, 1>(), strip, group, at);
    }
}

} // namespace HWY_NAMESPACE
} // namespace
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

namespace {

HWY_EXPORT(BlurStrip);
constexpr int kPixelsPerMicrosecond = 60;

Taps MakeTaps(int side)
{
    Taps taps;
    taps.reach = std::max(1, (side - 1) / 2);
    const double sigma = taps.reach * 0.3333333333333333;
    const double c = 0.5 / (sigma * sigma);
    double sum = 0;
    double* weights = taps.weights.data() + kGroupRows;
    for (int d = -taps.reach; d <= taps.reach; ++d) {
        weights[taps.reach + d] = d == 0 ? 1.0 : std::exp(-d * d * c);
        sum += weights[taps.reach + d];
    }
    for (int tap = 0; tap <= 2 * taps.reach; ++tap)
        weights[tap] /= sum;
    return taps;
}

} // namespace

CPackedDib GaussianBlur(const CPackedDib& dib, int size)
{
    if (dib.IsEmpty())
        return {};
    const int side = std::min({std::clamp(size, 1, kMaxBlurSize), dib.Width(), dib.Height()});
    const Taps taps = MakeTaps(side);
    CPackedDib blurred = CPackedDib::CreateForOverwrite(dib.Width(), dib.Height());
    if (blurred.IsEmpty())
        return {};
    const auto blurStrip = HWY_DYNAMIC_DISPATCH(BlurStrip);
    const auto sourceValues = kStripValues + static_cast<size_t>(taps.reach) * 8;
    constexpr size_t kBefore = 8; // the shifted row begins a pixel before its place
    const int rowCount = 2 * taps.reach + kGroupRows;
    std::atomic<bool> complete = true;
    const auto blurStrips = [&](int first, int last) {
        const size_t values =
            kBefore + 2 * sourceValues + kStripValues + static_cast<size_t>(rowCount) * kRowStride;
        CHeapBlock block = CHeapBlock::Allocate(values * sizeof(double));
        if (block.IsEmpty()) {
            complete = false;
            return;
        }
        GaussianScratch scratch;
        scratch.source = reinterpret_cast<double*>(block.Data());
        scratch.shifted = scratch.source + sourceValues + kBefore;
        scratch.inverse = scratch.shifted + sourceValues;
        scratch.rows = scratch.inverse + kStripValues;
        scratch.rowCount = rowCount;
        for (int strip = first; strip < last; ++strip) {
            const int left = strip * kStripPixels;
            const int right = std::min(left + kStripPixels, dib.Width());
            std::fill_n(scratch.source, kBefore + 2 * sourceValues, 0.0);
            for (int x = 0; x < kStripPixels; ++x)
                std::fill_n(scratch.inverse + ptrdiff_t{x} * 4, 4, 1 / taps.Used(left + x, dib.Width()));
            blurStrip({dib, blurred, taps, scratch, left, right});
        }
    };
    ForRowBands((dib.Width() + kStripPixels - 1) / kStripPixels,
                BandRows(dib.Height() * kStripPixels, kPixelsPerMicrosecond), blurStrips);
    return complete ? std::move(blurred) : CPackedDib();
}

#endif
