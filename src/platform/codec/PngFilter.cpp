// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/codec/PngFilter.h"

#include <cstring>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "platform/codec/PngFilter.cpp"
#include <hwy/foreach_target.h>
// After foreach_target.h.
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace codec::HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

void PackRow(const uint8_t* HWY_RESTRICT pixels, int width, int channels, uint8_t* HWY_RESTRICT packed)
{
    const hn::ScalableTag<uint8_t> bytes;
    const auto lanes = static_cast<int>(hn::Lanes(bytes));
    int x = 0;
    for (; x + lanes <= width; x += lanes) {
        auto blue = hn::Zero(bytes);
        auto green = blue;
        auto red = blue;
        auto alpha = blue;
        hn::LoadInterleaved4(bytes, pixels + ptrdiff_t{x} * 4, blue, green, red, alpha);
        if (channels == 3)
            hn::StoreInterleaved3(red, green, blue, bytes, packed + ptrdiff_t{x} * 3);
        else
            hn::StoreInterleaved4(red, green, blue, alpha, bytes, packed + ptrdiff_t{x} * 4);
    }
    for (; x < width; ++x) {
        const uint8_t* from = pixels + ptrdiff_t{x} * 4;
        uint8_t* to = packed + ptrdiff_t{x} * channels;
        to[0] = from[2];
        to[1] = from[1];
        to[2] = from[0];
        if (channels == 4)
            to[3] = from[3];
    }
}

/// The one of the three neighbours that is nearest to left + up - corner, in this order of preference.
template <class D, class V = hn::Vec<D>> HWY_INLINE V PaethPrediction(D d, V left, V up, V corner)
{
    // Distances of the estimate left + up - corner from its three neighbours, all within a byte: where left
    // and up lie on the same side of the corner, the third distance is the sum of the others and never the
    // smallest; elsewhere it is their difference.
    const auto toLeft = hn::Sub(hn::Max(up, corner), hn::Min(up, corner));
    const auto toUp = hn::Sub(hn::Max(left, corner), hn::Min(left, corner));
    const auto upBelow = hn::Eq(hn::Min(up, corner), up);
    const auto leftBelow = hn::Eq(hn::Min(left, corner), left);
    const auto sameSide =
        hn::Eq(hn::Xor(hn::VecFromMask(d, upBelow), hn::VecFromMask(d, leftBelow)), hn::Zero(d));
    const auto apart = hn::Sub(hn::Max(toLeft, toUp), hn::Min(toLeft, toUp));
    const auto toCorner = hn::IfThenElse(sameSide, hn::Set(d, 255), apart);
    const auto leftWins = hn::Eq(hn::Min(toLeft, hn::Min(toUp, toCorner)), toLeft);
    const auto upWins = hn::Eq(hn::Min(toUp, toCorner), toUp);
    return hn::IfThenElse(leftWins, left, hn::IfThenElse(upWins, up, corner));
}

/// The five filters of the bytes from `at` on, as many as `d` has lanes.
template <class D, class Sums>
HWY_INLINE void FilterStep(D d, size_t at, const uint8_t* row, const uint8_t* above, size_t bytesPerPixel,
                           uint8_t* const (&filtered)[kPngFilters], Sums (&sums)[kPngFilters])
{
    const auto zero = hn::Zero(d);
    const auto value = hn::LoadU(d, row + at);
    const auto left = hn::LoadU(d, row + at - bytesPerPixel);
    const auto up = hn::LoadU(d, above + at);
    const auto corner = hn::LoadU(d, above + at - bytesPerPixel);

    // The rounded-up average, less one where the sum is odd.
    const auto odd = hn::And(hn::Xor(left, up), hn::Set(d, 1));
    const auto average = hn::Sub(hn::AverageRound(left, up), odd);

    const auto paeth = PaethPrediction(d, left, up, corner);

    const decltype(value) results[kPngFilters] = {value, hn::Sub(value, left), hn::Sub(value, up),
                                                  hn::Sub(value, average), hn::Sub(value, paeth)};
    for (size_t filter = 0; filter < kPngFilters; ++filter) {
        if (filter > 0)
            hn::StoreU(results[filter], d, filtered[filter] + at);
        // The smaller of a byte and its negative is its absolute value as a signed one.
        const auto magnitude = hn::Min(results[filter], hn::Sub(zero, results[filter]));
        sums[filter] = hn::Add(sums[filter], hn::SumsOf8(magnitude));
    }
}

template <class D>
HWY_INLINE size_t FilterRun(D d, size_t at, const uint8_t* row, const uint8_t* above, size_t bytes,
                            size_t bytesPerPixel, uint8_t* const (&filtered)[kPngFilters],
                            uint64_t (&costs)[kPngFilters])
{
    const hn::Repartition<uint64_t, D> words;
    decltype(hn::Zero(words)) sums[kPngFilters] = {hn::Zero(words), hn::Zero(words), hn::Zero(words),
                                                   hn::Zero(words), hn::Zero(words)};
    for (; at + hn::Lanes(d) <= bytes; at += hn::Lanes(d))
        FilterStep(d, at, row, above, bytesPerPixel, filtered, sums);
    for (size_t filter = 0; filter < kPngFilters; ++filter)
        costs[filter] += hn::GetLane(hn::SumOfLanes(words, sums[filter]));
    return at;
}

void FilterRow(const uint8_t* row, const uint8_t* above, size_t bytes, size_t bytesPerPixel,
               uint8_t* const (&filtered)[kPngFilters], uint64_t (&costs)[kPngFilters])
{
    const hn::ScalableTag<uint8_t> wide;
    const size_t done = FilterRun(wide, 0, row, above, bytes, bytesPerPixel, filtered, costs);
    if (done == bytes)
        return;
    // The rest of the row once more through a vector, between borders of its own.
    constexpr size_t kMaxPixelBytes = 4;
    constexpr size_t kMaxLanes = HWY_MAX_BYTES;
    uint8_t rowEnd[kMaxPixelBytes + kMaxLanes] = {};
    uint8_t aboveEnd[kMaxPixelBytes + kMaxLanes] = {};
    uint8_t ends[kPngFilters][kMaxLanes] = {};
    uint8_t* const endPointers[kPngFilters] = {ends[0], ends[1], ends[2], ends[3], ends[4]};
    const size_t rest = bytes - done;
    for (size_t at = 0; at < rest + bytesPerPixel; ++at) {
        rowEnd[at] = row[done + at - bytesPerPixel];
        aboveEnd[at] = above[done + at - bytesPerPixel];
    }
    uint64_t ignored[kPngFilters] = {};
    FilterRun(wide, 0, rowEnd + bytesPerPixel, aboveEnd + bytesPerPixel, hn::Lanes(wide), bytesPerPixel,
              endPointers, ignored);
    for (size_t at = 0; at < rest; ++at) {
        for (size_t filter = 0; filter < kPngFilters; ++filter) {
            const uint8_t value = filter == 0 ? row[done + at] : ends[filter][at];
            if (filter > 0)
                filtered[filter][done + at] = value;
            costs[filter] += value < 128 ? value : 256u - value;
        }
    }
}

/// A stored pixel as blue, green, red and whatever follows them.
HWY_INLINE uint32_t LoadPixel(const uint8_t* stored)
{
    uint32_t value = 0;
    std::memcpy(&value, stored, sizeof value);
    return (value & 0xff00ff00) | (value & 0xff) << 16 | (value >> 16 & 0xff);
}

/// Each byte on its own.
HWY_INLINE uint32_t AddBytes(uint32_t a, uint32_t b)
{
    return ((a & 0x7f7f7f7f) + (b & 0x7f7f7f7f)) ^ ((a ^ b) & 0x80808080);
}

HWY_INLINE uint32_t AverageBytes(uint32_t a, uint32_t b)
{
    return (a & b) + ((a ^ b) >> 1 & 0x7f7f7f7f);
}

template <int kChannels, class Prediction>
HWY_INLINE void UnfilterWith(const uint8_t* stored, const uint8_t* above, int width, uint8_t* pixels,
                             const Prediction& predict)
{
    constexpr uint32_t kOpaque = kChannels == 3 ? 0xff000000 : 0;
    uint32_t left = 0;
    for (ptrdiff_t x = 0; x < width; ++x) {
        uint32_t up = 0;
        std::memcpy(&up, above + x * 4, sizeof up);
        left = AddBytes(LoadPixel(stored + x * kChannels), predict(left, up));
        const uint32_t pixel = left | kOpaque;
        std::memcpy(pixels + x * 4, &pixel, sizeof pixel);
    }
}

/// All channels at once where vectors have four bytes, else one after another.
template <int kChannels>
HWY_INLINE void UnfilterPaeth(const uint8_t* stored, const uint8_t* above, int width, uint8_t* pixels)
{
    constexpr uint8_t kOpaque[] = {0, 0, 0, kChannels == 3 ? 255 : 0};
    const hn::CappedTag<uint8_t, 4> d;
    for (size_t channel = 0; channel < 4; channel += hn::Lanes(d)) {
        const auto opaque = hn::LoadU(d, kOpaque + channel);
        auto left = hn::Zero(d);
        auto corner = left;
        for (ptrdiff_t x = 0; x < width; ++x) {
            const uint32_t pixel = LoadPixel(stored + x * kChannels);
            uint8_t bytes[4];
            std::memcpy(bytes, &pixel, sizeof bytes);
            const auto up = hn::LoadU(d, above + x * 4 + channel);
            left = hn::Add(hn::LoadU(d, bytes + channel), PaethPrediction(d, left, up, corner));
            hn::StoreU(hn::Or(left, opaque), d, pixels + x * 4 + channel);
            corner = up;
        }
    }
}

template <int kChannels>
void UnfilterChannels(PngFilter filter, const uint8_t* stored, const uint8_t* above, int width,
                      uint8_t* pixels)
{
    switch (filter) {
    case PngFilter::None:
        return UnfilterWith<kChannels>(stored, above, width, pixels, [](uint32_t, uint32_t) { return 0u; });
    case PngFilter::Sub:
        return UnfilterWith<kChannels>(stored, above, width, pixels,
                                       [](uint32_t left, uint32_t) { return left; });
    case PngFilter::Up:
        return UnfilterWith<kChannels>(stored, above, width, pixels,
                                       [](uint32_t, uint32_t up) { return up; });
    case PngFilter::Average:
        return UnfilterWith<kChannels>(stored, above, width, pixels, AverageBytes);
    case PngFilter::Paeth:
        return UnfilterPaeth<kChannels>(stored, above, width, pixels);
    }
}

void UnfilterRow(PngFilter filter, const uint8_t* stored, const uint8_t* above, int width, int channels,
                 uint8_t* pixels)
{
    if (channels == 3)
        UnfilterChannels<3>(filter, stored, above, width, pixels);
    else
        UnfilterChannels<4>(filter, stored, above, width, pixels);
}

} // namespace codec::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace codec {
HWY_EXPORT(PackRow);
HWY_EXPORT(FilterRow);
HWY_EXPORT(UnfilterRow);
} // namespace codec

void PackPngRow(const uint8_t* pixels, int width, int channels, uint8_t* packed)
{
    using namespace codec;
    HWY_DYNAMIC_DISPATCH(PackRow)(pixels, width, channels, packed);
}

void FilterPngRow(const uint8_t* row, const uint8_t* above, size_t bytes, size_t bytesPerPixel,
                  uint8_t* const (&filtered)[kPngFilters], uint64_t (&costs)[kPngFilters])
{
    using namespace codec;
    HWY_DYNAMIC_DISPATCH(FilterRow)(row, above, bytes, bytesPerPixel, filtered, costs);
}

void UnfilterPngRow(PngFilter filter, const uint8_t* stored, const uint8_t* above, int width, int channels,
                    uint8_t* pixels)
{
    using namespace codec;
    HWY_DYNAMIC_DISPATCH(UnfilterRow)(filter, stored, above, width, channels, pixels);
}
#endif
