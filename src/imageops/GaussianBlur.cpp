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

/// What one strip needs besides source and result.
struct GaussianScratch {
    double* source = nullptr; ///< a row of the strip and what its taps reach, as doubles
    double* used = nullptr;   ///< of each value the sum of the weights inside
    double* rows = nullptr;   ///< results of the first pass, row y at y % rowCount
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
    double* to = strip.scratch.source + ptrdiff_t{begin - first} * 4;
    const auto bytes = static_cast<size_t>(end - begin) * 4;
    for (size_t at = 0; at < bytes; ++at)
        to[at] = row[at];
}

void BlurAlongRow(const GaussianStrip& strip, int y)
{
    constexpr size_t kVectors = 8;
    const Doubles doubles;
    const size_t lanes = hn::Lanes(doubles);
    WidenRow(strip, y);
    double* HWY_RESTRICT to = strip.scratch.Row(y);
    const size_t taps = static_cast<size_t>(strip.taps.reach) * 2 + 1;
    for (size_t at = 0; at < strip.Values(); at += kVectors * lanes) {
        const double* HWY_RESTRICT from = strip.scratch.source + at;
        auto sum0 = hn::Zero(doubles), sum1 = sum0, sum2 = sum0, sum3 = sum0;
        auto sum4 = sum0, sum5 = sum0, sum6 = sum0, sum7 = sum0;
        for (size_t tap = 0; tap < taps; ++tap, from += 4) {
            const auto weight = hn::Set(doubles, strip.taps.First()[tap]);
            const auto weighed = [&](size_t vector) HWY_ATTR {
                return hn::Mul(hn::LoadU(doubles, from + vector * lanes), weight);
            };
            sum0 = hn::Add(sum0, weighed(0));
            sum1 = hn::Add(sum1, weighed(1));
            sum2 = hn::Add(sum2, weighed(2));
            sum3 = hn::Add(sum3, weighed(3));
            sum4 = hn::Add(sum4, weighed(4));
            sum5 = hn::Add(sum5, weighed(5));
            sum6 = hn::Add(sum6, weighed(6));
            sum7 = hn::Add(sum7, weighed(7));
        }
        const auto store = [&](auto sum, size_t vector) HWY_ATTR {
            const size_t place = at + vector * lanes;
            hn::StoreU(hn::Div(sum, hn::LoadU(doubles, strip.scratch.used + place)), doubles, to + place);
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

template <typename D> HWY_INLINE void StoreBytes(D doubles, hn::Vec<D> sum, double used, uint8_t* to)
{
    const auto value = hn::Add(hn::Div(sum, hn::Set(doubles, used)), hn::Set(doubles, kRoundingGuard));
    const hn::Rebind<int32_t, D> integers;
    const hn::Rebind<uint8_t, D> bytes;
    hn::StoreU(hn::DemoteTo(bytes, hn::DemoteTo(integers, value)), bytes, to);
}

/// Blurs along the columns the values at `at` of a group of rows that begins with row y.
template <typename D>
HWY_INLINE void BlurGroup(D doubles, const GaussianStrip& strip, int y, size_t at, const double* used)
{
    const int height = strip.source.Height();
    const int reach = strip.taps.reach;
    const int end = std::min(height, y + kGroupRows + reach);
    auto sum0 = hn::Zero(doubles), sum1 = sum0, sum2 = sum0, sum3 = sum0;
    const int begin = std::max(0, y - reach);
    // Tap of row `begin` for the first row of the group; for the next rows it is one less each.
    const double* weights = strip.taps.First() + (begin - y + reach);
    for (int row = begin; row < end; ++row, ++weights) {
        const auto value = hn::LoadU(doubles, strip.scratch.Row(row) + at);
        sum0 = hn::Add(sum0, hn::Mul(value, hn::Set(doubles, weights[0])));
        sum1 = hn::Add(sum1, hn::Mul(value, hn::Set(doubles, weights[-1])));
        sum2 = hn::Add(sum2, hn::Mul(value, hn::Set(doubles, weights[-2])));
        sum3 = hn::Add(sum3, hn::Mul(value, hn::Set(doubles, weights[-3])));
    }
    const auto store = [&](int r, auto sum) HWY_ATTR {
        if (y + r < height)
            StoreBytes(doubles, sum, used[r], strip.blurred.Row(y + r) + ptrdiff_t{strip.left} * 4 + at);
    };
    store(0, sum0);
    store(1, sum1);
    store(2, sum2);
    store(3, sum3);
}

void BlurStrip(const GaussianStrip& strip)
{
    const Doubles doubles;
    const size_t lanes = hn::Lanes(doubles);
    const int height = strip.source.Height();
    int ready = 0;
    for (int y = 0; y < height; y += kGroupRows) {
        for (const int needed = std::min(height, y + kGroupRows + strip.taps.reach); ready < needed; ++ready)
            BlurAlongRow(strip, ready);
        double used[kGroupRows] = {};
        for (int r = 0; r < kGroupRows; ++r)
            used[r] = strip.taps.Used(y + r, height);
        size_t at = 0;
        for (; at + lanes <= strip.Values(); at += lanes)
            BlurGroup(doubles, strip, y, at, used);
        for (; at < strip.Values(); ++at)
            BlurGroup(hn::CappedTag<double, 1>(), strip, y, at, used);
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
    const int rowCount = 2 * taps.reach + kGroupRows;
    std::atomic<bool> complete = true;
    const auto blurStrips = [&](int first, int last) {
        const size_t values = sourceValues + kStripValues + static_cast<size_t>(rowCount) * kRowStride;
        CHeapBlock block = CHeapBlock::Allocate(values * sizeof(double));
        if (block.IsEmpty()) {
            complete = false;
            return;
        }
        GaussianScratch scratch;
        scratch.source = reinterpret_cast<double*>(block.Data());
        scratch.used = scratch.source + sourceValues;
        scratch.rows = scratch.used + kStripValues;
        scratch.rowCount = rowCount;
        for (int strip = first; strip < last; ++strip) {
            const int left = strip * kStripPixels;
            const int right = std::min(left + kStripPixels, dib.Width());
            std::fill_n(scratch.source, sourceValues, 0.0);
            for (int x = 0; x < kStripPixels; ++x)
                std::fill_n(scratch.used + ptrdiff_t{x} * 4, 4, taps.Used(left + x, dib.Width()));
            blurStrip({dib, blurred, taps, scratch, left, right});
        }
    };
    ForRowBands((dib.Width() + kStripPixels - 1) / kStripPixels,
                BandRows(dib.Height() * kStripPixels, kPixelsPerMicrosecond), blurStrips);
    return complete ? std::move(blurred) : CPackedDib();
}

#endif
