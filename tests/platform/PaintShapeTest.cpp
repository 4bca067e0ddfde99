// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/paint/PaintShape.h"

#include "platform/transform/ColourFill.h"
#include "support/TestPictures.h"

#include <algorithm>
#include <numeric>

namespace {

int64_t CoverageSum(const ShapeCoverage& shape)
{
    int64_t sum = 0;
    for (int y = 0; y < shape.dib.Height(); ++y)
        sum = std::accumulate(shape.dib.Row(y), shape.dib.Row(y) + shape.dib.Width(), sum);
    return sum;
}

TEST(PaintShape, CoversTheAreaThatGeometrySays)
{
    struct Row {
        const char* name;
        ShapeKind kind;
        ShapeFill fill;
        int lineWidth;
        int corner;
        double area;
        Rect box;
    };
    constexpr double kPi = 3.14159265358979;
    const Row cases[] = {
        {"filled rectangle", ShapeKind::Rectangle, ShapeFill::Filled, 9, 0, 40.0 * 20, {5, 7, 45, 27}},
        {"outline of even width",
         ShapeKind::Rectangle,
         ShapeFill::Outline,
         2,
         0,
         42.0 * 22 - 38 * 18,
         {4, 6, 46, 28}},
        {"outline of odd width",
         ShapeKind::Rectangle,
         ShapeFill::Outline,
         3,
         0,
         43.0 * 23 - 37 * 17,
         {3, 5, 47, 29}},
        {"rounded to the shorter side",
         ShapeKind::Rectangle,
         ShapeFill::Filled,
         1,
         20,
         20.0 * 20 + kPi * 100,
         {5, 7, 45, 27}},
        {"filled ellipse", ShapeKind::Ellipse, ShapeFill::Filled, 1, 20, kPi * 20 * 10, {5, 7, 45, 27}},
    };
    for (const Row& row : cases) {
        SCOPED_TRACE(row.name);
        const ShapeCoverage shape =
            PaintShapeOnPic({5, 7, 45, 27}, row.lineWidth, row.kind, row.fill, {row.corner, row.corner});
        ASSERT_FALSE(shape.dib.IsEmpty());
        EXPECT_EQ(Rect::At(shape.corner, shape.dib.Size()), row.box);
        EXPECT_NEAR(static_cast<double>(CoverageSum(shape)) / 255, row.area, row.area * 0.01);
    }
}

TEST(PaintShape, SelfCrossingPolygonsAlternateAndNothingGivesNothing)
{
    constexpr Point kTwice[] = {{0, 0}, {20, 0}, {20, 20}, {0, 20}, {0, 0}, {10, 0}, {10, 10}, {0, 10}};
    EXPECT_EQ(CoverageSum(PaintPolygonOnPic(kTwice, 1, ShapeFill::Filled)), 255 * (400 - 100));
    constexpr Point kLine[] = {{0, 0}, {5, 5}};
    EXPECT_TRUE(PaintPolygonOnPic(kLine, 1, ShapeFill::Filled).dib.IsEmpty());
    EXPECT_FALSE(PaintPolygonOnPic(kLine, 3, ShapeFill::Outline).dib.IsEmpty());
    EXPECT_TRUE(PaintShapeOnPic({4, 4, 4, 9}, 3, ShapeKind::Rectangle, ShapeFill::Outline, {}).dib.IsEmpty());
    const Rect huge{INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX};
    EXPECT_TRUE(PaintShapeOnPic(huge, 3, ShapeKind::Ellipse, ShapeFill::Filled, {}).dib.IsEmpty());
}

TEST(ColourFill, GradientsBeginAndEndAtTheirColours)
{
    const ShapeCoverage shape =
        PaintShapeOnPic({0, 0, 41, 21}, 1, ShapeKind::Rectangle, ShapeFill::Filled, {});
    constexpr uint32_t kFirst = 0xFF000010;  // opaque, blue 0x10
    constexpr uint32_t kSecond = 0xFFF08000; // opaque, red 0xF0, green 0x80
    struct Row {
        int mode;
        Point first;
        Point second;
    };
    constexpr Row kCases[] = {{1, {0, 9}, {40, 3}},
                              {2, {7, 0}, {9, 20}},
                              {3, {0, 0}, {40, 20}},
                              {4, {40, 0}, {0, 20}},
                              {5, {20, 10}, {0, 0}}};
    for (const Row& row : kCases) {
        SCOPED_TRACE(row.mode);
        const CPackedDib dib = ColourCoverage(shape.dib, {0x100000, 0x0080F0, row.mode});
        EXPECT_EQ(PixelOf(dib, row.first.x, row.first.y), kFirst);
        EXPECT_EQ(PixelOf(dib, row.second.x, row.second.y), kSecond);
    }
    EXPECT_EQ(PixelOf(ColourCoverage(shape.dib, {0x100000, 0x0080F0, 0}), 40, 20), kFirst);
}

} // namespace
