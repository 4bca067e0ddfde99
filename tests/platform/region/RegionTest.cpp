// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/region/Region.h"

#include "platform/memory/HeapBlock.h"
#include "platform/region/RegionBuilder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <functional>
#include <random>
#include <vector>

namespace {

constexpr int kSide = 48; ///< pixels tested on each axis, from -8

using Pixels = std::array<std::array<bool, kSide>, kSide>;

Pixels PixelsWhere(const std::function<bool(int, int)>& holds)
{
    Pixels pixels{};
    for (int y = 0; y < kSide; ++y) {
        for (int x = 0; x < kSide; ++x)
            pixels[static_cast<size_t>(y)][static_cast<size_t>(x)] = holds(x - 8, y - 8);
    }
    return pixels;
}

Pixels PixelsOf(const CRegion& region)
{
    return PixelsWhere([&](int x, int y) { return region.Contains(Point{x, y}); });
}

/// The bands are as the class promises, and bounds and area follow from the rectangles.
void ExpectCanonical(const CRegion& region)
{
    const std::vector<Rect> rects(region.Rectangles().begin(), region.Rectangles().end());
    Rect bounds;
    int64_t area = 0;
    for (size_t i = 0; i < rects.size(); ++i) {
        ASSERT_FALSE(rects[i].IsEmpty());
        bounds = bounds.United(rects[i]);
        area += int64_t{rects[i].Width()} * rects[i].Height();
        if (i == 0)
            continue;
        const bool sameBand = rects[i].top == rects[i - 1].top;
        EXPECT_TRUE(sameBand ? rects[i].bottom == rects[i - 1].bottom && rects[i].left > rects[i - 1].right
                             : rects[i].top >= rects[i - 1].bottom);
    }
    EXPECT_EQ(region.Bounds(), bounds);
    EXPECT_EQ(region.Area(), area);
    CRegionBuilder again(static_cast<size_t>(area) + 1);
    for (int y = bounds.top; y < bounds.bottom; ++y)
        VisitRow(region, y, bounds.left, bounds.right, [&](int from, int to) { again.AddRun(y, from, to); });
    EXPECT_TRUE(again.Finish() == region);
}

CRegion RandomRegion(uint32_t seed, int density)
{
    std::mt19937 random(seed);
    CRegionBuilder builder(32 * 32);
    std::array<bool, 32> row{};
    for (int y = 0; y < 32; ++y) {
        // Some rows repeat the one above, so that bands of several rows come about.
        if (y % 3 != 1)
            std::ranges::generate(row, [&] { return static_cast<int>(random() % 100) < density; });
        for (int x = 0; x < 32; ++x) {
            if (row[static_cast<size_t>(x)])
                builder.AddRun(y, x, x + 1);
        }
    }
    return builder.Finish();
}

TEST(Region, OperationsEqualThePixelwiseOnes)
{
    for (uint32_t seed = 0; seed < 40; ++seed) {
        SCOPED_TRACE(seed);
        const CRegion a = RandomRegion(seed, static_cast<int>(seed % 8) * 14);
        const CRegion b = RandomRegion(seed + 100, static_cast<int>(seed % 5) * 25);
        CRegion united = a, less = a, both = a, moved = a;
        ASSERT_TRUE(united.Unite(b) && less.Subtract(b) && both.Intersect(b) && moved.Translate(3, -5));
        const auto inA = [&](int x, int y) { return a.Contains(Point{x, y}); };
        const auto inB = [&](int x, int y) { return b.Contains(Point{x, y}); };
        EXPECT_EQ(PixelsOf(united), PixelsWhere([&](int x, int y) { return inA(x, y) || inB(x, y); }));
        EXPECT_EQ(PixelsOf(less), PixelsWhere([&](int x, int y) { return inA(x, y) && !inB(x, y); }));
        EXPECT_EQ(PixelsOf(both), PixelsWhere([&](int x, int y) { return inA(x, y) && inB(x, y); }));
        EXPECT_EQ(PixelsOf(moved), PixelsWhere([&](int x, int y) { return inA(x - 3, y + 5); }));
        for (const CRegion& region : {a, united, less, both, moved})
            ExpectCanonical(region);
        const Rect probe{static_cast<int>(seed % 30), 4, static_cast<int>(seed % 30) + 2, 6};
        bool all = true;
        for (int y = probe.top; y < probe.bottom; ++y) {
            for (int x = probe.left; x < probe.right; ++x)
                all = all && inA(x, y);
        }
        EXPECT_EQ(a.Contains(probe), all);
    }
}

TEST(Region, EmptyAndExtremeRectangles)
{
    const CRegion nothing(Rect{5, 5, 5, 9});
    EXPECT_TRUE(nothing.IsEmpty() && nothing == CRegion() && nothing.Rectangles().empty());
    EXPECT_FALSE(nothing.Contains(Point{5, 5}) || nothing.Contains(Rect{}));
    CRegion region(Rect{0, 0, 10, 10});
    ASSERT_TRUE(region.Subtract(region));
    EXPECT_TRUE(region == CRegion());
    CRegion all(Rect{INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX});
    EXPECT_EQ(all.Area(), int64_t{4} * CRegion::kLimit * CRegion::kLimit);
    ASSERT_TRUE(all.Subtract(CRegion(Rect{0, 0, 1, 1})));
    CRegion cut = all;
    ASSERT_TRUE(cut.Translate(CRegion::kLimit, 0));
    EXPECT_EQ(cut.Area(), int64_t{2} * CRegion::kLimit * CRegion::kLimit);
    ASSERT_TRUE(all.Translate(INT32_MIN, INT32_MAX));
    EXPECT_TRUE(all.IsEmpty());
}

TEST(Region, EllipseHoldsThePixelsWhoseCentresLieInIt)
{
    for (const Rect& box : {Rect{0, 0, 1, 1}, Rect{-3, 2, -1, 4}, Rect{0, 0, 7, 1}, Rect{1, -4, 4, 30},
                            Rect{-5, -5, 20, 20}, Rect{2, 3, 32, 13}}) {
        SCOPED_TRACE(testing::Message()
                     << box.left << ',' << box.top << ' ' << box.Width() << 'x' << box.Height());
        const std::optional<CRegion> ellipse = CRegion::Ellipse(box);
        ASSERT_TRUE(ellipse);
        EXPECT_EQ(PixelsOf(*ellipse), PixelsWhere([&](int x, int y) {
                      const int64_t w = box.Width(), h = box.Height();
                      const int64_t dx = 2 * x + 1 - box.left - box.right,
                                    dy = 2 * y + 1 - box.top - box.bottom;
                      return dx * dx * h * h + dy * dy * w * w <= w * w * h * h;
                  }));
        ExpectCanonical(*ellipse);
    }
    const std::optional<CRegion> huge = CRegion::Ellipse({-INT32_MAX, -8, INT32_MAX, 8});
    ASSERT_TRUE(huge);
    EXPECT_EQ(huge->Bounds(), (Rect{-CRegion::kLimit, -8, CRegion::kLimit, 8}));
}

TEST(Region, PolygonAlternatesAtPixelCentres)
{
    std::vector<std::vector<Point>> outlines = {
        {},
        {{3, 3}},
        {{0, 0}, {10, 0}, {10, 10}, {0, 10}},
        {{0, 0}, {30, 7}, {4, 29}},
        {{0, 0}, {30, 30}, {30, 0}, {0, 30}},                                     // crosses itself
        {{0, 0}, {20, 0}, {20, 20}, {0, 20}, {0, 0}, {15, 5}, {15, 15}, {5, 10}}, // leaves a hole
    };
    std::mt19937 random(3);
    std::vector<Point>& star = outlines.emplace_back();
    for (int i = 0; i < 25; ++i)
        star.push_back({static_cast<int>(random() % 46) - 8, static_cast<int>(random() % 46) - 8});
    for (size_t row = 0; row < outlines.size(); ++row) {
        SCOPED_TRACE(row);
        const std::vector<Point>& points = outlines[row];
        const std::optional<CRegion> polygon = CRegion::Polygon(points);
        ASSERT_TRUE(polygon);
        EXPECT_EQ(PixelsOf(*polygon), PixelsWhere([&](int x, int y) {
                      bool inside = false;
                      for (size_t i = 0; i < points.size(); ++i) {
                          const Point a = points[i], b = points[(i + 1) % points.size()];
                          if ((a.y <= y) == (b.y <= y))
                              continue;
                          const double at = a.x + (y + 0.5 - a.y) * (b.x - a.x) / (b.y - a.y);
                          inside ^= at <= x + 0.5;
                      }
                      return inside;
                  }));
        ExpectCanonical(*polygon);
    }
    const std::vector<Point> far = {{INT32_MIN, -5}, {INT32_MAX, -5}, {0, 20}};
    const std::optional<CRegion> clipped = CRegion::Polygon(far);
    ASSERT_TRUE(clipped);
    EXPECT_TRUE(clipped->Contains(Point{-CRegion::kLimit, -5}) && !clipped->Contains(Point{0, 20}));
}

TEST(Region, SharesItsRectanglesAndSurvivesLackOfMemory)
{
    const CRegion region = RandomRegion(1, 50);
    const CRegion copy = region;
    EXPECT_EQ(copy.Rectangles().data(), region.Rectangles().data());
    const CAllocationFailure failure(0);
    EXPECT_FALSE(CRegion::Ellipse({0, 0, 9, 9}));
    EXPECT_FALSE(CRegion::Polygon(std::vector<Point>{{0, 0}, {9, 0}, {0, 9}}));
    EXPECT_TRUE(CRegionBuilder(10).IsEmpty());
}

} // namespace
