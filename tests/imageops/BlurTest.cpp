// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageops/BoxBlur.h"
#include "imageops/GaussianBlur.h"
#include "support/KernelSupport.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace reference {

int WindowSide(const CPackedDib& dib, int size)
{
    const int side = std::min({size, dib.Width(), dib.Height()});
    return side % 2 == 0 ? side - 1 : side;
}

CPackedDib BoxBlur(const CPackedDib& dib, int size)
{
    const int side = WindowSide(dib, size);
    const int reach = side / 2;
    CPackedDib blurred = dib.Duplicate();
    // Down the columns first, which gives the same sums sooner.
    std::vector<int> columns(static_cast<size_t>(dib.Width()) * 4);
    for (int y = 0; y < dib.Height(); ++y) {
        std::ranges::fill(columns, 0);
        for (int dy = -reach; dy <= reach; ++dy) {
            const uint8_t* row = dib.Row(std::clamp(y + dy, 0, dib.Height() - 1));
            for (size_t at = 0; at < columns.size(); ++at)
                columns[at] += row[at];
        }
        for (int at = 0; at < dib.Width() * 4; ++at) {
            int sum = 0;
            for (int dx = -reach; dx <= reach; ++dx) {
                const int x = std::clamp(at / 4 + dx, 0, dib.Width() - 1);
                sum += columns[static_cast<size_t>(x * 4 + at % 4)];
            }
            blurred.Row(y)[at] = static_cast<uint8_t>(sum / (side * side));
        }
    }
    return blurred;
}

/// One pass over values that stand `stride` apart.
double Weigh(const std::vector<double>& weights, const double* middle, int stride, int at, int count)
{
    const int reach = static_cast<int>(weights.size()) / 2;
    double sum = 0;
    double used = 0;
    for (int d = -reach; d <= reach; ++d) {
        if (at + d < 0 || at + d >= count)
            continue;
        sum += middle[ptrdiff_t{d} * stride] * weights[static_cast<size_t>(reach + d)];
        used += weights[static_cast<size_t>(reach + d)];
    }
    return sum / used;
}

CPackedDib GaussianBlur(const CPackedDib& dib, int size)
{
    const int reach = std::max(1, (WindowSide(dib, size) - 1) / 2);
    const double sigma = reach * 0.3333333333333333;
    const double c = 0.5 / (sigma * sigma);
    std::vector<double> weights;
    double sum = 0;
    for (int d = -reach; d <= reach; ++d) {
        weights.push_back(std::exp(-d * d * c));
        sum += weights.back();
    }
    for (double& weight : weights)
        weight /= sum;
    const int values = dib.Width() * 4;
    std::vector<double> plane;
    for (int y = 0; y < dib.Height(); ++y) {
        const std::vector<double> row(dib.Row(y), dib.Row(y) + values);
        for (int at = 0; at < values; ++at)
            plane.push_back(Weigh(weights, row.data() + at, 4, at / 4, dib.Width()));
    }
    CPackedDib blurred = dib.Duplicate();
    for (int y = 0; y < dib.Height(); ++y) {
        for (int at = 0; at < values; ++at) {
            const double* middle = plane.data() + ptrdiff_t{y} * values + at;
            const double value = Weigh(weights, middle, values, y, dib.Height()) + 1e-6;
            blurred.Row(y)[at] = static_cast<uint8_t>(value);
        }
    }
    return blurred;
}

} // namespace reference

namespace {

using Blur = CPackedDib (*)(const CPackedDib&, int);

constexpr int kSizes[] = {1, 2, 3, 4, 7, 24, 49, 50};

void ExpectSameBlurs(Blur fast, Blur plain)
{
    for (const int size : kSizes) {
        SCOPED_TRACE(size);
        // Columns and rows of one strip or group meet those of the next; the window exceeds the picture.
        for (const Size picture :
             {Size{1, 1}, {1, 9}, {9, 1}, {2, 7}, {7, 2}, {40, 61}, {131, 53}, {1029, 70}}) {
            SCOPED_TRACE(std::to_string(picture.width) + " x " + std::to_string(picture.height));
            const CPackedDib dib = RandomDib(picture.width, picture.height, 11);
            ExpectEverywhere(std::bind(fast, std::placeholders::_1, size), dib, plain(dib, size));
        }
    }
    // Bands of rows meet.
    const CPackedDib tall = RandomDib(300, 1501, 12);
    EXPECT_TRUE(SameBytes(fast(tall, 9), plain(tall, 9)));
}

TEST(BoxBlur, EqualsReference)
{
    ExpectSameBlurs(BoxBlur, reference::BoxBlur);
}

TEST(GaussianBlur, EqualsReference)
{
    ExpectSameBlurs(GaussianBlur, reference::GaussianBlur);
}

/// The middles of these, blurred with five taps, come out as 73 and as barely less than 175; with products
/// that are not rounded before they are added it would be the other way round.
TEST(GaussianBlur, RoundsLikeTheReferenceNextToWholeNumbers)
{
    constexpr uint8_t kPictures[][25] = {{59, 232, 121, 254, 239, 255, 180, 11,  35,  252, 124, 11, 146,
                                          3,  227, 254, 30,  36,  1,   231, 195, 255, 43,  47,  223},
                                         {95,  138, 161, 92,  130, 222, 159, 252, 244, 68,  234, 235, 99,
                                          255, 255, 201, 125, 241, 8,   126, 100, 215, 233, 176, 52}};
    for (const auto& picture : kPictures) {
        CPackedDib dib = CPackedDib::Create(5, 5, 32);
        for (int at = 0; at < 25; ++at)
            std::fill_n(dib.Row(at / 5) + ptrdiff_t{at % 5} * 4, 4, picture[at]);
        ExpectEverywhere(std::bind(GaussianBlur, std::placeholders::_1, 5), dib,
                         reference::GaussianBlur(dib, 5));
    }
}

TEST(Blurs, LeaveUniformPicturesUniform)
{
    for (uint32_t level = 0; level < 256; level += 15) {
        const CPackedDib uniform = UniformDib(90, 75, level * 0x01010101u ^ 0x00FF00FFu);
        for (const int size : kSizes) {
            EXPECT_TRUE(SameBytes(BoxBlur(uniform, size), uniform)) << level << " at " << size;
            EXPECT_TRUE(SameBytes(GaussianBlur(uniform, size), uniform)) << level << " at " << size;
        }
    }
}

TEST(Blurs, EmptyWhenMemoryRunsOut)
{
    for (const int size : {1, 9}) {
        ExpectEmptyWhenMemoryRunsOut([size](const CPackedDib& dib) { return BoxBlur(dib, size); });
        ExpectEmptyWhenMemoryRunsOut([size](const CPackedDib& dib) { return GaussianBlur(dib, size); });
    }
}

} // namespace
