// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/transform/EnlargePicture.h"

#include "platform/parallel/PictureBands.h"
#include "platform/parallel/RowBands.h"

#include <algorithm>
#include <array>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "platform/transform/EnlargePicture.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "platform/parallel/FillRow-inl.h"
#include "platform/transform/SummedPixels-inl.h"

#ifndef PIXOLUNE_ENLARGE
#define PIXOLUNE_ENLARGE
namespace {

constexpr int kTaps = 4;
/// Blue, green and red times alpha, and alpha.
constexpr size_t kPlanes = 4;
/// More than any vector has, so that whole vectors can be read and written at the end of a row.
constexpr size_t kPadding = 64;

/// Where the result pixels of a row come from.
struct EnlargeJob {
    const CPackedDib& source;
    const CAxisTaps& rows;
    const int32_t* firsts = nullptr; ///< the leftmost source column of every result column
    size_t padded = 0;               ///< result columns with room behind
    int32_t* places = nullptr; ///< of each tap, each result column: columns behind the leftmost of its vector
    float* weights = nullptr;  ///< in the same order
};

/// Rows of planes that one processor works on.
struct EnlargeScratch {
    size_t plane = 0;          ///< values of a plane with room behind
    float* products = nullptr; ///< of source row y at y % kTaps
    float* sums = nullptr;
    uint32_t* pixels = nullptr;
    std::array<int, kTaps> rows = {-1, -1, -1, -1}; ///< the source rows that are there

    [[nodiscard]] float* Products(int y, size_t channel) const
    {
        return products + (static_cast<size_t>(y % kTaps) * kPlanes + channel) * plane;
    }
    [[nodiscard]] float* Sums(size_t channel) const { return sums + channel * plane; }
};

} // namespace
#endif

HWY_BEFORE_NAMESPACE();
namespace {
namespace HWY_NAMESPACE {

#if HWY_TARGET == HWY_SCALAR

size_t VectorPixels()
{
    return 0; // nothing is gained
}

void EnlargeRow(const EnlargeJob& /*job*/, EnlargeScratch& /*scratch*/, const ResultRow& /*row*/) {}

#else

size_t VectorPixels()
{
    return hn::Lanes(hn::ScalableTag<float>());
}

template <class D> HWY_INLINE void WidenPixels(D words, const uint32_t* from, float* const* planes, size_t x)
{
    const hn::Rebind<float, D> floats;
    const hn::Rebind<int32_t, D> integers;
    const auto pixel = hn::LoadU(words, from + x);
    const auto levelOf = [&](auto shifted) HWY_ATTR {
        return hn::ConvertTo(floats, hn::BitCast(integers, hn::And(shifted, hn::Set(words, 255))));
    };
    const auto alpha = levelOf(hn::ShiftRight<24>(pixel));
    hn::StoreU(hn::Mul(levelOf(pixel), alpha), floats, planes[0] + x);
    hn::StoreU(hn::Mul(levelOf(hn::ShiftRight<8>(pixel)), alpha), floats, planes[1] + x);
    hn::StoreU(hn::Mul(levelOf(hn::ShiftRight<16>(pixel)), alpha), floats, planes[2] + x);
    hn::StoreU(alpha, floats, planes[3] + x);
}

void WidenRow(const EnlargeJob& job, EnlargeScratch& scratch, int y)
{
    const hn::ScalableTag<uint32_t> words;
    float* planes[kPlanes];
    for (size_t channel = 0; channel < kPlanes; ++channel)
        planes[channel] = scratch.Products(y, channel);
    const auto width = static_cast<size_t>(job.source.Width());
    size_t x = 0;
    for (; x + hn::Lanes(words) <= width; x += hn::Lanes(words))
        WidenPixels(words, PixelRow(job.source, y), planes, x);
    for (; x < width; ++x)
        WidenPixels(hn::CappedTag<uint32_t, 1>(), PixelRow(job.source, y), planes, x);
    scratch.rows[static_cast<size_t>(y % kTaps)] = y;
}

/// The weighted sums of four source rows.
void SumRows(const EnlargeJob& job, EnlargeScratch& scratch, const Tap& tap)
{
    const hn::ScalableTag<float> floats;
    for (int y = tap.first; y < tap.first + kTaps; ++y) {
        if (scratch.rows[static_cast<size_t>(y % kTaps)] != y)
            WidenRow(job, scratch, y);
    }
    const auto width = static_cast<size_t>(job.source.Width());
    const auto weight0 = hn::Set(floats, tap.weights[0]);
    const auto weight1 = hn::Set(floats, tap.weights[1]);
    const auto weight2 = hn::Set(floats, tap.weights[2]);
    const auto weight3 = hn::Set(floats, tap.weights[3]);
    for (size_t channel = 0; channel < kPlanes; ++channel) {
        const float* const row0 = scratch.Products(tap.first, channel);
        const float* const row1 = scratch.Products(tap.first + 1, channel);
        const float* const row2 = scratch.Products(tap.first + 2, channel);
        const float* const row3 = scratch.Products(tap.first + 3, channel);
        float* HWY_RESTRICT const sums = scratch.Sums(channel);
        for (size_t x = 0; x < width; x += hn::Lanes(floats)) {
            auto sum = hn::Mul(hn::LoadU(floats, row0 + x), weight0);
            sum = hn::Add(sum, hn::Mul(hn::LoadU(floats, row1 + x), weight1));
            sum = hn::Add(sum, hn::Mul(hn::LoadU(floats, row2 + x), weight2));
            sum = hn::Add(sum, hn::Mul(hn::LoadU(floats, row3 + x), weight3));
            hn::StoreU(sum, floats, sums + x);
        }
    }
}

void EnlargeRow(const EnlargeJob& job, EnlargeScratch& scratch, const ResultRow& row)
{
    const hn::ScalableTag<float> floats;
    const hn::RebindToUnsigned<decltype(floats)> words;
    const hn::RebindToSigned<decltype(floats)> integers;
    SumRows(job, scratch, job.rows.At(row.y));
    for (size_t x = 0; x < row.count; x += hn::Lanes(floats)) {
        const auto place = [&](size_t tap) HWY_ATTR {
            return hn::IndicesFromVec(floats, hn::LoadU(integers, job.places + tap * job.padded + x));
        };
        const auto weight = [&](size_t tap)
                                HWY_ATTR { return hn::LoadU(floats, job.weights + tap * job.padded + x); };
        const auto place0 = place(0);
        const auto place1 = place(1);
        const auto place2 = place(2);
        const auto place3 = place(3);
        const auto weight0 = weight(0);
        const auto weight1 = weight(1);
        const auto weight2 = weight(2);
        const auto weight3 = weight(3);
        const auto sumOf = [&](size_t channel) HWY_ATTR {
            const auto from = hn::LoadU(floats, scratch.Sums(channel) + job.firsts[x]);
            auto sum = hn::Mul(hn::TableLookupLanes(from, place0), weight0);
            sum = hn::Add(sum, hn::Mul(hn::TableLookupLanes(from, place1), weight1));
            sum = hn::Add(sum, hn::Mul(hn::TableLookupLanes(from, place2), weight2));
            return hn::Add(sum, hn::Mul(hn::TableLookupLanes(from, place3), weight3));
        };
        hn::StoreU(PixelsOfSums(words, sumOf(0), sumOf(1), sumOf(2), sumOf(3)), words, scratch.pixels + x);
    }
    StorePixels(scratch.pixels, row, 0, row.count);
}

#endif

} // namespace HWY_NAMESPACE
} // namespace
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

namespace {

HWY_EXPORT(VectorPixels);
HWY_EXPORT(EnlargeRow);
constexpr int kPixelsPerMicrosecond = 400;

/// Whether all that makes `lanes` result columns, wherever they begin, lies in as many source columns.
bool FitsVectors(const int* firsts, size_t columns, size_t lanes)
{
    for (size_t x = 0; x < columns; x += lanes) {
        const size_t last = std::min(x + lanes, columns) - 1;
        if (firsts[last] - firsts[x] + kTaps > static_cast<int>(lanes))
            return false;
    }
    return true;
}

void FillTables(EnlargeJob& job, const CAxisTaps& columns, size_t count, size_t lanes)
{
    for (size_t tap = 0; tap < kTaps; ++tap) {
        for (size_t x = 0; x < job.padded; ++x) {
            const bool isInside = x < count;
            const size_t at = tap * job.padded + x;
            job.places[at] =
                isInside ? job.firsts[x] - job.firsts[x - x % lanes] + static_cast<int32_t>(tap) : 0;
            job.weights[at] = isInside ? columns.Weights()[x * kTaps + tap] : 0;
        }
    }
}

} // namespace

std::optional<CPackedDib> EnlargePicture(const CPackedDib& dib, Size size, const CAxisTaps& columns,
                                         const CAxisTaps& rows)
{
    const size_t lanes = HWY_DYNAMIC_DISPATCH(VectorPixels)();
    const auto count = static_cast<size_t>(size.width);
    if (columns.Count() != kTaps || rows.Count() != kTaps || lanes < 2 * kTaps ||
        !FitsVectors(columns.Firsts(), count, lanes))
        return std::nullopt;
    EnlargeJob job{dib, rows, columns.Firsts(), count + kPadding};
    CHeapBlock tables = CHeapBlock::Allocate(kTaps * job.padded * (sizeof(int32_t) + sizeof(float)));
    if (tables.IsEmpty())
        return CPackedDib();
    job.places = reinterpret_cast<int32_t*>(tables.Data());
    job.weights = reinterpret_cast<float*>(job.places + kTaps * job.padded);
    FillTables(job, columns, count, lanes);
    const auto enlargeRow = HWY_DYNAMIC_DISPATCH(EnlargeRow);
    const auto enlargeRows = [&](CPackedDib& enlarged, int begin, int end) {
        EnlargeScratch scratch;
        scratch.plane = static_cast<size_t>(dib.Width()) + kPadding;
        const size_t planes = (kTaps + 1) * kPlanes * scratch.plane;
        // Zeroes: what lies behind the planes is weighed with 0 and must be a number.
        CHeapBlock block = CHeapBlock::Allocate(planes * sizeof(float) + job.padded * sizeof(uint32_t));
        if (block.IsEmpty())
            return false;
        scratch.products = reinterpret_cast<float*>(block.Data());
        scratch.sums = scratch.products + kTaps * kPlanes * scratch.plane;
        scratch.pixels = reinterpret_cast<uint32_t*>(scratch.products + planes);
        for (int y = end - 1; y >= begin; --y)
            enlargeRow(job, scratch, {y, PixelRow(enlarged, y), count, StoresFor(size)});
        return true;
    };
    return MakePictureInBands(size, BandRows(size.width, kPixelsPerMicrosecond), enlargeRows);
}

#endif
