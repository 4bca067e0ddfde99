// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/transform/HalvePicture.h"

#include "platform/parallel/PictureBands.h"

#include <algorithm>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "platform/transform/HalvePicture.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "platform/parallel/FillRow-inl.h"

HWY_BEFORE_NAMESPACE();
namespace {
namespace HWY_NAMESPACE {

/// Pixels that are made aside before they are stored.
constexpr size_t kTilePixels = 256;

/// One pixel from two of each row.
void HalvePixel(const uint8_t* upper, const uint8_t* lower, uint8_t* half)
{
    const int alpha = upper[3] + upper[7] + lower[3] + lower[7];
    for (int channel = 0; channel < 3; ++channel) {
        const int sum = upper[channel] * upper[3] + upper[channel + 4] * upper[7] +
                        lower[channel] * lower[3] + lower[channel + 4] * lower[7];
        const float level = static_cast<float>(sum) * (1 / static_cast<float>(alpha));
        half[channel] = alpha < 2 ? uint8_t{0} : static_cast<uint8_t>(level + 0.5f);
    }
    half[3] = static_cast<uint8_t>((alpha + 2) / 4);
}

// Elsewhere the pairwise products of the vector library come in another order.
#if HWY_ARCH_X86 && HWY_TARGET != HWY_SCALAR

using Bytes = hn::ScalableTag<uint8_t>;

/// Two pixels from each 128-bit block of two rows, in the block's lower half.
HWY_INLINE hn::Vec<Bytes> HalveBlocks(const uint8_t* HWY_RESTRICT upper, const uint8_t* HWY_RESTRICT lower)
{
    const Bytes bytes;
    const hn::Repartition<int16_t, Bytes> shorts;
    const hn::Repartition<int32_t, Bytes> integers;
    const hn::Repartition<uint64_t, Bytes> pairs;
    const hn::Repartition<float, Bytes> floats;
    constexpr uint8_t o = 128; // a zero byte
    alignas(16) static constexpr uint8_t kBlueGreen[16] = {0, o, 4, o, 1, o, 5, o, 8, o, 12, o, 9, o, 13, o};
    alignas(16) static constexpr uint8_t kRedAlpha[16] = {2, o, 6, o, 3, o, 7, o, 10, o, 14, o, 11, o, 15, o};
    alignas(16) static constexpr uint8_t kAlphas[16] = {3, o, 7, o, 3, o, 7, o, 11, o, 15, o, 11, o, 15, o};
    alignas(16) static constexpr uint8_t kLowBytes[16] = {0, 4, 8, 12, o, o, o, o, o, o, o, o, o, o, o, o};
    alignas(16) static constexpr uint8_t kLowBytesBehind[16] = {o, o, o, o, 0, 4, 8, 12,
                                                                o, o, o, o, o, o, o, o};
    const auto lanes = hn::Iota(integers, 0);
    const auto isOdd = hn::Eq(hn::And(lanes, hn::Set(integers, 1)), hn::Set(integers, 1));
    const auto isLast = hn::Eq(hn::And(lanes, hn::Set(integers, 3)), hn::Set(integers, 3));

    auto blueGreen = hn::Zero(integers);
    auto redAlpha = hn::Zero(integers);
    auto unused = hn::Zero(integers);
    for (const uint8_t* row : {upper, lower}) {
        const auto pixels = hn::LoadU(bytes, row);
        const auto pick = [&](const uint8_t* places) {
            return hn::BitCast(shorts, hn::TableLookupBytesOr0(pixels, hn::LoadDup128(bytes, places)));
        };
        const auto alphas = pick(kAlphas);
        const auto alphasAndOnes = hn::BitCast(
            shorts, hn::IfThenElse(isOdd, hn::Set(integers, 0x00010001), hn::BitCast(integers, alphas)));
        blueGreen = hn::ReorderWidenMulAccumulate(integers, pick(kBlueGreen), alphas, blueGreen, unused);
        redAlpha = hn::ReorderWidenMulAccumulate(integers, pick(kRedAlpha), alphasAndOnes, redAlpha, unused);
    }
    // One division for all: the lanes of red are of no use here. An alpha that comes out as 0 clears the
    // rest.
    const auto alphas = hn::ConvertTo(floats, redAlpha);
    const auto inverse =
        hn::IfThenElseZero(hn::Ge(alphas, hn::Set(floats, 2.0f)), hn::Div(hn::Set(floats, 1.0f), alphas));
    const auto level = [&](auto sums, auto inverses) {
        const auto factor = hn::IfThenElse(hn::RebindMask(floats, isLast), hn::Set(floats, 0.25f), inverses);
        const auto value = hn::Mul(hn::ConvertTo(floats, hn::BitCast(integers, sums)), factor);
        return hn::BitCast(bytes, hn::ConvertTo(integers, hn::Add(value, hn::Set(floats, 0.5f))));
    };
    const auto blueGreenPairs = hn::BitCast(pairs, blueGreen);
    const auto redAlphaPairs = hn::BitCast(pairs, redAlpha);
    const auto first =
        level(hn::InterleaveLower(pairs, blueGreenPairs, redAlphaPairs), hn::Broadcast<1>(inverse));
    const auto second =
        level(hn::InterleaveUpper(pairs, blueGreenPairs, redAlphaPairs), hn::Broadcast<3>(inverse));
    return hn::Or(hn::TableLookupBytesOr0(first, hn::LoadDup128(bytes, kLowBytes)),
                  hn::TableLookupBytesOr0(second, hn::LoadDup128(bytes, kLowBytesBehind)));
}

/// How many of the pixels were made.
size_t HalveVectors(const uint8_t* upper, const uint8_t* lower, size_t pixels, uint8_t* half)
{
    const Bytes bytes;
    const hn::Repartition<uint64_t, Bytes> pairs;
    const size_t lanes = hn::Lanes(bytes);
    size_t at = 0;
    for (; at + lanes <= pixels * 4; at += lanes) {
        const auto first = hn::BitCast(pairs, HalveBlocks(upper + at * 2, lower + at * 2));
        const auto second = hn::BitCast(pairs, HalveBlocks(upper + at * 2 + lanes, lower + at * 2 + lanes));
        hn::StoreU(hn::BitCast(bytes, hn::ConcatEven(pairs, second, first)), bytes, half + at);
    }
    return at / 4;
}

#else

size_t HalveVectors(const uint8_t* /*upper*/, const uint8_t* /*lower*/, size_t /*pixels*/, uint8_t* /*half*/)
{
    return 0;
}

#endif

void HalveRow(const uint8_t* upper, const uint8_t* lower, const ResultRow& half)
{
    HWY_ALIGN uint32_t tile[kTilePixels];
    auto* const bytes = reinterpret_cast<uint8_t*>(tile);
    for (size_t first = 0; first < half.count; first += kTilePixels) {
        const size_t pixels = std::min(kTilePixels, half.count - first);
        for (size_t x = HalveVectors(upper, lower, pixels, bytes); x < pixels; ++x)
            HalvePixel(upper + x * 8, lower + x * 8, bytes + x * 4);
        StorePixels(tile, half, first, pixels);
        upper += kTilePixels * 8;
        lower += kTilePixels * 8;
    }
}

} // namespace HWY_NAMESPACE
} // namespace
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

namespace {
HWY_EXPORT(HalveRow);
constexpr int kPixelsPerMicrosecond = 400;
} // namespace

CPackedDib HalvePicture(const CPackedDib& dib)
{
    const Size size{dib.Width() / 2, dib.Height() / 2};
    const auto halveRow = HWY_DYNAMIC_DISPATCH(HalveRow);
    return MakePictureRows(size, kPixelsPerMicrosecond, [&](const ResultRow& half) {
        halveRow(dib.Row(2 * half.y), dib.Row(2 * half.y + 1), half);
    });
}

#endif
