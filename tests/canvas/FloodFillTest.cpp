// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/FloodFill.h"

#include "canvas/MagicWand.h"
#include "platform/memory/HeapBlock.h"
#include "support/TestPictures.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <functional>
#include <random>
#include <vector>

namespace {

namespace reference {

using Matches = std::function<bool(uint32_t pixel)>;

/// One point after the other from a stack, the way the fill is defined: what lies outside the region is
/// passed over without a mark, every other neighbour is marked whether it matches or not.
std::vector<Point> Grow(const CPackedDib& dib, Point start, const CRegion& clip, const Matches& matches)
{
    std::vector<bool> visited(static_cast<size_t>(dib.Width() * dib.Height()));
    const auto mark = [&](Point p) { return visited[static_cast<size_t>(p.y * dib.Width() + p.x)]; };
    std::vector<Point> stack{start};
    std::vector<Point> taken;
    mark(start);
    visited[static_cast<size_t>(start.y * dib.Width() + start.x)] = true;
    while (!stack.empty()) {
        const Point p = stack.back();
        stack.pop_back();
        taken.push_back(p);
        for (const Point next :
             {Point{p.x, p.y + 1}, Point{p.x + 1, p.y}, Point{p.x, p.y - 1}, Point{p.x - 1, p.y}}) {
            if (!Rect::At({0, 0}, dib.Size()).Contains(next) || (!clip.IsEmpty() && !clip.Contains(next)) ||
                mark(next))
                continue;
            visited[static_cast<size_t>(next.y * dib.Width() + next.x)] = true;
            if (matches(PixelOf(dib, next.x, next.y)))
                stack.push_back(next);
        }
    }
    return taken;
}

std::vector<Point> All(const CPackedDib& dib, const CRegion& clip, const Matches& matches)
{
    std::vector<Point> taken;
    for (int y = 0; y < dib.Height(); ++y) {
        for (int x = 0; x < dib.Width(); ++x) {
            if ((clip.IsEmpty() || clip.Contains(Point{x, y})) && matches(PixelOf(dib, x, y)))
                taken.push_back({x, y});
        }
    }
    return taken;
}

bool Near(uint32_t a, uint32_t b, int tolerance)
{
    for (int shift = 0; shift < 24; shift += 8) {
        if (std::abs(static_cast<int>(a >> shift & 255) - static_cast<int>(b >> shift & 255)) > tolerance)
            return false;
    }
    return true;
}

uint32_t PaintedOver(uint32_t pixel, const Paint& paint)
{
    const int a = static_cast<int>(pixel >> 24), above = paint.alpha;
    const int alpha = 255 - (255 - a) * (255 - above) / 255;
    uint32_t result = static_cast<uint32_t>(alpha) << 24;
    for (int shift = 0; shift < 24; shift += 8) {
        const int c = static_cast<int>(pixel >> shift & 255),
                  f = static_cast<int>(paint.colour >> shift & 255);
        const int sum = (255 - above) * a * c / 255 + above * f;
        result |= static_cast<uint32_t>(std::clamp(alpha == 0 ? sum : sum / alpha, 0, 255)) << shift;
    }
    return result;
}

} // namespace reference

/// A picture of few colours in which areas of every shape come about; some pixels are transparent.
CPackedDib Patchwork(int width, int height, uint32_t seed, unsigned colours)
{
    CPackedDib dib = CPackedDib::Create(width, height, 32);
    std::mt19937 random(seed);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const auto step = static_cast<uint32_t>(random() % 100 < 65 ? 0 : random() % colours);
            const uint32_t pixel = step == 1 ? 0x00406080 : (0xFF406080 - (step << 25)) + step * 0x0A0B0C;
            std::memcpy(dib.Row(y) + ptrdiff_t{x} * 4, &pixel, sizeof pixel);
        }
    }
    return dib;
}

struct PictureRow {
    const char* name;
    int width, height;
    unsigned colours;
    Point start;
};
constexpr PictureRow kPictures[] = {
    {"single pixel", 1, 1, 2, {0, 0}},   {"one row", 300, 1, 6, {200, 0}},
    {"one column", 1, 300, 9, {0, 100}}, {"whole words", 128, 70, 3, {64, 35}},
    {"odd size", 131, 197, 4, {5, 196}}, {"two strips", 4200, 40, 3, {4100, 20}},
    {"plain", 200, 130, 1, {199, 0}},    {"many strips", 9000, 9, 30, {0, 4}},
};

class FloodFillOnPictures : public testing::TestWithParam<PictureRow> {
protected:
    const PictureRow& m_row = GetParam();
    CPackedDib m_dib = Patchwork(m_row.width, m_row.height, 5, m_row.colours);
    CRegion m_ellipse = CRegion::Ellipse({-9, -9, m_row.width + 5, m_row.height + 20}).value();
    uint32_t m_seed = PixelOf(m_dib, m_row.start.x, m_row.start.y);

    void ExpectFilled(const CPackedDib& actual, const std::vector<Point>& taken,
                      const std::function<uint32_t(uint32_t)>& paint) const
    {
        CPackedDib expected = m_dib.Duplicate();
        for (const Point p : taken) {
            const uint32_t pixel = paint(PixelOf(m_dib, p.x, p.y));
            std::memcpy(expected.Row(p.y) + ptrdiff_t{p.x} * 4, &pixel, sizeof pixel);
        }
        EXPECT_TRUE(SameBytes(actual, expected));
    }
};

INSTANTIATE_TEST_SUITE_P(Pictures, FloodFillOnPictures, testing::ValuesIn(kPictures), [](const auto& row) {
    std::string name = row.param.name;
    std::ranges::replace(name, ' ', '_');
    return name;
});

TEST_P(FloodFillOnPictures, EveryKernelEqualsTheStack)
{
    const CRegion everywhere;
    for (const CRegion* clip : {&everywhere, static_cast<const CRegion*>(&m_ellipse)}) {
        for (const int tolerance : {0, 12, 24, 255}) {
            for (const uint8_t alpha : {uint8_t{255}, uint8_t{77}, uint8_t{0}}) {
                SCOPED_TRACE(testing::Message() << "tolerance " << tolerance << " alpha " << int{alpha});
                const Paint paint{0xFFEE10, alpha};
                const auto over = [&](uint32_t pixel) { return reference::PaintedOver(pixel, paint); };
                const auto matches = [&](uint32_t pixel) {
                    return pixel >> 24 != 0 && reference::Near(pixel, m_seed, tolerance);
                };
                CPackedDib connected = m_dib.Duplicate();
                ASSERT_TRUE(FillConnected(connected, {m_seed, tolerance}, paint, m_row.start, *clip));
                ExpectFilled(connected, reference::Grow(m_dib, m_row.start, *clip, matches), over);
                CPackedDib all = m_dib.Duplicate();
                FillEverywhere(all, {m_seed, tolerance}, paint, *clip);
                ExpectFilled(all, reference::All(m_dib, *clip, matches), over);
            }
        }
        const Paint paint{0x123456, 200};
        const auto set = [&](uint32_t) { return paint.Pixel(); };
        const auto clear = [](uint32_t pixel) { return pixel >> 24 == 0; };
        CPackedDib connected = m_dib.Duplicate();
        ASSERT_TRUE(FillConnectedTransparent(connected, paint, m_row.start, *clip));
        ExpectFilled(connected, reference::Grow(m_dib, m_row.start, *clip, clear), set);
        CPackedDib all = m_dib.Duplicate();
        FillTransparentEverywhere(all, paint, *clip);
        ExpectFilled(all, reference::All(m_dib, *clip, clear), set);
    }
}

TEST_P(FloodFillOnPictures, WandEqualsGrowthPixelByPixel)
{
    for (const int similarity : {0, 12, 255}) {
        SCOPED_TRACE(similarity);
        const auto matches = [&](uint32_t pixel) {
            return (pixel >> 31) == (m_seed >> 31) && reference::Near(pixel, m_seed, similarity);
        };
        for (const WandReach reach : {WandReach::Connected, WandReach::Everywhere}) {
            const std::vector<Point> taken = reach == WandReach::Connected
                                                 ? reference::Grow(m_dib, m_row.start, {}, matches)
                                                 : reference::All(m_dib, {}, matches);
            const CRegion region = WandRegion(m_dib, m_row.start, similarity, reach);
            EXPECT_EQ(region.Area(), static_cast<int64_t>(taken.size()));
            for (const Point p : taken)
                ASSERT_TRUE(region.Contains(p)) << p.x << ' ' << p.y;
        }
    }
}

TEST(FloodFill, FollowsWindingPathsThroughManyBlocks)
{
    // Corridors up and down, joined in turns at the top and at the bottom; the walls end a pixel before.
    constexpr int kWidth = 4300, kHeight = 150;
    CPackedDib dib = UniformDib(kWidth, kHeight, 0xFFFFFFFF);
    for (int x = 1; x < kWidth; x += 2) {
        const int gap = x % 4 == 1 ? 0 : kHeight - 1;
        for (int y = 0; y < kHeight; ++y) {
            if (y != gap)
                std::memset(dib.Row(y) + ptrdiff_t{x} * 4, 0, 3);
        }
    }
    const CRegion region = WandRegion(dib, {kWidth / 2 & ~1, 70}, 0, WandReach::Connected);
    EXPECT_EQ(region.Area(), int64_t{kWidth / 2} * kHeight + kWidth / 2);
    // One closed wall halves it.
    std::memset(dib.Row(0) + ptrdiff_t{2001} * 4, 0, 3);
    EXPECT_EQ(WandRegion(dib, {0, 0}, 0, WandReach::Connected).Bounds().right, 2001);
}

TEST(FloodFill, LackOfMemoryLeavesThePictureAsItWas)
{
    const CPackedDib before = Patchwork(100, 100, 1, 3);
    CPackedDib dib = before.Duplicate();
    for (int64_t after = 0; after < 3; ++after) {
        const CAllocationFailure failure(after);
        EXPECT_FALSE(FillConnected(dib, {PixelOf(dib, 3, 3), 9}, {}, {3, 3}, {}));
        EXPECT_FALSE(FillConnectedTransparent(dib, {}, {3, 3}, {}));
        EXPECT_TRUE(WandRegion(dib, {3, 3}, 9, WandReach::Connected).IsEmpty());
    }
    EXPECT_TRUE(SameBytes(dib, before));
}

} // namespace
