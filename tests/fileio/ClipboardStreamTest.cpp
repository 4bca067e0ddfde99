// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/ClipboardStream.h"

#include "support/TestPictures.h"

namespace {

using Bytes = std::vector<uint8_t>;

TEST(ClipboardStream, HoldsTheStatedBytes)
{
    const CPackedDib picture = DibOf(2, 1, {0x11223344, 0x11223355});
    CPackedDib palette = CPackedDib::Create(4, 1, 8);
    std::ranges::copy(Bytes{9, 9, 9, 8}, palette.Row(0));
    const CopiedPicture copied[] = {{picture, 77}, {palette, 0}};
    const Bytes stream = BuildClipboardStream(copied);
    const Bytes expected = {'P',  'X',  'D', ' ',  '2',  '0',  '0',  '0', 2, 0, 0,    0, 2, 0, 0, 0,    1,
                            0,    0,    0,   32,   0,    0,    0,    77,  0, 0, 0,    9, 0, 0, 0, 0xFF, 0x22,
                            0xFF, 0x33, 1,   0x44, 0x55, 0xFF, 0x11, 4,   0, 0, 0,    1, 0, 0, 0, 8,    0,
                            0,    0,    0,   0,    0,    0,    4,    0,   0, 0, 0xFE, 9, 0, 8};
    EXPECT_EQ(stream, expected);

    const auto pasted = ParseClipboardStream(stream);
    ASSERT_TRUE(pasted && pasted->size() == 2);
    EXPECT_TRUE(SameBytes((*pasted)[0].dib, picture));
    EXPECT_EQ((*pasted)[0].transparency, 77);
    // The reader takes every channel for one of a colour picture: a palette one comes back two bytes late.
    EXPECT_EQ(Bytes((*pasted)[1].dib.Row(0), (*pasted)[1].dib.Row(0) + 4), (Bytes{0, 0, 9, 9}));
}

TEST(ClipboardStream, KeepsColourPictures)
{
    const CPackedDib deep = RandomDib(129, 17, 3);
    const CPackedDib flat = RandomDib(5, 3, 4, 24);
    const CopiedPicture copied[] = {{deep, 0}, {flat, 255}};
    const auto pasted = ParseClipboardStream(BuildClipboardStream(copied));
    ASSERT_TRUE(pasted && pasted->size() == 2);
    EXPECT_TRUE(SameBytes((*pasted)[0].dib, deep));
    ASSERT_EQ((*pasted)[1].dib.BitCount(), 24);
    for (int y = 0; y < 3; ++y)
        EXPECT_EQ(Bytes((*pasted)[1].dib.Row(y), (*pasted)[1].dib.Row(y) + 15),
                  Bytes(flat.Row(y), flat.Row(y) + 15));
}

TEST(ClipboardStream, RefusesLies)
{
    const CPackedDib picture = RandomDib(6, 5, 8);
    const CopiedPicture copied[] = {{picture, 0}};
    const Bytes good = BuildClipboardStream(copied);
    for (size_t length = 0; length < good.size(); ++length)
        EXPECT_FALSE(ParseClipboardStream(std::span(good).first(length))) << length;
    struct Row {
        const char* name;
        size_t at;
        uint8_t value;
    };
    constexpr Row kRows[] = {{"magic", 0, 'p'},        {"version", 4, '1'},    {"more entries", 8, 2},
                             {"too wide", 15, 0x7F},   {"negative", 19, 0x80}, {"four channels more", 20, 64},
                             {"no such depth", 20, 4}, {"odd depth", 21, 0x01}};
    for (const Row& row : kRows) {
        Bytes bad = good;
        bad[row.at] = row.value;
        EXPECT_FALSE(ParseClipboardStream(bad)) << row.name;
    }
}

} // namespace
