// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/video/YuvPicture.h"

#include "platform/parallel/PictureBands.h"
#include "platform/parallel/RowBands.h"

#include <algorithm>
#include <vector>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "platform/video/YuvPicture.cpp"
#include <hwy/foreach_target.h>
// After foreach_target.h.
#include <hwy/highway.h>

#ifndef PIXOLUNE_YUV_WEIGHTS
#define PIXOLUNE_YUV_WEIGHTS
namespace {

/// Of one step of a sample, in 1/32 of a step of colour and 1/256 of that.
constexpr double kWeightUnit = 32 * 256;

struct YuvWeights {
    int16_t luma = 0;
    int16_t redFromV = 0;
    int16_t greenFromU = 0;
    int16_t greenFromV = 0;
    int16_t blueFromU = 0;
    int16_t offset = 0; ///< in 1/32: rounds, and takes away the luma of black
};

/// From the shares of red and blue in luma, 0.299 and 0.114.
constexpr YuvWeights WeightsOf(SampleRange range)
{
    constexpr double kRed = 0.299;
    constexpr double kBlue = 0.114;
    constexpr double kGreen = 1 - kRed - kBlue;
    const double luma = range == SampleRange::Video ? 255.0 / 219 : 1;
    const double chroma = range == SampleRange::Video ? 255.0 / 224 : 1;
    const auto weight = [](double value) { return static_cast<int16_t>(value * kWeightUnit + 0.5); };
    const double black = range == SampleRange::Video ? 16 * luma : 0;
    // Half a step, and what cutting off two products loses on average.
    constexpr double kRounding = 16 + 1;
    return {weight(luma),
            weight(2 * (1 - kRed) * chroma),
            weight(2 * (1 - kBlue) * kBlue / kGreen * chroma),
            weight(2 * (1 - kRed) * kRed / kGreen * chroma),
            weight(2 * (1 - kBlue) * chroma),
            static_cast<int16_t>(kRounding - black * 32)};
}

/// What a row of pixels is made of.
struct YuvRow {
    const uint8_t* luma = nullptr; ///< two samples for each pair of pixels
    /// Of the chroma of each pair of pixels, four times its value; those beside the row are there as well.
    const int16_t* u = nullptr;
    const int16_t* v = nullptr;
};

} // namespace
#endif

HWY_BEFORE_NAMESPACE();
namespace {
namespace HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

/// Blends a row of chroma samples with the one that is farther away.
void SumChroma(const uint8_t* HWY_RESTRICT near, const uint8_t* HWY_RESTRICT far, size_t count,
               int16_t* HWY_RESTRICT sums)
{
    for (size_t i = 0; i < count; ++i)
        sums[i] = static_cast<int16_t>(3 * near[i] + far[i]);
}

/// The chroma between a pair of pixels and one beside it, nearer to the former: 256 times its value, 0 for
/// grey.
template <class D> HWY_INLINE hn::Vec<D> ChromaBeside(D d, const int16_t* here, const int16_t* beside)
{
    const auto sum = hn::LoadU(d, here);
    const auto sixteenfold = hn::Add(hn::Add(sum, hn::Add(sum, sum)), hn::LoadU(d, beside));
    return hn::ShiftLeft<4>(hn::Sub(sixteenfold, hn::Set(d, 16 * 128)));
}

/// Pixels from 256 times their samples, as pairs of bytes: blue and green, red and alpha.
template <class D>
HWY_INLINE void ConvertSamples(D d, const YuvWeights& weights, hn::VFromD<hn::RebindToUnsigned<D>> luma,
                               hn::Vec<D> u, hn::Vec<D> v, hn::VFromD<hn::RebindToUnsigned<D>>& blueGreen,
                               hn::VFromD<hn::RebindToUnsigned<D>>& redAlpha)
{
    const hn::RebindToUnsigned<D> words;
    const auto byteOf = [&](hn::Vec<D> sum) HWY_ATTR {
        const auto value = hn::ShiftRight<5>(sum);
        return hn::BitCast(words, hn::Min(hn::Max(value, hn::Zero(d)), hn::Set(d, 255)));
    };
    const auto product = [&](hn::Vec<D> samples, int16_t weight)
                             HWY_ATTR { return hn::MulHigh(samples, hn::Set(d, weight)); };
    const auto scaled = hn::MulHigh(luma, hn::Set(words, static_cast<uint16_t>(weights.luma)));
    const auto grey = hn::Add(hn::BitCast(d, scaled), hn::Set(d, weights.offset));
    const auto red = byteOf(hn::Add(grey, product(v, weights.redFromV)));
    const auto green =
        byteOf(hn::Sub(hn::Sub(grey, product(u, weights.greenFromU)), product(v, weights.greenFromV)));
    const auto blue = byteOf(hn::Add(grey, product(u, weights.blueFromU)));
    blueGreen = hn::Or(blue, hn::ShiftLeft<8>(green));
    redAlpha = hn::Or(red, hn::Set(words, 0xFF00));
}

/// The pairs of pixels from `at` on, as many as `d` has lanes.
template <class D>
HWY_INLINE void ConvertPairs(D d, const YuvWeights& weights, const YuvRow& row, size_t at,
                             uint32_t* HWY_RESTRICT pixels)
{
    const hn::RebindToUnsigned<D> words;
    // Two samples a word.
    const auto luma = hn::LoadU(words, reinterpret_cast<const uint16_t*>(row.luma + 2 * at));
    const int16_t* const u = row.u + at;
    const int16_t* const v = row.v + at;
    auto leftBlueGreen = hn::Zero(words);
    auto leftRedAlpha = leftBlueGreen;
    auto rightBlueGreen = leftBlueGreen;
    auto rightRedAlpha = leftBlueGreen;
    ConvertSamples(d, weights, hn::ShiftLeft<8>(luma), ChromaBeside(d, u, u - 1), ChromaBeside(d, v, v - 1),
                   leftBlueGreen, leftRedAlpha);
    ConvertSamples(d, weights, hn::And(luma, hn::Set(words, 0xFF00)), ChromaBeside(d, u, u + 1),
                   ChromaBeside(d, v, v + 1), rightBlueGreen, rightRedAlpha);
    hn::StoreInterleaved4(leftBlueGreen, leftRedAlpha, rightBlueGreen, rightRedAlpha, words,
                          reinterpret_cast<uint16_t*>(pixels + 2 * at));
}

void ConvertRow(const YuvWeights& weights, const YuvRow& row, size_t pairs, uint32_t* HWY_RESTRICT pixels)
{
    const hn::ScalableTag<int16_t> many;
    const hn::CappedTag<int16_t, 1> single;
    size_t at = 0;
    for (; at + hn::Lanes(many) <= pairs; at += hn::Lanes(many))
        ConvertPairs(many, weights, row, at, pixels);
    for (; at < pairs; ++at)
        ConvertPairs(single, weights, row, at, pixels);
}

} // namespace HWY_NAMESPACE
} // namespace
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

namespace {

HWY_EXPORT(SumChroma);
HWY_EXPORT(ConvertRow);

constexpr int kPixelsPerMicrosecond = 1000;

/// Blends the rows of a chroma plane for one row of pixels after the other.
class CChromaRow {
public:
    CChromaRow(const YuvPicture& picture, size_t plane)
        : m_picture(picture), m_plane(plane), m_count((static_cast<size_t>(picture.size.width) + 1) / 2),
          m_sums(m_count + 2)
    {
    }

    /// Of each pair of pixels of row y; one more before the first and behind the last.
    const int16_t* Sums(int y)
    {
        const bool isHalved = m_picture.chromaRows == ChromaRows::Halved;
        const int near = isHalved ? y / 2 : y;
        const int lastRow = isHalved ? (m_picture.size.height - 1) / 2 : y;
        const int far = std::clamp(near + (y % 2 == 0 ? -1 : 1), isHalved ? 0 : y, lastRow);
        HWY_DYNAMIC_DISPATCH(SumChroma)(Samples(near), Samples(far), m_count, m_sums.data() + 1);
        m_sums.front() = m_sums[1];
        m_sums.back() = m_sums[m_count];
        return m_sums.data() + 1;
    }

private:
    [[nodiscard]] const uint8_t* Samples(int row) const
    {
        return m_picture.planes[m_plane] + row * m_picture.strides[m_plane];
    }

    const YuvPicture& m_picture;
    size_t m_plane;
    size_t m_count;
    std::vector<int16_t> m_sums;
};

} // namespace

CPackedDib DibFromYuv(const YuvPicture& picture)
{
    const YuvWeights weights = WeightsOf(picture.range);
    const auto convertRow = HWY_DYNAMIC_DISPATCH(ConvertRow);
    const auto width = static_cast<size_t>(picture.size.width);
    const auto write = [&](CPackedDib& dib, int begin, int end) {
        CChromaRow u(picture, 1);
        CChromaRow v(picture, 2);
        for (int y = end - 1; y >= begin; --y) {
            const uint8_t* const luma = picture.planes[0] + y * picture.strides[0];
            const YuvRow row{luma, u.Sums(y), v.Sums(y)};
            uint32_t* const pixels = PixelRow(dib, y);
            convertRow(weights, row, width / 2, pixels);
            if (width % 2 != 0) {
                alignas(uint16_t) const uint8_t last[2] = {luma[width - 1], luma[width - 1]};
                uint32_t pair[2] = {};
                convertRow(weights, {last, row.u + width / 2, row.v + width / 2}, 1, pair);
                pixels[width - 1] = pair[0];
            }
        }
        return true;
    };
    return MakePictureInBands(picture.size, BandRows(picture.size.width, kPixelsPerMicrosecond), write);
}

#endif
