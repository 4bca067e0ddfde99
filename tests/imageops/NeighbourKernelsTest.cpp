// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageops/EmbossDib.h"
#include "support/KernelSupport.h"
#include "imageops/MirrorDib.h"
#include "imageops/SharpenDib.h"
#include "imageops/SunspotDib.h"

#include <algorithm>
#include <cmath>

namespace reference {

template <typename Make> CPackedDib MakePixels(const CPackedDib& dib, Make make)
{
    CPackedDib result = dib.Duplicate();
    for (int y = 0; y < dib.Height(); ++y) {
        for (int x = 0; x < dib.Width(); ++x)
            make(result.Row(y) + ptrdiff_t{x} * 4, x, y);
    }
    return result;
}

const uint8_t* ClampedPixel(const CPackedDib& dib, int x, int y)
{
    return dib.Row(std::clamp(y, 0, dib.Height() - 1)) + ptrdiff_t{std::clamp(x, 0, dib.Width() - 1)} * 4;
}

CPackedDib Mirror(const CPackedDib& dib, bool horizontally)
{
    return MakePixels(dib, [&](uint8_t* pixel, int x, int y) {
        std::copy_n(horizontally ? ClampedPixel(dib, dib.Width() - 1 - x, y)
                                 : ClampedPixel(dib, x, dib.Height() - 1 - y),
                    4, pixel);
    });
}

CPackedDib SharpenDib(const CPackedDib& dib, int sharpness)
{
    const double amount = sharpness / 100;
    return MakePixels(dib, [&](uint8_t* pixel, int x, int y) {
        for (int channel = 0; channel < 4; ++channel) {
            int sum = 0;
            for (int dy = -1; dy <= 1; ++dy) {
                for (int dx = -1; dx <= 1; ++dx)
                    sum += ClampedPixel(dib, x + dx, y + dy)[channel];
            }
            const int here = pixel[channel];
            const double value = here + (here - (sum - here) / 8) * amount;
            pixel[channel] = static_cast<uint8_t>(std::clamp(value, 0.0, 255.0));
        }
    });
}

/// `rightAndUp` is the neighbour's place.
CPackedDib EmbossDib(const CPackedDib& dib, int elevation, int weight, Point rightAndUp)
{
    return MakePixels(dib, [&](uint8_t* pixel, int x, int y) {
        const uint8_t* neighbour = ClampedPixel(dib, x + rightAndUp.x, y - rightAndUp.y);
        const int difference = pixel[2] + pixel[1] + pixel[0] - (neighbour[2] + neighbour[1] + neighbour[0]);
        const double value = difference * 0.3333333333333333 * weight + elevation;
        std::fill_n(pixel, 3, static_cast<uint8_t>(std::clamp(value, 0.0, 255.0)));
    });
}

CPackedDib SunspotDib(const CPackedDib& dib, int horizontalPos, int verticalPos, int brightness)
{
    const int column = (dib.Width() - 1) * horizontalPos / 100;
    const int row = static_cast<int>((1.0 - verticalPos * 0.01) * (dib.Height() - 1));
    const auto square = [=](int x, int y) { return (x - column) * (x - column) + (y - row) * (y - row); };
    const int right = dib.Width() - 1;
    const int bottom = dib.Height() - 1;
    const double farthest =
        std::max({square(0, 0), square(right, 0), square(0, bottom), square(right, bottom)});
    return MakePixels(dib, [&](uint8_t* pixel, int x, int y) {
        const int delta =
            farthest == 0 ? brightness : static_cast<int>((1.0 - square(x, y) / farthest) * brightness);
        for (int channel = 0; channel < 3; ++channel)
            pixel[channel] = static_cast<uint8_t>(std::clamp(pixel[channel] + delta, 0, 255));
    });
}

} // namespace reference

namespace {

using std::placeholders::_1;

TEST(MirrorDib, EqualsReference)
{
    ExpectSameResults(MirrorHorizontally, std::bind(reference::Mirror, _1, true));
    ExpectSameResults(MirrorVertically, std::bind(reference::Mirror, _1, false));
    ExpectEmptyWhenMemoryRunsOut(MirrorHorizontally);
    ExpectEmptyWhenMemoryRunsOut(MirrorVertically);
}

TEST(SharpenDib, EqualsReferenceInAllThreeSteps)
{
    for (const int sharpness : {0, 99, 100, 199, 200, 255})
        ExpectSameResults(std::bind(SharpenDib, _1, sharpness),
                          std::bind(reference::SharpenDib, _1, sharpness));
    // Columns of one tile meet those of the next.
    const CPackedDib wide = RandomDib(1537, 3, 1);
    EXPECT_TRUE(SameBytes(SharpenDib(wide, 200), reference::SharpenDib(wide, 200)));
    ExpectEmptyWhenMemoryRunsOut(std::bind(SharpenDib, _1, 0));
    ExpectEmptyWhenMemoryRunsOut(std::bind(SharpenDib, _1, 100));
}

TEST(EmbossDib, TakesTheNeighbourInTheDirectionOfTheAngle)
{
    struct Row {
        int angle;
        Point rightAndUp;
    };
    // Rounding adds a half and truncates toward zero: steps of a half or more down or left need 1.5.
    constexpr Row kRows[] = {{0, {1, 0}},    {26, {1, 0}},   {27, {1, 1}},   {45, {1, 1}},   {46, {1, 1}},
                             {63, {1, 1}},   {64, {0, 1}},   {90, {0, 1}},   {134, {0, 1}},  {135, {-1, 0}},
                             {180, {-1, 0}}, {206, {-1, 0}}, {207, {-1, 1}}, {224, {-1, 1}}, {225, {1, -1}},
                             {243, {1, -1}}, {244, {0, -1}}, {270, {0, -1}}, {314, {0, -1}}, {315, {1, 0}},
                             {359, {1, 0}},  {360, {1, 0}}};
    const CPackedDib picture = RandomDib(19, 9, 5);
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.angle);
        EXPECT_TRUE(SameBytes(EmbossDib(picture, 128, 1, row.angle),
                              reference::EmbossDib(picture, 128, 1, row.rightAndUp)));
    }
}

TEST(EmbossDib, EqualsReference)
{
    for (const int weight : {0, 1, 3, 7, 15}) {
        for (const int elevation : {0, 128, 255}) {
            ExpectSameResults(std::bind(EmbossDib, _1, elevation, weight, 180),
                              std::bind(reference::EmbossDib, _1, elevation, weight, Point{-1, 0}));
        }
    }
    ExpectEmptyWhenMemoryRunsOut(std::bind(EmbossDib, _1, 128, 1, 45));
}

TEST(SunspotDib, EqualsReference)
{
    struct Row {
        int horizontal, vertical, brightness;
    };
    for (const Row& row : {Row{20, 80, 45}, {0, 0, 255}, {100, 100, 255}, {50, 33, 200}, {7, 93, 0}})
        ExpectSameResults(std::bind(SunspotDib, _1, row.horizontal, row.vertical, row.brightness),
                          std::bind(reference::SunspotDib, _1, row.horizontal, row.vertical, row.brightness));
    ExpectEmptyWhenMemoryRunsOut(std::bind(SunspotDib, _1, 20, 80, 45));
}

} // namespace
