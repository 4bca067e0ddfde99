// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/SelectionOutline.h"

#include "support/TestPictures.h"

namespace {

/// A comb, a hole, an island that touches only by a corner, and a gap between bands.
CRegion JaggedRegion()
{
    CRegion region({2, 1, 14, 9});
    EXPECT_TRUE(region.Subtract(CRegion({4, 3, 7, 5})));
    EXPECT_TRUE(region.Subtract(CRegion({10, 6, 11, 9})));
    EXPECT_TRUE(region.Unite(CRegion({14, 9, 16, 10})));
    EXPECT_TRUE(region.Unite(CRegion({0, 12, 3, 13})));
    return region;
}

TEST(SelectionOutline, CoversExactlyThePixelsInsideThatHaveAnEdge)
{
    const CRegion region = JaggedRegion();
    CSelectionOutline outline;
    outline.Build(region);
    for (const int zoom : {1, 2, 5}) {
        SCOPED_TRACE(zoom);
        const ViewGeometry geometry{{20, 14}, zoom, {20 * zoom + 4, 14 * zoom + 4}, {0, 0}};
        const Rect area{0, 0, geometry.client.width, geometry.client.height};
        CPackedDib picture = CPackedDib::Create(area.Width(), area.Height(), 32);
        outline.Paint(ViewOf(picture), area, geometry, {0, 0}, 0);
        const auto isInside = [&](int x, int y) {
            // Margin pixels map to document pixel 0 by truncation, so the margin is told apart first.
            return x >= 2 && y >= 2 && region.Contains(geometry.ToDocument(Point{x, y}));
        };
        for (int y = 0; y < area.bottom; ++y) {
            for (int x = 0; x < area.right; ++x) {
                const bool atEdge = isInside(x, y) && !(isInside(x - 1, y) && isInside(x + 1, y) &&
                                                        isInside(x, y - 1) && isInside(x, y + 1));
                ASSERT_EQ(PixelOf(picture, x, y) != 0, atEdge) << x << ' ' << y;
            }
        }
    }
}

TEST(SelectionOutline, PaintingAPartEqualsThatPartOfTheWhole)
{
    CSelectionOutline outline;
    outline.Build(JaggedRegion());
    for (const int zoom : {-4, -2, 1, 3, 8}) {
        for (const Point offset : {Point{0, 0}, Point{-9, 5}}) {
            SCOPED_TRACE(zoom);
            ViewGeometry geometry{{20, 14}, zoom, {70, 60}, {0, 0}};
            geometry.scroll = geometry.ClampedScroll({11, 7});
            CPackedDib whole = CPackedDib::Create(70, 60, 32);
            outline.Paint(ViewOf(whole), {0, 0, 70, 60}, geometry, offset, 3);
            CPackedDib parts = CPackedDib::Create(70, 60, 32);
            for (int y = 0; y < 60; ++y) {
                const Rect area{0, y, 70, y + 1};
                outline.Paint(ViewOf(parts).Part(area), area, geometry, offset, 3);
            }
            EXPECT_TRUE(SameBytes(parts, whole));
        }
    }
}

TEST(SelectionOutline, WanderingDashesChangeOnlyWhatIsCalledCovered)
{
    CRegion region({40, 30, 900, 500});
    ASSERT_TRUE(region.Unite(CRegion({950, 480, 951, 700})));
    CSelectionOutline outline;
    outline.Build(region);
    for (const int zoom : {-3, 1, 2}) {
        SCOPED_TRACE(zoom);
        ViewGeometry geometry{{1000, 700}, zoom, {970, 610}, {0, 0}};
        geometry.scroll = geometry.ClampedScroll({20, 90});
        const Rect window = Rect::At({0, 0}, geometry.client);
        CRegion covered;
        int64_t area = 0;
        outline.VisitCovered(geometry, {7, -40}, [&](const Rect& rect) {
            EXPECT_EQ(rect.Intersected(window), rect);
            EXPECT_TRUE(covered.Unite(CRegion(rect)));
            area += int64_t{rect.Width()} * rect.Height();
        });
        EXPECT_EQ(covered.Area(), area) << "rectangles overlap";
        EXPECT_LT(area, int64_t{window.Width()} * window.Height() / 3);
        CPackedDib shown[] = {CPackedDib::Create(970, 610, 32), CPackedDib::Create(970, 610, 32)};
        for (const int phase : {0, 1})
            outline.Paint(ViewOf(shown[phase]), window, geometry, {7, -40}, phase);
        int changed = 0;
        for (int y = 0; y < window.bottom; ++y) {
            for (int x = 0; x < window.right; ++x) {
                const bool differs = PixelOf(shown[0], x, y) != PixelOf(shown[1], x, y);
                ASSERT_TRUE(!differs || covered.Contains(Point{x, y})) << x << ' ' << y;
                changed += differs;
            }
        }
        EXPECT_GT(changed, 100);
    }
}

} // namespace
