// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/BlendRows.h"

#include "model/AlphaRange.h"
#include "model/BlendPixels.h"
#include "support/TestPictures.h"
#include "support/VectorTargets.h"

#include <random>
#include <vector>

namespace {

using Row = std::vector<uint8_t>;
using PixelBlend = void (*)(uint8_t* destination, const uint8_t* source, int e);

void ExpectEqual(RowBlend rows, PixelBlend pixels, Row destination, const Row& source, uint8_t transparency)
{
    Row expected = destination;
    for (size_t at = 0; at < source.size(); at += 4)
        pixels(&expected[at], &source[at], source[at + 3] - transparency);
    rows(destination.data(), source.data(), source.size() / 4, transparency);
    EXPECT_EQ(destination, expected) << "transparency " << int{transparency};
}

/// Pixels with every alpha, each with every `step`th colour.
Row EveryAlphaAndColour(int step)
{
    Row row;
    for (int alpha = 0; alpha < 256; ++alpha) {
        for (int colour = 0; colour < 256; colour += step) {
            const auto value = static_cast<uint8_t>(colour);
            row.insert(row.end(),
                       {value, static_cast<uint8_t>(255 - colour), value, static_cast<uint8_t>(alpha)});
        }
    }
    return row;
}

TEST(BlendRows, WeightedIsExactForEveryAlphaAndPairOfColours)
{
    const Row source = EveryAlphaAndColour(1);
    ForEachVectorTarget([&] {
        for (int below = 0; below < 256; ++below) {
            const Row destination(source.size(), static_cast<uint8_t>(below));
            ExpectEqual(BlendRowWeighted, BlendPixelWeighted, destination, source, 0);
        }
        for (int transparency = 1; transparency < 256; ++transparency) {
            ExpectEqual(BlendRowWeighted, BlendPixelWeighted, Row(source.size(), 200), source,
                        static_cast<uint8_t>(transparency));
        }
    });
}

TEST(BlendRows, OverIsExactForEveryPairOfAlphas)
{
    const Row source = EveryAlphaAndColour(9);
    std::mt19937 random(1);
    ForEachVectorTarget([&] {
        for (int below = 0; below < 256; ++below) {
            Row destination(source.size());
            for (size_t at = 0; at < destination.size(); ++at)
                destination[at] = static_cast<uint8_t>(at % 4 == 3 ? static_cast<unsigned>(below) : random());
            ExpectEqual(BlendRowOver, BlendPixelOver, destination, source, 0);
        }
    });
}

TEST(BlendRows, AnyLengthAndMixtureOfAlphas)
{
    constexpr RowBlend kRows[] = {BlendRowWeighted, BlendRowOver, CopyRowLessTransparency};
    constexpr PixelBlend kPixels[] = {BlendPixelWeighted, BlendPixelOver, CopyPixelLessTransparency};
    std::mt19937 random(2);
    const auto randomRow = [&random](size_t pixels) {
        Row row(pixels * 4);
        for (size_t at = 0; at < row.size(); ++at) {
            const auto kind = at % 4 == 3 ? random() % 3 : 0;
            row[at] = static_cast<uint8_t>(kind == 0 ? random() : kind == 1 ? 0 : 255);
        }
        return row;
    };
    ForEachVectorTarget([&] {
        for (size_t pixels = 0; pixels < 150; ++pixels) {
            for (size_t rule = 0; rule < 3; ++rule) {
                const auto transparency = static_cast<uint8_t>(pixels % 5 == 0 ? random() : 0);
                ExpectEqual(kRows[rule], kPixels[rule], randomRow(pixels), randomRow(pixels), transparency);
            }
        }
    });
}

TEST(BlendRows, AlphaRangeIsThatOfAllPixelsAndOfNoOthers)
{
    CPackedDib picture = RandomDib(90, 12, 5);
    ForEachVectorTarget([&] {
        for (int width = 1; width < 70; ++width) {
            const BitmapView part = ViewOf(picture).Part(Rect::At({width / 4, width % 9}, {width, 3}));
            AlphaRange expected{255, 0};
            for (int y = 0; y < part.height; ++y) {
                for (int x = 0; x < width; ++x) {
                    const uint8_t alpha = part.Row(y)[ptrdiff_t{x} * 4 + 3];
                    expected = expected.United({alpha, alpha});
                }
            }
            EXPECT_EQ(FindAlphaRange(part), expected) << width;
        }
    });
}

} // namespace
