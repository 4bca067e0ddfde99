// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/PixelMatch.h"

#include "platform/memory/Prefetch.h"

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

#if HWY_TARGET != HWY_SCALAR
/// Bit i of the bytes at `bits` tells of pixel i; handles whole vectors and returns how many pixels they
/// hold.
template <class D>
int MatchVectors(D d, const uint8_t* pixels, int count, const PixelRange& range, uint8_t* bits)
{
    const hn::Repartition<uint8_t, D> bytes;
    const auto low = hn::BitCast(bytes, hn::Set(d, range.low));
    const auto high = hn::BitCast(bytes, hn::Set(d, range.high));
    const auto matches = [&](int at) {
        const uint8_t* const from = pixels + ptrdiff_t{at} * 4;
        PrefetchBehind(from, hn::Lanes(bytes));
        const auto pixel = hn::LoadU(bytes, from);
        const auto clamped = hn::Min(hn::Max(pixel, low), high);
        return hn::Eq(hn::BitCast(d, pixel), hn::BitCast(d, clamped));
    };
    const auto lanes = static_cast<int>(hn::Lanes(d));
    int at = 0;
    if (lanes % 8 == 0) {
        for (; at + lanes <= count; at += lanes)
            (void)hn::StoreMaskBits(d, matches(at), bits + at / 8);
        return at;
    }
    for (; at + 8 <= count; at += 8) {
        uint8_t byte = 0;
        for (int part = 0; part < 8; part += lanes) {
            std::array<uint8_t, 8> some{};
            (void)hn::StoreMaskBits(d, matches(at + part), some.data());
            byte = static_cast<uint8_t>(byte | some[0] << part);
        }
        bits[at / 8] = byte;
    }
    return at;
}
#endif

void MatchRow(const uint8_t* pixels, int count, const PixelRange& range, uint64_t* words)
{
    int at = 0;
    words[WordsFor(count) - 1] = 0;
#if HWY_TARGET != HWY_SCALAR
    // Written byte by byte, the lowest first, as words are stored on every processor with vectors.
    at = MatchVectors(hn::ScalableTag<uint32_t>(), pixels, count, range, reinterpret_cast<uint8_t*>(words));
#else
    std::fill_n(words, WordsFor(count), 0);
#endif
    for (; at < count; ++at) {
        uint32_t pixel = 0;
        std::memcpy(&pixel, pixels + ptrdiff_t{at} * 4, sizeof pixel);
        words[at / kBitsPerWord] |= uint64_t{range.Matches(pixel)} << (at % kBitsPerWord);
    }
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

void MatchPixels(const ConstBitmapView& picture, int y, int left, std::span<uint64_t> words,
                 const PixelRange& range, const CRegion& clip)
{
    const int count = std::min(static_cast<int>(words.size()) * kBitsPerWord, picture.width - left);
    HWY_DYNAMIC_DISPATCH(MatchRow)(picture.Row(y) + ptrdiff_t{left} * 4, count, range, words.data());
    if (clip.IsEmpty())
        return;
    int at = left;
    const auto clear = [&](int from, int to) {
        if (from < to)
            ClearBits(words, from - left, to - left);
    };
    VisitRow(clip, y, left, left + count, [&](int from, int to) {
        clear(at, from);
        at = to;
    });
    clear(at, left + count);
}

#endif
