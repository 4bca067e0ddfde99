// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageops/RotateDib.h"

#include "support/KernelSupport.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace reference {

CPackedDib RotateDib(const CPackedDib& dib, double angleDegrees, uint32_t fill)
{
    const double theta = angleDegrees * 0.011111111111111112 * 1.5707963;
    const double c = std::cos(theta);
    const double s = std::sin(theta);
    const int width = dib.Width();
    const int height = dib.Height();
    const auto cx = static_cast<float>((width - 1) * 0.5);
    const auto cy = static_cast<float>((height - 1) * 0.5);
    double minX = 0, maxX = 0, minY = 0, maxY = 0;
    for (const double x : {-double{cx}, width - double{cx}}) {
        for (const double y : {-double{cy}, height - double{cy}}) {
            const bool first = x < 0 && y == -double{cy} && x == -double{cx};
            minX = first ? x * c - y * s : std::min(minX, x * c - y * s);
            maxX = first ? x * c - y * s : std::max(maxX, x * c - y * s);
            minY = first ? x * s + y * c : std::min(minY, x * s + y * c);
            maxY = first ? x * s + y * c : std::max(maxY, x * s + y * c);
        }
    }
    const int newWidth = static_cast<int>(maxX - minX + 0.5);
    const int newHeight = static_cast<int>(maxY - minY + 0.5);
    CPackedDib turned = CPackedDib::Create(newWidth, newHeight, 32);
    for (int r = 0; r < newHeight; ++r) {
        const double dy = static_cast<float>((newHeight - 1) * 0.5) - static_cast<float>(r);
        for (int x = 0; x < newWidth; ++x) {
            const double dx = static_cast<float>(x) - static_cast<float>((newWidth - 1) * 0.5);
            const int sx = static_cast<int>(dx * c + cx + dy * s + 0.5);
            const int sy = static_cast<int>(dy * c - dx * s + cy + 0.5);
            const bool inside = sx >= 0 && sx < width && sy >= 0 && sy < height;
            const uint32_t pixel = inside ? PixelOf(dib, sx, height - 1 - sy) : fill;
            std::copy_n(reinterpret_cast<const uint8_t*>(&pixel), 4, turned.Row(r) + ptrdiff_t{x} * 4);
        }
    }
    return turned;
}

} // namespace reference

namespace {

TEST(RotateDib, EqualsReference)
{
    for (const double angle :
         {0.0, 1.0, 44.0, 45.0, 90.0, 135.0, 180.0, 211.0, 270.0, 315.0, 359.0, 360.0, -30.5}) {
        SCOPED_TRACE(angle);
        ExpectSameResults([=](const CPackedDib& dib) { return RotateDib(dib, angle, 0); },
                          [=](const CPackedDib& dib) { return reference::RotateDib(dib, angle, 0); });
    }
    const CPackedDib picture = RandomDib(30, 20, 4);
    EXPECT_TRUE(SameBytes(RotateDib(picture, 30, 0x00332211), reference::RotateDib(picture, 30, 0x00112233)));
}

TEST(RotateDib, TurnsCounterClockwiseAboutTheCentre)
{
    const CPackedDib picture = DibOf(3, 2, {1, 2, 3, 4, 5, 6});
    EXPECT_TRUE(SameBytes(RotateDib(picture, 180, 7), DibOf(3, 2, {6, 5, 4, 3, 2, 1})));
    EXPECT_TRUE(SameBytes(RotateDib(picture, 90, 7), DibOf(2, 3, {3, 6, 2, 5, 1, 4})));
}

TEST(RotateDib, RefusesWhatCannotBeHeld)
{
    // 45 degrees make a square of some 1.5 million by 1.5 million pixels of it.
    EXPECT_TRUE(RotateDib(CPackedDib::Create(1 << 21, 1, 32), 45, 0).IsEmpty());
    EXPECT_TRUE(RotateDib(RandomDib(2, 2, 1), std::numeric_limits<double>::infinity(), 0).IsEmpty());
    ExpectEmptyWhenMemoryRunsOut([](const CPackedDib& dib) { return RotateDib(dib, 30, 0); });
}

} // namespace
