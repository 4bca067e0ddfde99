// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/video/YuvPicture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

namespace {

/// The sample of a plane of chroma at a pixel, in real numbers.
double ChromaAt(const YuvPicture& picture, size_t plane, int x, int y)
{
    const bool isHalved = picture.chromaRows == ChromaRows::Halved;
    const int columns = (picture.size.width + 1) / 2;
    const int rows = isHalved ? (picture.size.height + 1) / 2 : picture.size.height;
    const auto sample = [&](int column, int row) -> double {
        const ptrdiff_t offset = std::clamp(row, 0, rows - 1) * picture.strides[plane];
        return picture.planes[plane][offset + std::clamp(column, 0, columns - 1)];
    };
    const auto inRow = [&](int row) {
        return 0.75 * sample(x / 2, row) + 0.25 * sample(x / 2 + (x % 2 == 0 ? -1 : 1), row);
    };
    return isHalved ? 0.75 * inRow(y / 2) + 0.25 * inRow(y / 2 + (y % 2 == 0 ? -1 : 1)) : inRow(y);
}

/// Blue, green and red of a pixel by the formulas of the standard.
std::array<double, 3> ColourAt(const YuvPicture& picture, int x, int y)
{
    const bool isFull = picture.range == SampleRange::Full;
    const double luma =
        (picture.planes[0][x + y * picture.strides[0]] - (isFull ? 0 : 16)) / (isFull ? 255.0 : 219.0);
    const double u = (ChromaAt(picture, 1, x, y) - 128) / (isFull ? 255.0 : 224.0);
    const double v = (ChromaAt(picture, 2, x, y) - 128) / (isFull ? 255.0 : 224.0);
    const double red = luma + 1.402 * v;
    const double blue = luma + 1.772 * u;
    return {blue, (luma - 0.299 * red - 0.114 * blue) / 0.587, red};
}

TEST(YuvPicture, IsWithinOneOfRealNumbers)
{
    struct Row {
        const char* name;
        Size size;
        ChromaRows chromaRows;
        SampleRange range;
    };
    const Row kRows[] = {{"single pixel", {1, 1}, ChromaRows::Halved, SampleRange::Full},
                         {"odd sides", {35, 7}, ChromaRows::Halved, SampleRange::Video},
                         {"odd width, every row", {5, 4}, ChromaRows::Every, SampleRange::Video},
                         {"one column", {1, 9}, ChromaRows::Every, SampleRange::Full},
                         {"several bands", {640, 700}, ChromaRows::Halved, SampleRange::Full}};
    std::mt19937 random(1);
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.name);
        const auto bytes = static_cast<size_t>(row.size.width + 3) * static_cast<size_t>(row.size.height);
        std::array<std::vector<uint8_t>, 3> samples;
        YuvPicture picture{row.size, {}, {}, row.chromaRows, row.range};
        for (size_t plane = 0; plane < 3; ++plane) {
            samples[plane].resize(bytes);
            for (uint8_t& sample : samples[plane])
                sample = static_cast<uint8_t>(random());
            // The planes of chroma stand upside down.
            picture.strides[plane] = plane == 0 ? row.size.width + 3 : -(row.size.width + 3);
            picture.planes[plane] =
                samples[plane].data() + (plane == 0 ? 0 : (row.size.height - 1) * (row.size.width + 3));
        }
        const CPackedDib dib = DibFromYuv(picture);
        ASSERT_EQ(dib.Size(), row.size);
        double farthest = 0;
        for (int y = 0; y < row.size.height; ++y) {
            for (int x = 0; x < row.size.width; ++x) {
                const std::array<double, 3> colour = ColourAt(picture, x, y);
                const uint8_t* const pixel = dib.Row(y) + ptrdiff_t{x} * 4;
                for (size_t channel = 0; channel < 3; ++channel) {
                    const double wanted = std::clamp(colour[channel] * 255, 0.0, 255.0);
                    farthest = std::max(farthest, std::abs(pixel[channel] - wanted));
                }
                ASSERT_EQ(pixel[3], 255);
            }
        }
        EXPECT_LE(farthest, 0.6);
    }
}

} // namespace
