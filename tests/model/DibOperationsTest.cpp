// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/DibOperations.h"

#include "support/TestPictures.h"

#include <climits>
#include <cstring>

namespace {

CPackedDib WithRow(CPackedDib dib, std::initializer_list<uint8_t> bytes)
{
    std::copy(bytes.begin(), bytes.end(), dib.Row(0));
    return dib;
}

TEST(DibOperations, EveryDepthBecomes32Bits)
{
    CPackedDib one = WithRow(CPackedDib::Create(3, 1, 1), {0x40});
    one.ColourTable()[0] = {1, 2, 3, 9};
    one.ColourTable()[1] = {4, 5, 6, 0};
    EXPECT_TRUE(SameBytes(ConvertTo32Bits(one), DibOf(3, 1, {0xFF030201, 0xFF060504, 0xFF030201})));

    CPackedDib four = WithRow(CPackedDib::Create(3, 1, 4, 2), {0x15, 0x00});
    four.ColourTable()[1] = {7, 8, 9, 0};
    EXPECT_TRUE(SameBytes(ConvertTo32Bits(four), DibOf(3, 1, {0xFF090807, 0xFF000000, 0xFF000000})))
        << "an index beyond the table is black";

    CPackedDib eight = WithRow(CPackedDib::Create(2, 1, 8), {255, 3});
    eight.ColourTable()[255] = {10, 20, 30, 0};
    EXPECT_TRUE(SameBytes(ConvertTo32Bits(eight), DibOf(2, 1, {0xFF1E140A, 0xFF000000})));

    const CPackedDib sixteen = WithRow(CPackedDib::Create(2, 1, 16), {0xFF, 0x7F, 0x23, 0x84});
    EXPECT_TRUE(SameBytes(ConvertTo32Bits(sixteen), DibOf(2, 1, {0xFFFFFFFF, 0xFF080819})));

    const CPackedDib fields =
        WithRow(CPackedDib::CreateWithMasks(2, 1, 16, 0xF800, 0x07E0, 0), {0x1F, 0x04, 0x00, 0x88});
    EXPECT_TRUE(SameBytes(ConvertTo32Bits(fields), DibOf(2, 1, {0xFF008200, 0xFF8C0000})));

    const CPackedDib wide =
        WithRow(CPackedDib::CreateWithMasks(1, 1, 32, 0xFFC00000, 0x3FF000, 0x3), {0x02, 0x00, 0x60, 0x80});
    EXPECT_TRUE(SameBytes(ConvertTo32Bits(wide), DibOf(1, 1, {0xFF8080AA})));

    const CPackedDib plain = WithRow(CPackedDib::Create(1, 1, 24), {1, 2, 3});
    EXPECT_TRUE(SameBytes(ConvertTo32Bits(plain), DibOf(1, 1, {0xFF030201})));
    EXPECT_TRUE(SameBytes(ConvertTo32Bits(DibOf(1, 1, {0x00030201})), DibOf(1, 1, {0xFF030201})));
}

TEST(DibOperations, SetMaskBitsBecomeTransparent)
{
    for (const int bitCount : {1, 4, 8, 16, 24, 32}) {
        SCOPED_TRACE(bitCount);
        const CPackedDib dib = RandomDib(45, 3, 1, bitCount);
        const CPackedDib mask = RandomDib(45, 3, 2, 1);
        CPackedDib expected = ConvertTo32Bits(dib);
        for (int y = 0; y < 3; ++y) {
            for (int x = 0; x < 45; ++x) {
                if ((mask.Row(y)[x / 8] >> (7 - x % 8) & 1) != 0)
                    SetAlphaInRect(expected, {x, y, x + 1, y + 1}, 0);
            }
        }
        EXPECT_TRUE(SameBytes(ConvertTo32Bits(dib, mask), expected));
    }
}

TEST(DibOperations, CropKeepsTheInnerRectangle)
{
    const CPackedDib dib = DibOf(3, 2, {1, 2, 3, 4, 5, 6});
    EXPECT_TRUE(SameBytes(CropByMargins(dib, 1, 1, 0, 0), DibOf(2, 1, {5, 6})));
    EXPECT_TRUE(SameBytes(CropByMargins(dib, 0, 0, 2, 1), DibOf(1, 1, {1})));
    EXPECT_EQ(CropByMargins(dib, 0, 1, 0, 1).Size(), (Size{3, 0}));
}

TEST(DibOperations, AlphaIsWrittenInsideThePictureOnlyAndFoundAgain)
{
    CPackedDib dib = UniformDib(70, 40, 0x00112233);
    EXPECT_TRUE(OpaqueBounds(dib).IsEmpty());
    SetAlphaInRect(dib, {INT_MIN, -5, 0, 90}, 9);
    EXPECT_TRUE(OpaqueBounds(dib).IsEmpty());
    SetAlphaInRect(dib, {67, 30, INT_MAX, 31}, 1);
    SetAlphaInRect(dib, {66, 33, 68, 34}, 255);
    EXPECT_EQ(OpaqueBounds(dib), (Rect{66, 30, 70, 34}));
    EXPECT_EQ(PixelOf(dib, 69, 30), 0x01112233u);
    EXPECT_TRUE(IsOpaqueAt(dib, {69, 30}));
    for (const Point outside : {Point{66, 30}, Point{70, 30}, Point{-1, 0}, Point{67, 40}, Point{67, -1}})
        EXPECT_FALSE(IsOpaqueAt(dib, outside));
}

TEST(DibOperations, CheckerboardIsMirroredAtZero)
{
    for (const Point offset : {Point{0, 0}, Point{-13, 5}, Point{3, -20}, Point{INT_MAX, INT_MIN}}) {
        CPackedDib drawn = UniformDib(50, 37, 0x42000000);
        DrawCheckerboard(ViewOf(drawn), {1, 2, 3}, {4, 5, 6}, offset);
        CPackedDib expected = drawn.Duplicate();
        for (int64_t y = 0; y < 37; ++y) {
            for (int64_t x = 0; x < 50; ++x) {
                const bool even = ((x + offset.x) / 8 + (y + offset.y) / 8) % 2 == 0;
                const uint32_t pixel = even ? 0x42010203 : 0x42040506;
                std::memcpy(expected.Row(static_cast<int>(y)) + x * 4, &pixel, 4);
            }
        }
        EXPECT_TRUE(SameBytes(drawn, expected));
    }
}

} // namespace
