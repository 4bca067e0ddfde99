// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/pen/SegmentMask.h"

#include "platform/memory/HeapBlock.h"
#include "platform/region/Region.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>

namespace {

namespace reference {

/// Distance of (x, y) outside the pen's shape around the line, straight from the definition.
double DistanceOutside(double x, double y, Point a, Point b, const Pen& pen)
{
    const double shift = pen.width % 2 == 0 ? 0.5 : 0;
    const double px = x - a.x + shift, py = y - a.y + shift;
    const double dx = b.x - a.x, dy = b.y - a.y;
    const double length = std::hypot(dx, dy);
    const double ux = length == 0 ? 1 : dx / length, uy = length == 0 ? 0 : dy / length;
    const double along = px * ux + py * uy, aside = std::abs(px * uy - py * ux);
    const double past = std::max({0.0, -along, along - length});
    if (pen.cap == PenCap::Round)
        return std::hypot(past, aside) - pen.width / 2.0;
    const double beyond = std::max(-along, along - length) - pen.width / 2.0;
    const double outside = aside - pen.width / 2.0;
    return beyond > 0 && outside > 0 ? std::hypot(beyond, outside) : std::max(beyond, outside);
}

double Coverage(double outside, const Pen& pen)
{
    if (pen.softness < 2)
        return outside <= 1e-9 ? 255 : 0;
    return 255 * std::clamp(0.5 - outside / pen.softness, 0.0, 1.0);
}

} // namespace reference

int CoverageAt(const std::optional<CCoverageMask>& mask, int x, int y)
{
    if (!mask || !mask->Bounds().Contains({x, y}))
        return 0;
    const CCoverageMask::Run run = mask->RunOf(y);
    return x < run.left || x >= run.right ? 0 : *mask->At(x, y);
}

TEST(SegmentMask, CoversThePixelsWhoseCentresLieInTheShape)
{
    const CRegion everything;
    CRegion ring = CRegion::Ellipse({100, 200, 130, 230}).value();
    ASSERT_TRUE(ring.Subtract(CRegion(Rect{110, 210, 118, 216})));
    constexpr Rect kTarget{90, 190, 150, 240};
    struct Row {
        const char* name;
        Point from, to;
        int width, softness;
    };
    constexpr Row kCases[] = {
        {"dot", {107, 210}, {107, 210}, 1, 1},
        {"dab", {110, 210}, {110, 210}, 9, 0},
        {"even dab", {110, 210}, {110, 210}, 8, 8},
        {"level", {100, 205}, {140, 205}, 4, 0},
        {"upright", {120, 230}, {120, 195}, 7, 3},
        {"3-4-5", {100, 200}, {112, 216}, 5, 0},
        {"steep", {141, 199}, {133, 236}, 12, 12},
        {"flat", {91, 220}, {149, 214}, 3, 2},
        {"wide", {118, 210}, {121, 213}, 50, 25},
        {"from outside", {-400, 100}, {130, 215}, 6, 5},
        {"leaves the target", {120, 220}, {400, 500}, 20, 0},
    };
    for (const Row& row : kCases) {
        for (const PenCap cap : {PenCap::Round, PenCap::Square}) {
            for (const CRegion* selection : {&everything, static_cast<const CRegion*>(&ring)}) {
                SCOPED_TRACE(std::string(row.name) + (cap == PenCap::Round ? " round" : " square") +
                             (selection == &ring ? " in a ring" : ""));
                const Pen pen{row.width, cap, row.softness};
                const int margin = (row.width + 1) / 2 + std::max(2, (row.softness + 1) / 2);
                const Rect box = Rect{std::min(row.from.x, row.to.x), std::min(row.from.y, row.to.y),
                                      std::max(row.from.x, row.to.x), std::max(row.from.y, row.to.y)}
                                     .Inflated(margin);
                const auto mask = RasteriseSegment(kTarget, row.from, row.to, pen, *selection);
                int covered = 0;
                for (int y = kTarget.top; y < kTarget.bottom; ++y) {
                    for (int x = kTarget.left; x < kTarget.right; ++x) {
                        double expected = 0;
                        if (box.Contains({x, y}) &&
                            (selection->IsEmpty() || selection->Contains(Point{x, y})))
                            expected = reference::Coverage(
                                reference::DistanceOutside(x, y, row.from, row.to, pen), pen);
                        const int actual = CoverageAt(mask, x - kTarget.left, y - kTarget.top);
                        ASSERT_NEAR(actual, expected, 0.51) << x << ' ' << y;
                        covered += actual > 0 ? 1 : 0;
                    }
                }
                EXPECT_GT(covered, 0);
            }
        }
    }
}

TEST(SegmentMask, IsAsWideAsThePen)
{
    for (const int width : {1, 2, 3, 8, 50}) {
        SCOPED_TRACE(width);
        const auto mask =
            RasteriseSegment({0, 0, 200, 200}, {60, 100}, {140, 100}, {width, PenCap::Square, 0}, {});
        int down = 0, across = 0;
        for (int at = 0; at < 200; ++at) {
            down += CoverageAt(mask, 100, at) == 255 ? 1 : 0;
            across += CoverageAt(mask, at, 100) == 255 ? 1 : 0;
        }
        EXPECT_EQ(down, width);
        EXPECT_EQ(across, 80 + width);
    }
}

TEST(SegmentMask, NothingLeftMeansNoMask)
{
    constexpr Rect kTarget{0, 0, 20, 20};
    constexpr Pen kPen{8, PenCap::Round, 0};
    EXPECT_FALSE(RasteriseSegment(kTarget, {-30, 5}, {-20, 9}, kPen, {}));
    EXPECT_FALSE(RasteriseSegment(kTarget, {5, 5}, {9, 9}, kPen, CRegion(Rect{16, 16, 20, 20})));
    EXPECT_FALSE(RasteriseSegment({5, 5, 5, 5}, {5, 5}, {9, 9}, kPen, {}));
    constexpr Rect kFar{INT32_MIN, INT32_MIN, INT32_MIN + 9, INT32_MIN + 9};
    const auto crossed = RasteriseSegment(kFar, {INT32_MIN, INT32_MIN}, {INT32_MAX, INT32_MAX}, kPen, {});
    EXPECT_EQ(CoverageAt(crossed, 4, 4), 255);
    const CAllocationFailure failure(0);
    EXPECT_FALSE(RasteriseSegment(kTarget, {5, 5}, {9, 9}, kPen, {}));
}

} // namespace
