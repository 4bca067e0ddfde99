// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageops/BoxBlur.h"

#include "platform/parallel/PictureBands.h"
#include "platform/parallel/RowBands.h"

#include <algorithm>
#include <cstring>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "imageops/BoxBlur.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#ifndef PIXOLUNE_BOX_BLUR
#define PIXOLUNE_BOX_BLUR
namespace {

/// Columns of the result that are made together: the sums of their columns stay in the fastest cache.
constexpr int kStripPixels = 768;
/// Result rows that are made together, one in each 128-bit block of a vector.
constexpr size_t kMaxGroup = 4;
constexpr size_t kMaxEntries = kStripPixels + kMaxBlurSize + 4;

/// A strip of columns of a band of rows.
struct BoxStrip {
    const CPackedDib& source;
    CPackedDib& blurred;
    int reach = 0; ///< the window's side is 2 * reach + 1
    int left = 0;
    int right = 0;
    int top = 0;
    int bottom = 0;

    [[nodiscard]] const uint8_t* SourceRow(int y, int x) const
    {
        return source.Row(std::clamp(y, 0, source.Height() - 1)) + ptrdiff_t{x} * 4;
    }
};

} // namespace
#endif

HWY_BEFORE_NAMESPACE();
namespace {
namespace HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;
using Sums = hn::CappedTag<uint16_t, kMaxGroup * 8>;
using Levels = hn::CappedTag<float, kMaxGroup * 4>;

HWY_INLINE size_t GroupRows()
{
    return std::max<size_t>(1, hn::Lanes(Levels()) / 4);
}

/// `entry` of the column sums as the horizontal pass reads them: the rows of the group side by side.
HWY_INLINE uint16_t* EntryOf(uint16_t* sums, size_t entry)
{
    return sums + entry * GroupRows() * 4;
}

/// Writes the sums of one group of rows, beginning with row y, to `group` and moves `columns` to the row
/// below the group. `bytes` of the source's rows are covered, from pixel x on.
void MoveColumnsDown(const BoxStrip& strip, int y, int x, size_t bytes, uint16_t* HWY_RESTRICT columns,
                     uint16_t* HWY_RESTRICT group)
{
    const size_t rows = GroupRows();
    const uint8_t* enters[kMaxGroup];
    const uint8_t* leaves[kMaxGroup];
    for (size_t r = 0; r < rows; ++r) {
        const int row = y + static_cast<int>(r);
        enters[r] = strip.SourceRow(row + strip.reach + 1, x);
        leaves[r] = strip.SourceRow(row - strip.reach, x);
    }
    size_t at = 0;
#if HWY_TARGET != HWY_SCALAR
    const Sums sums;
    const hn::Rebind<uint8_t, Sums> narrow;
    const hn::Repartition<uint64_t, Sums> pixels;
    const auto moved = [&](auto sum, size_t r) HWY_ATTR {
        const auto entering = hn::PromoteTo(sums, hn::LoadU(narrow, enters[r] + at));
        return hn::Sub(hn::Add(sum, entering), hn::PromoteTo(sums, hn::LoadU(narrow, leaves[r] + at)));
    };
    for (; at + hn::Lanes(sums) <= bytes; at += hn::Lanes(sums)) {
        const auto first = hn::LoadU(sums, columns + at);
        auto* to = reinterpret_cast<uint64_t*>(group + at * rows);
        auto next = moved(first, 0);
        if (rows == 1) {
            hn::StoreU(first, sums, group + at);
        } else if (rows == 2) {
            hn::StoreInterleaved2(hn::BitCast(pixels, first), hn::BitCast(pixels, next), pixels, to);
            next = moved(next, 1);
        } else {
            const auto third = moved(next, 1);
            const auto fourth = moved(third, 2);
            hn::StoreInterleaved4(hn::BitCast(pixels, first), hn::BitCast(pixels, next),
                                  hn::BitCast(pixels, third), hn::BitCast(pixels, fourth), pixels, to);
            next = moved(fourth, 3);
        }
        hn::StoreU(next, sums, columns + at);
    }
#endif
    for (; at < bytes; ++at) {
        for (size_t r = 0; r < rows; ++r) {
            group[at / 4 * rows * 4 + r * 4 + at % 4] = columns[at];
            columns[at] = static_cast<uint16_t>(columns[at] + enters[r][at] - leaves[r][at]);
        }
    }
}

/// Blurs pixels of a group of rows from their column sums. `group` begins with the column at the left end of
/// the first window.
void AverageWindows(const uint16_t* HWY_RESTRICT group, int reach, size_t pixels, uint8_t* const* rows,
                    size_t rowCount)
{
    const auto side = static_cast<size_t>(2 * reach + 1);
    const size_t entry = GroupRows() * 4;
#if HWY_TARGET == HWY_SCALAR
    for (size_t c = 0; c < 4 * rowCount; ++c) {
        uint32_t sum = 0;
        for (size_t i = 0; i < side; ++i)
            sum += group[i * entry + c];
        for (size_t x = 0; x < pixels; ++x) {
            rows[c / 4][x * 4 + c % 4] = static_cast<uint8_t>(sum / (side * side));
            sum += group[(x + side) * entry + c];
            sum -= group[x * entry + c];
        }
    }
#else
    const Levels levels;
    const hn::Rebind<int32_t, Levels> integers;
    const hn::Rebind<int16_t, Levels> narrow;
    const hn::Repartition<uint8_t, Levels> bytes;
    // Puts the low bytes of the four integers of a block at its pixel 0, 1, 2 or 3.
    alignas(16) static constexpr uint8_t kPlaces[4][16] = {
        {0, 4, 8, 12, 128, 128, 128, 128, 128, 128, 128, 128, 128, 128, 128, 128},
        {128, 128, 128, 128, 0, 4, 8, 12, 128, 128, 128, 128, 128, 128, 128, 128},
        {128, 128, 128, 128, 128, 128, 128, 128, 0, 4, 8, 12, 128, 128, 128, 128},
        {128, 128, 128, 128, 128, 128, 128, 128, 128, 128, 128, 128, 0, 4, 8, 12}};
    const auto load = [&](size_t at) HWY_ATTR {
        return hn::LoadU(narrow, reinterpret_cast<const int16_t*>(group + at * entry));
    };
    // Sums are below 2^20 and the side at most 49: a half more keeps (sum + 1/2) / side^2 at least 2^-13 away
    // from every whole number, while the product with the reciprocal is off by less than 2^-15.
    const auto reciprocal = hn::Set(levels, 1.0f / static_cast<float>(side * side));
    auto window = hn::Set(levels, 0.5f);
    for (size_t i = 0; i < side; ++i)
        window = hn::Add(window, hn::ConvertTo(levels, hn::PromoteTo(integers, load(i))));

    HWY_ALIGN uint8_t blocks[kMaxGroup * 16];
    for (size_t x = 0; x < pixels; x += 4) {
        auto four = hn::Zero(bytes);
        for (size_t i = 0; i < 4; ++i) {
            const auto quotient = hn::ConvertTo(integers, hn::Mul(window, reciprocal));
            const auto placed =
                hn::TableLookupBytesOr0(hn::BitCast(bytes, quotient), hn::LoadDup128(bytes, kPlaces[i]));
            four = hn::Or(four, placed);
            const auto change = hn::Sub(load(x + i + side), load(x + i));
            window = hn::Add(window, hn::ConvertTo(levels, hn::PromoteTo(integers, change)));
        }
        hn::Store(four, bytes, blocks);
        if (x + 4 <= pixels) {
            for (size_t r = 0; r < rowCount; ++r)
                std::memcpy(rows[r] + x * 4, blocks + r * 16, 16);
        } else {
            for (size_t r = 0; r < rowCount; ++r)
                std::memcpy(rows[r] + x * 4, blocks + r * 16, (pixels - x) * 4);
        }
    }
#endif
}

void BlurStrip(const BoxStrip& strip)
{
    HWY_ALIGN uint16_t columns[kMaxEntries * 4];
    HWY_ALIGN uint16_t group[kMaxEntries * 4 * kMaxGroup] = {};
    const size_t groupRows = GroupRows();
    const size_t entryBytes = groupRows * 8;
    // Entry 0 belongs to column left - reach; those outside the picture repeat its edges.
    const int firstColumn = std::max(0, strip.left - strip.reach);
    const int endColumn = std::min(strip.source.Width(), strip.right + strip.reach + 1);
    const auto firstEntry = static_cast<size_t>(firstColumn - (strip.left - strip.reach));
    const auto endEntry = static_cast<size_t>(endColumn - (strip.left - strip.reach));
    const auto entries = static_cast<size_t>(strip.right - strip.left + 2 * strip.reach + 1);
    const auto bytes = static_cast<size_t>(endColumn - firstColumn) * 4;

    std::fill_n(columns, bytes, uint16_t{0});
    for (int y = strip.top - strip.reach; y <= strip.top + strip.reach; ++y) {
        const uint8_t* row = strip.SourceRow(y, firstColumn);
        for (size_t at = 0; at < bytes; ++at)
            columns[at] = static_cast<uint16_t>(columns[at] + row[at]);
    }
    for (int y = strip.top; y < strip.bottom; y += static_cast<int>(groupRows)) {
        MoveColumnsDown(strip, y, firstColumn, bytes, columns, EntryOf(group, firstEntry));
        for (size_t entry = 0; entry < firstEntry; ++entry)
            std::memcpy(EntryOf(group, entry), EntryOf(group, firstEntry), entryBytes);
        for (size_t entry = endEntry; entry < entries; ++entry)
            std::memcpy(EntryOf(group, entry), EntryOf(group, endEntry - 1), entryBytes);
        uint8_t* rows[kMaxGroup] = {};
        const size_t rowCount = std::min(groupRows, static_cast<size_t>(strip.bottom - y));
        for (size_t r = 0; r < rowCount; ++r)
            rows[r] = strip.blurred.Row(y + static_cast<int>(r)) + ptrdiff_t{strip.left} * 4;
        AverageWindows(group, strip.reach, static_cast<size_t>(strip.right - strip.left), rows, rowCount);
    }
}

} // namespace HWY_NAMESPACE
} // namespace
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

namespace {
HWY_EXPORT(BlurStrip);
constexpr int kPixelsPerMicrosecond = 500;
} // namespace

CPackedDib BoxBlur(const CPackedDib& dib, int size)
{
    if (dib.IsEmpty())
        return {};
    const int side = std::min({std::clamp(size, 1, kMaxBlurSize), dib.Width(), dib.Height()});
    const int reach = (side - 1) / 2;
    if (reach <= 0)
        return dib.Duplicate();
    const auto blurStrip = HWY_DYNAMIC_DISPATCH(BlurStrip);
    const auto blurRows = [&](CPackedDib& blurred, int begin, int end) {
        for (int left = 0; left < dib.Width(); left += kStripPixels) {
            const int right = std::min(left + kStripPixels, dib.Width());
            blurStrip({dib, blurred, reach, left, right, begin, end});
        }
        return true;
    };
    // Every band adds up its first windows anew.
    const int smallestBand = std::max(BandRows(dib.Width(), kPixelsPerMicrosecond), 16 * reach);
    return MakePictureInBands(dib.Size(), smallestBand, blurRows);
}

#endif
