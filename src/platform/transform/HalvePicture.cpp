// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/transform/HalvePicture.h"

#include "platform/memory/Prefetch.h"
#include "platform/parallel/PictureBands.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "platform/transform/HalvePicture.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "platform/parallel/FillRow-inl.h"

HWY_BEFORE_NAMESPACE();
namespace {
namespace HWY_NAMESPACE {

using Single = hn::CappedTag<uint32_t, 1>;

/// One pixel from two of each row.
HWY_INLINE hn::Vec<Single> Halve(Single words, const uint8_t* upper, const uint8_t* lower)
{
    const int alpha = upper[3] + upper[7] + lower[3] + lower[7];
    auto pixel = static_cast<uint32_t>((alpha + 2) / 4);
    for (size_t channel = 3; channel-- > 0;) {
        const int sum = upper[channel] * upper[3] + upper[channel + 4] * upper[7] +
                        lower[channel] * lower[3] + lower[channel + 4] * lower[7];
        const float level = static_cast<float>(sum) * (1 / static_cast<float>(alpha));
        pixel = pixel << 8 | (alpha < 2 ? uint8_t{0} : static_cast<uint8_t>(level + 0.5f));
    }
    return hn::Set(words, pixel);
}

// Elsewhere the pairwise products of the vector library come in another order.
#if HWY_ARCH_X86 && HWY_TARGET != HWY_SCALAR

using Words = hn::ScalableTag<uint32_t>;
using Integers = hn::RebindToSigned<Words>;
using Bytes = hn::Repartition<uint8_t, Words>;
using WordVector = hn::Vec<Words>;
using IntegerVector = hn::Vec<Integers>;

/// Sums over two pixels of each of two rows: blue and green, or red and alpha, of one result pixel after the
/// other. Colours are multiplied by their alpha.
struct Sums {
    IntegerVector blueGreen;
    IntegerVector redAlpha;
};

HWY_INLINE void AddPairs(WordVector pixels, Sums& sums)
{
    const hn::Repartition<int16_t, Words> shorts;
    constexpr uint8_t o = 128; // a zero byte
    alignas(16) static constexpr uint8_t kBlueGreen[16] = {0, o, 4, o, 1, o, 5, o, 8, o, 12, o, 9, o, 13, o};
    alignas(16) static constexpr uint8_t kRedAlpha[16] = {2, o, 6, o, 3, o, 7, o, 10, o, 14, o, 11, o, 15, o};
    alignas(16) static constexpr uint8_t kAlphas[16] = {3, o, 7, o, 3, o, 7, o, 11, o, 15, o, 11, o, 15, o};
    const auto pick = [&](const uint8_t* places) HWY_ATTR {
        const auto bytes = hn::BitCast(Bytes(), pixels);
        return hn::BitCast(shorts, hn::TableLookupBytesOr0(bytes, hn::LoadDup128(Bytes(), places)));
    };
    const auto isOdd =
        hn::Eq(hn::And(hn::Iota(Integers(), 0), hn::Set(Integers(), 1)), hn::Set(Integers(), 1));
    const auto alphas = pick(kAlphas);
    const auto alphasAndOnes = hn::BitCast(
        shorts, hn::IfThenElse(isOdd, hn::Set(Integers(), 0x00010001), hn::BitCast(Integers(), alphas)));
    auto unused = hn::Zero(Integers());
    sums.blueGreen =
        hn::ReorderWidenMulAccumulate(Integers(), pick(kBlueGreen), alphas, sums.blueGreen, unused);
    sums.redAlpha =
        hn::ReorderWidenMulAccumulate(Integers(), pick(kRedAlpha), alphasAndOnes, sums.redAlpha, unused);
}

HWY_INLINE WordVector PixelsOf(const Sums& first, const Sums& second)
{
    const hn::RebindToFloat<Words> floats;
    const auto values = [&](IntegerVector sums) HWY_ATTR { return hn::ConvertTo(floats, sums); };
    const auto alpha = hn::ConcatOdd(Integers(), second.redAlpha, first.redAlpha);
    const auto inverse = hn::Div(hn::Set(floats, 1.0f), values(alpha));
    const auto level = [&](IntegerVector sums) HWY_ATTR {
        const auto value = hn::Add(hn::Mul(values(sums), inverse), hn::Set(floats, 0.5f));
        return hn::BitCast(Words(), hn::ConvertTo(Integers(), value));
    };
    const auto blue = level(hn::ConcatEven(Integers(), second.blueGreen, first.blueGreen));
    const auto green = level(hn::ConcatOdd(Integers(), second.blueGreen, first.blueGreen));
    const auto red = level(hn::ConcatEven(Integers(), second.redAlpha, first.redAlpha));
    const auto alphaLevel = hn::ShiftRight<2>(hn::BitCast(Words(), hn::Add(alpha, hn::Set(Integers(), 2))));
    const auto pixels = hn::Or(hn::Or(blue, hn::ShiftLeft<8>(green)),
                               hn::Or(hn::ShiftLeft<16>(red), hn::ShiftLeft<24>(alphaLevel)));
    const auto isClear = hn::Lt(alpha, hn::Set(Integers(), 2));
    return hn::IfThenZeroElse(hn::RebindMask(Words(), isClear), pixels);
}

/// Where all is opaque the quotients are those of the plain sums by 4, rounded half up. The results are the
/// lower halves of the 64-bit lanes.
HWY_INLINE WordVector AverageOpaque(WordVector upper, WordVector lower)
{
    const hn::Repartition<uint16_t, Words> shorts;
    const hn::Repartition<uint64_t, Words> pairs;
    const auto even = [&](WordVector pixels) HWY_ATTR {
        return hn::And(hn::BitCast(shorts, pixels), hn::Set(shorts, uint16_t{0xFF}));
    };
    const auto odd = [&](WordVector pixels)
                         HWY_ATTR { return hn::ShiftRight<8>(hn::BitCast(shorts, pixels)); };
    const auto average = [&](auto sums) HWY_ATTR {
        const auto right = hn::BitCast(shorts, hn::ShiftRight<32>(hn::BitCast(pairs, sums)));
        return hn::ShiftRight<2>(hn::Add(hn::Add(sums, right), hn::Set(shorts, uint16_t{2})));
    };
    const auto blueAndRed = average(hn::Add(even(upper), even(lower)));
    const auto greenAndAlpha = average(hn::Add(odd(upper), odd(lower)));
    return hn::BitCast(Words(), hn::Or(blueAndRed, hn::ShiftLeft<8>(greenAndAlpha)));
}

HWY_INLINE WordVector Halve(Words words, const uint8_t* HWY_RESTRICT upper, const uint8_t* HWY_RESTRICT lower)
{
    const size_t lanes = hn::Lanes(words);
    PrefetchBehind(upper, lanes * 8);
    PrefetchBehind(lower, lanes * 8);
    const auto load = [&](const uint8_t* row, size_t at)
                          HWY_ATTR { return hn::LoadU(words, reinterpret_cast<const uint32_t*>(row) + at); };
    const auto firstUpper = load(upper, 0);
    const auto firstLower = load(lower, 0);
    const auto secondUpper = load(upper, lanes);
    const auto secondLower = load(lower, lanes);
    const auto opaque = hn::Set(words, 0xFF000000u);
    const auto common = hn::And(hn::And(firstUpper, firstLower), hn::And(secondUpper, secondLower));
    if (hn::AllTrue(words, hn::Eq(hn::And(common, opaque), opaque))) {
        return hn::ConcatEven(words, AverageOpaque(secondUpper, secondLower),
                              AverageOpaque(firstUpper, firstLower));
    }
    Sums first{hn::Zero(Integers()), hn::Zero(Integers())};
    Sums second = first;
    AddPairs(firstUpper, first);
    AddPairs(firstLower, first);
    AddPairs(secondUpper, second);
    AddPairs(secondLower, second);
    return PixelsOf(first, second);
}

#else

using Words = Single;

#endif

void HalveRow(const uint8_t* upper, const uint8_t* lower, const ResultRow& half)
{
    FillRow(Words(), half,
            [&](auto words, size_t x) HWY_ATTR { return Halve(words, upper + x * 8, lower + x * 8); });
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
