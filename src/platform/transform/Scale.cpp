// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/transform/Scale.h"

#include "platform/parallel/PictureBands.h"
#include "platform/parallel/RowBands.h"
#include "platform/transform/AxisTaps.h"
#include "platform/transform/EnlargePicture.h"
#include "platform/transform/HalvePicture.h"
#include "platform/ui/UserInterface.h"

#include <algorithm>
#include <optional>
#include <span>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "platform/transform/Scale.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "platform/parallel/FillRow-inl.h"
#include "platform/transform/SummedPixels-inl.h"

#ifndef PIXOLUNE_SCALE
#define PIXOLUNE_SCALE
namespace {

struct ScaleJob {
    const CPackedDib& source;
    const CAxisTaps& columns;
    const CAxisTaps& rows;
    float* sums = nullptr;   ///< of each source column: blue, green and red times alpha, and alpha
    float* scaled = nullptr; ///< the same of each result column
};

/// The source rows that make one of the result.
struct SourceRows {
    const uint8_t* first = nullptr;
    ptrdiff_t step = 0; ///< from one row to the next below
    std::span<const float> weights;
};

} // namespace
#endif

HWY_BEFORE_NAMESPACE();
namespace {
namespace HWY_NAMESPACE {

// Blue, green, red and alpha of a pixel lie in one 128-bit block.
using Pixels = hn::ScalableTag<float>;
using Pixel = hn::CappedTag<float, 4>;

#if HWY_TARGET != HWY_SCALAR

template <typename D> HWY_INLINE hn::Mask<D> AlphaLanes(D floats)
{
    const hn::RebindToUnsigned<D> words;
    return hn::RebindMask(floats, hn::Eq(hn::And(hn::Iota(words, 0), hn::Set(words, 3)), hn::Set(words, 3)));
}

template <typename D>
HWY_INLINE void SumColumns(D floats, const SourceRows& rows, size_t at, float* HWY_RESTRICT sums)
{
    const hn::Rebind<uint8_t, D> bytes;
    const hn::Rebind<int32_t, D> integers;
    const auto isAlpha = AlphaLanes(floats);
    auto sum = hn::Zero(floats);
    for (size_t row = 0; row < rows.weights.size(); ++row) {
        const uint8_t* from = rows.first + rows.step * static_cast<ptrdiff_t>(row) + at;
        const auto level = hn::ConvertTo(floats, hn::PromoteTo(integers, hn::LoadU(bytes, from)));
        const auto alpha = hn::IfThenElse(isAlpha, hn::Set(floats, 1.0f), hn::Broadcast<3>(level));
        sum = hn::Add(sum, hn::Mul(hn::Mul(level, alpha), hn::Set(floats, rows.weights[row])));
    }
    hn::StoreU(sum, floats, sums + at);
}

/// The pixels whose sums begin at `sums`.
template <typename D> HWY_INLINE hn::Vec<D> PixelsOf(D words, const float* HWY_RESTRICT sums)
{
    const hn::Rebind<float, D> floats;
    hn::Vec<decltype(floats)> blue, green, red, alpha;
    hn::LoadInterleaved4(floats, sums, blue, green, red, alpha);
    return PixelsOfSums(words, blue, green, red, alpha);
}

/// The sum along the row that makes one pixel, as `to`.
HWY_INLINE void SumPixel(const float* HWY_RESTRICT from, const float* HWY_RESTRICT weights, size_t count,
                         float* HWY_RESTRICT to)
{
    const Pixel floats;
    auto sum = hn::Zero(floats);
    for (size_t at = 0; at < count; ++at)
        sum = hn::Add(sum, hn::Mul(hn::LoadU(floats, from + at * 4), hn::Set(floats, weights[at])));
    hn::StoreU(sum, floats, to);
}

#else

constexpr size_t kChannels = 4;

/// The tag says nothing here: one pixel at a time.
HWY_INLINE void SumColumns(Pixel /*floats*/, const SourceRows& rows, size_t at, float* HWY_RESTRICT sums)
{
    for (size_t channel = 0; channel < kChannels; ++channel) {
        float sum = 0;
        for (size_t row = 0; row < rows.weights.size(); ++row) {
            const uint8_t* from = rows.first + rows.step * static_cast<ptrdiff_t>(row) + at;
            const float alpha = channel == 3 ? 1 : from[3];
            sum += from[channel] * alpha * rows.weights[row];
        }
        sums[at + channel] = sum;
    }
}

template <typename D> HWY_INLINE hn::Vec<D> PixelsOf(D words, const float* HWY_RESTRICT sums)
{
    if (!(sums[3] >= kLeastAlpha))
        return hn::Zero(words);
    uint32_t pixel = 0;
    for (size_t channel = kChannels; channel-- > 0;) {
        const float value = channel == 3 ? sums[3] : sums[channel] * (1 / sums[3]);
        pixel = pixel << 8 | static_cast<uint8_t>(std::clamp(value, 0.0f, 255.0f) + 0.5f);
    }
    return hn::Set(words, pixel);
}

HWY_INLINE void SumPixel(const float* HWY_RESTRICT from, const float* HWY_RESTRICT weights, size_t count,
                         float* HWY_RESTRICT to)
{
    for (size_t channel = 0; channel < kChannels; ++channel) {
        float sum = 0;
        for (size_t at = 0; at < count; ++at)
            sum += from[at * 4 + channel] * weights[at];
        to[channel] = sum;
    }
}

#endif

/// kCount: the number of weights where the compiler shall know it, else 0.
template <size_t kCount> void SumAlongRow(const ScaleJob& job, size_t width)
{
    const size_t count = kCount == 0 ? job.columns.Count() : kCount;
    const int* firsts = job.columns.Firsts();
    const float* weights = job.columns.Weights();
    const float* sums = job.sums;
    float* scaled = job.scaled;
    for (size_t x = 0; x < width; ++x, weights += count)
        SumPixel(sums + ptrdiff_t{firsts[x]} * 4, weights, count, scaled + x * 4);
}

void ScaleRow(const ScaleJob& job, const ResultRow& result)
{
    const size_t sourceValues = static_cast<size_t>(job.source.Width()) * 4;
    const Tap tap = job.rows.At(result.y).Trimmed();
    const SourceRows rows{job.source.Row(tap.first), -static_cast<ptrdiff_t>(job.source.Stride()),
                          tap.weights};
    float* const sums = job.sums;
    size_t at = 0;
    for (const size_t lanes = hn::Lanes(Pixels()); lanes > 4 && at + lanes <= sourceValues; at += lanes)
        SumColumns(Pixels(), rows, at, sums);
    for (; at < sourceValues; at += 4)
        SumColumns(Pixel(), rows, at, sums);
    if (job.columns.Count() == 4)
        SumAlongRow<4>(job, result.count);
    else
        SumAlongRow<0>(job, result.count);
    FillRow(hn::ScalableTag<uint32_t>(), result,
            [&](auto words, size_t x) HWY_ATTR { return PixelsOf(words, job.scaled + x * 4); });
}

} // namespace HWY_NAMESPACE
} // namespace
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

namespace {

HWY_EXPORT(ScaleRow);
constexpr int kPixelsPerMicrosecond = 300;

CPackedDib ScaleByTaps(const CPackedDib& dib, Size size)
{
    CAxisTaps columns;
    CAxisTaps rows;
    if (!columns.Make(dib.Width(), size.width) || !rows.Make(dib.Height(), size.height))
        return {};
    if (std::optional<CPackedDib> enlarged = EnlargePicture(dib, size, columns, rows))
        return std::move(*enlarged);
    const auto scaleRow = HWY_DYNAMIC_DISPATCH(ScaleRow);
    const auto sourceValues = static_cast<size_t>(dib.Width()) * 4;
    const auto values = sourceValues + static_cast<size_t>(size.width) * 4;
    const auto scaleRows = [&](CPackedDib& scaled, int begin, int end) {
        CHeapBlock block = CHeapBlock::Allocate(values * sizeof(float), 0, BlockContent::Undefined);
        if (block.IsEmpty())
            return false;
        auto* sums = reinterpret_cast<float*>(block.Data());
        const ScaleJob job{dib, columns, rows, sums, sums + sourceValues};
        for (int y = end - 1; y >= begin; --y)
            scaleRow(job, {y, PixelRow(scaled, y), static_cast<size_t>(size.width), StoresFor(size)});
        return true;
    };
    const int64_t rowsRead = std::max<int64_t>(1, dib.Height() / size.height);
    const int64_t work = (dib.Width() + int64_t{size.width}) * rowsRead;
    const int band =
        BandRows(static_cast<int>(std::min<int64_t>(work, kMaxPicturePixels)), kPixelsPerMicrosecond);
    return MakePictureInBands(size, band, scaleRows);
}

} // namespace

CPackedDib Scale(const CPackedDib& dib, int width, int height, IProgress* progress, int /*flag*/)
{
    if (dib.IsEmpty() || width < 1 || height < 1)
        return {};
    const Size size{width, height};
    CPackedDib scaled;
    if (dib.Size() == size)
        scaled = dib.Duplicate();
    else if (dib.Width() < 1 || dib.Height() < 1)
        scaled = CPackedDib::CreateTransparent(width, height);
    else if (dib.Width() == 2 * int64_t{width} && dib.Height() == 2 * int64_t{height})
        scaled = HalvePicture(dib);
    else
        scaled = ScaleByTaps(dib, size);
    if (progress != nullptr)
        progress->SetPosition(100);
    return scaled;
}

#endif
