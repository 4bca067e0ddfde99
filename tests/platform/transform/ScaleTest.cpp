// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/transform/Scale.h"

#include "support/KernelSupport.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace reference {

struct Weight {
    int at;
    float weight;
};

std::vector<Weight> WeightsOf(int index, int source, int target)
{
    std::vector<Weight> weights;
    if (source >= target) {
        const int64_t begin = int64_t{index} * source;
        for (int at = 0; at < source; ++at) {
            const int64_t share = std::min<int64_t>(begin + source, (at + int64_t{1}) * target) -
                                  std::max<int64_t>(begin, int64_t{at} * target);
            if (share > 0)
                weights.push_back({at, static_cast<float>(static_cast<double>(share) / source)});
        }
        return weights;
    }
    const double middle = (index + 0.5) * source / target - 0.5;
    std::vector<double> cubic(static_cast<size_t>(source));
    for (int at = static_cast<int>(std::floor(middle)) - 1, end = at + 4; at < end; ++at) {
        const double x = std::abs(middle - at);
        cubic[static_cast<size_t>(std::clamp(at, 0, source - 1))] +=
            x < 1 ? (1.5 * x - 2.5) * x * x + 1 : ((-0.5 * x + 2.5) * x - 4) * x + 2;
    }
    for (int at = 0; at < source; ++at) {
        if (std::abs(at - middle) <= 3)
            weights.push_back({at, static_cast<float>(cubic[static_cast<size_t>(at)])});
    }
    return weights;
}

CPackedDib Scale(const CPackedDib& dib, int width, int height)
{
    CPackedDib scaled = CPackedDib::Create(width, height, 32);
    std::vector<float> sums(static_cast<size_t>(dib.Width()) * 4);
    for (int y = 0; y < height; ++y) {
        std::ranges::fill(sums, 0.0f);
        for (const Weight& row : WeightsOf(y, dib.Height(), height)) {
            for (size_t at = 0; at < sums.size(); ++at) {
                const float alpha = at % 4 == 3 ? 1.0f : dib.Row(row.at)[at / 4 * 4 + 3];
                sums[at] += dib.Row(row.at)[at] * alpha * row.weight;
            }
        }
        for (int x = 0; x < width; ++x) {
            float sum[4] = {};
            for (const Weight& column : WeightsOf(x, dib.Width(), width)) {
                for (size_t c = 0; c < 4; ++c)
                    sum[c] += sums[static_cast<size_t>(column.at) * 4 + c] * column.weight;
            }
            for (size_t c = 0; c < 4 && sum[3] >= 0.5f; ++c) {
                const float value = c == 3 ? sum[3] : sum[c] * (1 / sum[3]);
                scaled.Row(y)[ptrdiff_t{x} * 4 + static_cast<ptrdiff_t>(c)] =
                    static_cast<uint8_t>(std::clamp(value, 0.0f, 255.0f) + 0.5f);
            }
        }
    }
    return scaled;
}

} // namespace reference

namespace {

TEST(Scale, EqualsReference)
{
    struct Row {
        const char* name;
        Size from, to;
    };
    constexpr Row kRows[] = {{"half", {70, 34}, {35, 17}},        {"wide half", {388, 8}, {194, 4}},
                             {"down", {61, 47}, {27, 19}},        {"up", {13, 9}, {40, 31}},
                             {"mixed", {13, 40}, {29, 11}},       {"mixed the other way", {40, 13}, {11, 29}},
                             {"one pixel up", {1, 1}, {5, 3}},    {"to one pixel", {33, 21}, {1, 1}},
                             {"a row up", {2, 1}, {9, 1}},        {"only the width", {30, 20}, {17, 20}},
                             {"bands", {301, 1200}, {150, 700}},  {"half in bands", {600, 1400}, {300, 700}},
                             {"barely up", {100, 50}, {131, 70}}, {"up in bands", {301, 500}, {523, 1201}}};
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.name);
        CPackedDib picture = RandomDib(row.from.width, row.from.height, 21);
        // A corner of clear pixels, whose colours must not show.
        for (int y = 0; y < row.from.height / 2; ++y) {
            for (int x = 0; x < row.from.width / 2; ++x)
                picture.Row(y)[ptrdiff_t{x} * 4 + 3] = 0;
        }
        ExpectEverywhere([&](const CPackedDib& dib) { return Scale(dib, row.to.width, row.to.height); },
                         picture, reference::Scale(picture, row.to.width, row.to.height));
    }
}

TEST(Scale, KeepsUniformPicturesAndWeighsColoursByAlpha)
{
    for (const uint32_t pixel : {0xFFFFFFFFu, 0x01FE8003u, 0x80FF0102u}) {
        const CPackedDib uniform = UniformDib(24, 18, pixel);
        for (const Size to : {Size{12, 9}, {7, 5}, {24, 18}, {50, 47}, {11, 40}})
            EXPECT_TRUE(
                SameBytes(Scale(uniform, to.width, to.height), UniformDib(to.width, to.height, pixel)));
    }
    const CPackedDib edge = DibOf(2, 2, {0xFF102030, 0x00FFFFFF, 0xFF102030, 0x00FFFFFF});
    EXPECT_TRUE(SameBytes(Scale(edge, 1, 1), DibOf(1, 1, {0x80102030})));
    EXPECT_TRUE(SameBytes(Scale(UniformDib(3, 3, 0x00FFFFFF), 2, 2), CPackedDib::Create(2, 2, 32)));
}

TEST(Scale, EmptyWhenItCannotBeHeld)
{
    for (const Size to : {Size{61, 47}, {30, 20}, {70, 90}, {122, 94}})
        ExpectEmptyWhenMemoryRunsOut([to](const CPackedDib& dib) { return Scale(dib, to.width, to.height); });
    ExpectEmptyWhenMemoryRunsOut(
        [](const CPackedDib& dib) { return Scale(dib, dib.IsEmpty() ? 1 : 31, 23); });
    const CPackedDib picture = RandomDib(2, 2, 1);
    for (const Size to : {Size{0, 5}, {5, -1}, {1 << 20, 1 << 20}})
        EXPECT_TRUE(Scale(picture, to.width, to.height).IsEmpty());
}

} // namespace
