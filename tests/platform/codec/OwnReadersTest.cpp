// SPDX-License-Identifier: GPL-3.0-or-later
// The readers without a library behind them, on files of a few pixels written out by hand.
#include "platform/codec/ByteSink.h"
#include "platform/codec/Cmyk.h"
#include "platform/codec/CodecSupport.h"

#include <initializer_list>

namespace {

constexpr uint32_t kRed = 0xffff0000;
constexpr uint32_t kGreen = 0xff00ff00;
constexpr uint32_t kBlue = 0xff0000ff;
constexpr uint32_t kBlack = 0xff000000;

void Put(CByteSink& sink, std::initializer_list<int> bytes)
{
    for (const int byte : bytes)
        sink.PutU8(static_cast<uint8_t>(byte));
}

struct Case {
    const char* name;
    CByteSink file;
    CPackedDib expected;
};

void ExpectAll(const char* fileName, std::initializer_list<Case> cases)
{
    const CTemporaryFolder folder;
    for (const Case& row : cases) {
        SCOPED_TRACE(row.name);
        EXPECT_TRUE(SameBytes(LoadBytes(row.file.Bytes(), folder.File(fileName)), row.expected));
    }
}

/// Colours 0 to 3 are black, red, green and blue; `masks` makes it the long header that has them.
CByteSink Bmp(int width, int height, int bits, int compression, std::initializer_list<int> pixels,
              std::initializer_list<uint32_t> masks = {})
{
    const uint32_t headerBytes = masks.size() == 0 ? 40 : 108;
    const uint32_t tableBytes = bits <= 8 ? 16 : 0;
    CByteSink sink;
    Put(sink, {'B', 'M'});
    sink.PutZeroes(8);
    sink.PutU32(14 + headerBytes + tableBytes);
    sink.PutU32(headerBytes);
    sink.PutU32(static_cast<uint32_t>(width));
    sink.PutU32(static_cast<uint32_t>(height));
    sink.PutU16(1);
    sink.PutU16(static_cast<uint16_t>(bits));
    sink.PutU32(static_cast<uint32_t>(compression));
    sink.PutZeroes(12);
    sink.PutU32(4);
    sink.PutU32(0);
    for (const uint32_t mask : masks)
        sink.PutU32(mask);
    sink.PutZeroes(headerBytes - 40 - masks.size() * 4);
    if (bits <= 8)
        Put(sink, {0, 0, 0, 0, 0, 0, 255, 0, 0, 255, 0, 0, 255, 0, 0, 0});
    Put(sink, pixels);
    return sink;
}

CByteSink Tga(int type, int width, int height, int bits, int descriptor, std::initializer_list<int> rest,
              std::initializer_list<int> map = {0, 0, 0, 0, 0})
{
    CByteSink sink;
    Put(sink, {0, type % 8 == 1 ? 1 : 0, type});
    Put(sink, map);
    sink.PutZeroes(4);
    sink.PutU16(static_cast<uint16_t>(width));
    sink.PutU16(static_cast<uint16_t>(height));
    Put(sink, {bits, descriptor});
    Put(sink, rest);
    return sink;
}

/// The first four of the sixteen colours are black, red, green and blue.
CByteSink Pcx(int encoding, int width, int height, int bits, int planes, int planeBytes,
              std::initializer_list<int> rest)
{
    CByteSink sink;
    Put(sink, {10, 5, encoding, bits, 0, 0, 0, 0, width - 1, 0, height - 1, 0, 72, 0, 72, 0});
    Put(sink, {0, 0, 0, 255, 0, 0, 0, 255, 0, 0, 0, 255});
    sink.PutZeroes(37);
    Put(sink, {planes, planeBytes, 0});
    sink.PutZeroes(60);
    Put(sink, rest);
    return sink;
}

} // namespace

TEST(BmpReader, HandmadeFiles)
{
    ExpectAll(
        "a.bmp",
        {{"skipped pixels stay clear", Bmp(4, 2, 8, 1, {2, 1, 0, 2, 1, 1, 1, 2, 0, 1}),
          DibOf(4, 2, {0, 0, 0, kGreen, kRed, kRed, 0, 0})},
         {"literal and run of half bytes", Bmp(5, 1, 4, 2, {0, 3, 0x12, 0x30, 2, 0x21, 0, 1}),
          DibOf(5, 1, {kRed, kGreen, kBlue, kGreen, kRed})},
         {"literal padded to a word", Bmp(4, 1, 8, 1, {0, 3, 1, 2, 3, 0, 1, 1, 0, 1}),
          DibOf(4, 1, {kRed, kGreen, kBlue, kRed})},
         {"two bits a pixel", Bmp(3, 1, 2, 0, {0b01101100, 0, 0, 0}), DibOf(3, 1, {kRed, kGreen, kBlue})},
         {"top row first", Bmp(1, -2, 24, 0, {0, 0, 255, 0, 255, 0, 0, 0}), DibOf(1, 2, {kRed, kBlue})},
         {"fourth byte unused", Bmp(2, 1, 32, 0, {0, 0, 255, 0, 255, 0, 0, 0}), DibOf(2, 1, {kRed, kBlue})},
         {"fourth byte is alpha", Bmp(2, 1, 32, 0, {0, 0, 255, 9, 255, 0, 0, 0}),
          DibOf(2, 1, {0x09ff0000, 0xff})},
         {"four bits each with alpha", Bmp(2, 1, 16, 3, {0x00, 0x8f, 0x0f, 0xf0}, {0xf00, 0xf0, 0xf, 0xf000}),
          DibOf(2, 1, {0x88ff0000, kBlue})},
         {"ten bits each", Bmp(1, 1, 32, 3, {0xff, 0x03, 0x08, 0x20}, {0x3ff00000, 0xffc00, 0x3ff, 0}),
          DibOf(1, 1, {0xff8080ff})},
         {"last row cut off", Bmp(1, 2, 24, 0, {0, 0, 255, 0, 255}), DibOf(1, 2, {0, kRed})}});
}

TEST(TgaReader, HandmadeFiles)
{
    ExpectAll(
        "a.tga",
        {{"packets across rows", Tga(10, 2, 2, 24, 0x20, {0x82, 0, 0, 255, 0x00, 255, 0, 0}),
          DibOf(2, 2, {kRed, kRed, kRed, kBlue})},
         {"right to left", Tga(2, 2, 1, 24, 0x30, {0, 0, 255, 255, 0, 0}), DibOf(2, 1, {kBlue, kRed})},
         {"map that begins at 5", Tga(1, 2, 1, 8, 0x20, {0, 0, 255, 255, 0, 0, 6, 5}, {5, 0, 2, 0, 24}),
          DibOf(2, 1, {kBlue, kRed})},
         {"outside the map", Tga(1, 1, 1, 8, 0x20, {0, 0, 255, 4}, {5, 0, 1, 0, 24}), DibOf(1, 1, {kBlack})},
         {"attribute bit", Tga(2, 2, 1, 16, 0x21, {0x00, 0xfc, 0x1f, 0x00}), DibOf(2, 1, {kRed, 0x000000ff})},
         {"attribute bit never set", Tga(2, 2, 1, 16, 0x21, {0x00, 0x7c, 0x1f, 0x00}),
          DibOf(2, 1, {kRed, kBlue})},
         {"grey with alpha", Tga(11, 2, 1, 16, 0x28, {0x81, 0x80, 0x40}),
          DibOf(2, 1, {0x40808080, 0x40808080})},
         {"alpha of 0 that is stated", Tga(2, 1, 1, 32, 0x28, {1, 2, 3, 0}), DibOf(1, 1, {0x00030201})},
         {"alpha of 0 that is not", Tga(2, 1, 1, 32, 0x20, {1, 2, 3, 0}), DibOf(1, 1, {0xff030201})}});
}

TEST(PcxReader, HandmadeFiles)
{
    ExpectAll("a.pcx", {{"run across rows", Pcx(1, 2, 2, 8, 1, 2, {0xc3, 7, 9}),
                         DibOf(2, 2, {0xff070707, 0xff070707, 0xff070707, 0xff090909})},
                        {"uncompressed high bytes", Pcx(0, 1, 1, 8, 3, 2, {0xff, 0, 0xc4, 0, 0xc1, 0}),
                         DibOf(1, 1, {0xffffc4c1})},
                        {"two planes of one bit", Pcx(1, 4, 1, 1, 2, 2, {0x50, 0, 0x30, 0}),
                         DibOf(4, 1, {kBlack, kRed, kGreen, kBlue})},
                        {"two bits in one plane", Pcx(1, 4, 1, 2, 1, 2, {0x1b, 0}),
                         DibOf(4, 1, {kBlack, kRed, kGreen, kBlue})},
                        {"a bit is black or white", Pcx(1, 2, 1, 1, 1, 2, {0x40, 0}),
                         DibOf(2, 1, {kBlack, 0xffffffff})}});
}

TEST(Cmyk, InksLetPassWhatTheyDoNotCover)
{
    uint8_t plain[] = {255, 0, 0, 0, 0, 255, 255, 0, 0, 0, 0, 255, 51, 102, 0, 102};
    CmykRowToBgra(plain, 4, Ink::Plain);
    const uint8_t expected[] = {255, 255, 0, 255, 0, 0, 255, 255, 0, 0, 0, 255, 153, 92, 122, 255};
    EXPECT_TRUE(std::equal(std::begin(plain), std::end(plain), expected));
    uint8_t inverted[] = {0, 255, 255, 255};
    CmykRowToBgra(inverted, 1, Ink::Inverted);
    EXPECT_TRUE(std::equal(std::begin(inverted), std::end(inverted), expected));
}
