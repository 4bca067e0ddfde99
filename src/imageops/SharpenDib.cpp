// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageops/SharpenDib.h"

#include "platform/parallel/PictureBands.h"

#include <algorithm>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "imageops/SharpenDib.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "platform/parallel/FillRow-inl.h"

#ifndef PIXOLUNE_SHARPEN_ROWS
#define PIXOLUNE_SHARPEN_ROWS
namespace {

/// Three source rows around one of the result.
struct SharpenRows {
    const uint8_t* above;
    const uint8_t* here;
    const uint8_t* below;
};

/// Pixels whose column sums are kept at a time: few enough for the fastest cache.
constexpr size_t kTilePixels = 512;

} // namespace
#endif

HWY_BEFORE_NAMESPACE();
namespace {
namespace HWY_NAMESPACE {

template <typename D>
HWY_INLINE void SumColumns(D wide, const SharpenRows& rows, size_t at, uint16_t* HWY_RESTRICT sums)
{
    const hn::Rebind<uint8_t, D> bytes;
    const auto load = [&](const uint8_t* row) { return hn::PromoteTo(wide, hn::LoadU(bytes, row + at)); };
    hn::StoreU(hn::Add(hn::Add(load(rows.above), load(rows.here)), load(rows.below)), wide, sums);
}

template <typename D>
HWY_INLINE void SharpenBytes(D wide, const uint8_t* HWY_RESTRICT here, const uint16_t* HWY_RESTRICT sums,
                             int amount, uint8_t* HWY_RESTRICT sharp)
{
    const hn::Rebind<uint8_t, D> bytes;
    const hn::RebindToSigned<D> numbers;
    const auto pixel = hn::PromoteTo(wide, hn::LoadU(bytes, here));
    const auto window =
        hn::Add(hn::Add(hn::LoadU(wide, sums), hn::LoadU(wide, sums + 4)), hn::LoadU(wide, sums + 8));
    const auto mean = hn::ShiftRight<3>(hn::Sub(window, pixel));
    const auto difference = hn::BitCast(numbers, hn::Sub(pixel, mean));
    const auto change = amount == 2 ? hn::Add(difference, difference) : difference;
    hn::StoreU(hn::DemoteTo(bytes, hn::Add(hn::BitCast(numbers, pixel), change)), bytes, sharp);
}

void SharpenRow(const SharpenRows& rows, int amount, const ResultRow& sharp)
{
    const hn::ScalableTag<uint16_t> wide;
    const hn::CappedTag<uint16_t, 1> single;
    const size_t lanes = hn::Lanes(wide);
    HWY_ALIGN uint16_t sums[(kTilePixels + 2) * 4];
    HWY_ALIGN uint32_t tile[kTilePixels];
    auto* const tileBytes = reinterpret_cast<uint8_t*>(tile);
    const size_t pixels = sharp.count;
    for (size_t first = 0; first < pixels; first += kTilePixels) {
        const size_t last = std::min(first + kTilePixels, pixels);
        // The sums of the tile's columns and of one more on either side.
        const size_t begin = (first == 0 ? 0 : first - 1) * 4;
        const size_t end = (last == pixels ? last : last + 1) * 4;
        uint16_t* const from = sums + (first == 0 ? 4 : 0);
        size_t at = begin;
        for (; at + lanes <= end; at += lanes)
            SumColumns(wide, rows, at, from + (at - begin));
        for (; at < end; ++at)
            SumColumns(single, rows, at, from + (at - begin));
        if (first == 0)
            std::copy_n(sums + 4, 4, sums);
        if (last == pixels)
            std::copy_n(from + (end - begin) - 4, 4, from + (end - begin));

        const size_t bytes = (last - first) * 4;
        const uint8_t* const here = rows.here + first * 4;
        for (at = 0; at + lanes <= bytes; at += lanes)
            SharpenBytes(wide, here + at, sums + at, amount, tileBytes + at);
        for (; at < bytes; ++at)
            SharpenBytes(single, here + at, sums + at, amount, tileBytes + at);
        StorePixels(tile, sharp, first, last - first);
    }
}

} // namespace HWY_NAMESPACE
} // namespace
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

namespace {
HWY_EXPORT(SharpenRow);
constexpr int kPixelsPerMicrosecond = 800;
} // namespace

CPackedDib SharpenDib(const CPackedDib& dib, int sharpness)
{
    if (dib.IsEmpty())
        return {};
    const int amount = std::clamp(sharpness, 0, 255) / 100;
    if (amount == 0)
        return dib.Duplicate();
    const auto sharpenRow = HWY_DYNAMIC_DISPATCH(SharpenRow);
    return MakePictureRows(dib.Size(), kPixelsPerMicrosecond, [&](const ResultRow& sharp) {
        const SharpenRows rows{dib.Row(std::max(sharp.y - 1, 0)), dib.Row(sharp.y),
                               dib.Row(std::min(sharp.y + 1, dib.Height() - 1))};
        sharpenRow(rows, amount, sharp);
    });
}

#endif
