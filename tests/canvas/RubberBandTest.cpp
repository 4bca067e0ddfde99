// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/RubberBand.h"

#include "support/TestPictures.h"

#include <functional>

namespace {

TEST(RubberBand, DrawsConnectedLinesAndErasesThemWhenDrawnAgain)
{
    constexpr Point kPolyline[] = {{3, 3}, {40, 9}, {-5, 30}, {3, 3}};
    constexpr Point kFar[] = {{INT32_MIN, INT32_MIN}, {INT32_MAX, INT32_MAX}};
    struct Row {
        const char* name;
        std::function<void(const BitmapView&, const Rect&)> draw;
        Point on;
    };
    const Row cases[] = {
        {"polyline", [&](const BitmapView& t, const Rect& a) { InvertPolyline(t, a, kPolyline); }, {3, 3}},
        {"far line", [&](const BitmapView& t, const Rect& a) { InvertPolyline(t, a, kFar); }, {7, 7}},
        {"rectangle",
         [](const BitmapView& t, const Rect& a) {
             InvertRectangle(t, a, {2, 2, 20, 12});
         },
         {19, 11}},
        {"ellipse",
         [](const BitmapView& t, const Rect& a) {
             InvertEllipse(t, a, {2, 2, 21, 13});
         },
         {2, 7}},
        {"dot",
         [](const BitmapView& t, const Rect& a) {
             InvertRectangle(t, a, {5, 5, 6, 6});
         },
         {5, 5}},
    };
    for (const Row& row : cases) {
        SCOPED_TRACE(row.name);
        const CPackedDib before = RandomDib(30, 20, 9);
        CPackedDib picture = before.Duplicate();
        row.draw(ViewOf(picture), {0, 0, 30, 20});
        EXPECT_EQ(PixelOf(picture, row.on.x, row.on.y), PixelOf(before, row.on.x, row.on.y) ^ 0xFFFFFF);
        row.draw(ViewOf(picture), {0, 0, 30, 20});
        EXPECT_TRUE(SameBytes(picture, before));
        // Drawn in parts it is the same.
        row.draw(ViewOf(picture), {0, 0, 30, 20});
        for (const Rect& area : {Rect{0, 0, 13, 20}, Rect{13, 0, 30, 7}, Rect{13, 7, 30, 20}})
            row.draw(ViewOf(picture).Part(area), area);
        EXPECT_TRUE(SameBytes(picture, before));
    }
}

} // namespace
