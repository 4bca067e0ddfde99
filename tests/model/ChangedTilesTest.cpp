// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/ChangedTiles.h"

#include <gtest/gtest.h>

#include <random>

namespace {

TEST(CChangedTiles, CoverWhatChangedOnceAndLittleElse)
{
    struct Row {
        const char* name;
        Size picture;
        int runs;
        size_t longest;
        int edge;
    };
    constexpr Row kCases[] = {{"nothing", {100, 80}, 0, 1, 64},
                              {"dots", {4000, 3000}, 30, 1, 64},
                              {"runs over many rows", {300, 5000}, 6, 2000, 79},
                              {"one row of tiles full to the edge", {4096, 3}, 40, 4096, 64},
                              {"a picture of one tile", {1, 1}, 2, 1, 64}};
    for (const Row& row : kCases) {
        SCOPED_TRACE(row.name);
        const auto width = static_cast<size_t>(row.picture.width);
        const size_t pixels = width * static_cast<size_t>(row.picture.height);
        std::mt19937 random(7);
        CChangedTiles tiles(row.picture);
        std::vector<uint8_t> changed(pixels), covered(pixels);
        for (int i = 0; i < row.runs; ++i) {
            const size_t first = random() % pixels;
            const size_t count = std::min(1 + random() % row.longest, pixels - first);
            tiles.Add(first, count);
            for (size_t at = first; at < first + count; ++at)
                changed[pixels / width * width - width - at / width * width + at % width] = 1;
        }
        for (const Rect& rect : tiles.Rectangles()) {
            for (int y = rect.top; y < rect.bottom; ++y) {
                for (int x = rect.left; x < rect.right; ++x)
                    ++covered[static_cast<size_t>(y) * width + static_cast<size_t>(x)];
            }
        }
        std::vector<uint8_t> wanted(pixels);
        for (int top = 0; top < row.picture.height; top += row.edge) {
            for (int left = 0; left < row.picture.width; left += row.edge) {
                const auto visit = [&](auto&& use) {
                    for (int y = top; y < std::min(top + row.edge, row.picture.height); ++y) {
                        for (int x = left; x < std::min(left + row.edge, row.picture.width); ++x)
                            use(static_cast<size_t>(y) * width + static_cast<size_t>(x));
                    }
                };
                bool isTouched = false;
                visit([&](size_t at) { isTouched = isTouched || changed[at] != 0; });
                visit([&](size_t at) { wanted[at] = isTouched ? 1 : 0; });
            }
        }
        EXPECT_EQ(covered, wanted);
    }
}

} // namespace
