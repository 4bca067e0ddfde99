// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/PixelMatch.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "canvas/PixelMatch.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include <algorithm>
#include <array>
#include <cstring>

HWY_BEFORE_NAMESPACE();
namespace HWY_NAMESPACE {
namespace {

namespace hn = hwy::HWY_NAMESPACE;

/// Bit i of the result belongs to pixel i of `count`, 1 to 64.
uint64_t MatchWord(const uint8_t* pixels, int count, const PixelRange& range)
{
    uint64_t word = 0;
    int at = 0;
#if HWY_TARGET != HWY_SCALAR
    const hn::CappedTag<uint32_t, 64> d;
    const hn::Repartition<uint8_t, decltype(d)> bytes;
    const auto low = hn::BitCast(bytes, hn::Set(d, range.low));
    const auto high = hn::BitCast(bytes, hn::Set(d, range.high));
    const auto lanes = static_cast<int>(hn::Lanes(d));
    for (; at + lanes <= count; at += lanes) {
        const auto pixel = hn::LoadU(bytes, pixels + ptrdiff_t{at} * 4);
        const auto clamped = hn::Min(hn::Max(pixel, low), high);
        std::array<uint8_t, 8> bits{};
        hn::StoreMaskBits(d, hn::Eq(hn::BitCast(d, pixel), hn::BitCast(d, clamped)), bits.data());
        uint64_t part = 0;
        std::memcpy(&part, bits.data(), sizeof part);
        word |= part << at;
    }
#endif
    for (; at < count; ++at) {
        uint32_t pixel = 0;
        std::memcpy(&pixel, pixels + ptrdiff_t{at} * 4, sizeof pixel);
        word |= uint64_t{range.Matches(pixel)} << at;
    }
    return word;
}

void MatchRow(const uint8_t* pixels, int count, const PixelRange& range, uint64_t* words)
{
    for (; count > 0; count -= kBitsPerWord, pixels += ptrdiff_t{kBitsPerWord} * 4)
        *words++ = MatchWord(pixels, std::min(count, kBitsPerWord), range);
}

} // namespace
} // namespace HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

HWY_EXPORT(MatchRow);

PixelRange RangeAround(uint32_t pixel, int tolerance, uint8_t lowestAlpha, uint8_t highestAlpha)
{
    PixelRange range{uint32_t{lowestAlpha} << 24, uint32_t{highestAlpha} << 24};
    for (int shift = 0; shift < 24; shift += 8) {
        const int channel = static_cast<int>(pixel >> shift & 255);
        range.low |= static_cast<uint32_t>(std::max(0, channel - tolerance)) << shift;
        range.high |= static_cast<uint32_t>(std::min(255, channel + tolerance)) << shift;
    }
    return range;
}

std::span<uint64_t> MatchStrip(const CPackedDib& dib, int y, int strip, const PixelRange& range,
                               const CRegion& clip, uint64_t* words)
{
    const int left = strip * kStripPixels;
    const int count = std::min(kStripPixels, dib.Width() - left);
    const std::span<uint64_t> matched(words, static_cast<size_t>(WordsFor(count)));
    HWY_DYNAMIC_DISPATCH(MatchRow)(dib.Row(y) + ptrdiff_t{left} * 4, count, range, words);
    if (!clip.IsEmpty()) {
        std::array<uint64_t, kStripWords> inside{};
        VisitRow(clip, y, left, left + count,
                 [&](int from, int to) { SetBits(inside, from - left, to - left); });
        for (size_t word = 0; word < matched.size(); ++word)
            matched[word] &= inside[word];
    }
    return matched;
}

#endif
