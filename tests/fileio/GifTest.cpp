// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/GifLzwEncoder.h"
#include "fileio/GifReader.h"
#include "fileio/GifWriter.h"
#include "support/TestDocument.h"
#include "support/TestFiles.h"
#include "support/TestPictures.h"

#include <cstring>
#include <random>

namespace {

using Bytes = std::vector<uint8_t>;

} // namespace

namespace reference {

/// The code stream in sub-blocks, one pixel after another, with the hash table of 5003 entries.
Bytes EncodeLzw(const Bytes& pixels, int minimumCodeSize)
{
    const int firstWidth = minimumCodeSize + 1, clear = 1 << minimumCodeSize, maximum = 4096;
    int width = firstWidth, next = clear + 2, held = 0;
    bool clearFlag = false;
    uint32_t word = 0;
    Bytes blocks, packet;
    std::vector<int> keys(5003, -1), codes(5003);
    const auto flush = [&] {
        if (!packet.empty())
            blocks.push_back(static_cast<uint8_t>(packet.size()));
        blocks.insert(blocks.end(), packet.begin(), packet.end());
        packet.clear();
    };
    const auto emit = [&](int code) {
        word |= static_cast<uint32_t>(code) << held;
        held += width;
        for (; held >= 8 || (code == clear + 1 && held > 0); held -= 8, word >>= 8) {
            packet.push_back(static_cast<uint8_t>(word));
            if (packet.size() == 254)
                flush();
        }
        if (clearFlag) {
            width = firstWidth;
            next = clear + 2;
            clearFlag = false;
        } else if (next > (width == 12 ? maximum : (1 << width) - 1)) {
            ++width;
        }
    };
    emit(clear);
    int prefix = pixels[0];
    for (size_t at = 1; at < pixels.size(); ++at) {
        const int index = pixels[at];
        const int key = (index << 12) + prefix;
        int slot = (index << 4) ^ prefix;
        const int displacement = slot == 0 ? 1 : 5003 - slot;
        while (keys[static_cast<size_t>(slot)] >= 0 && keys[static_cast<size_t>(slot)] != key) {
            slot -= displacement;
            slot += slot < 0 ? 5003 : 0;
        }
        if (keys[static_cast<size_t>(slot)] == key) {
            prefix = codes[static_cast<size_t>(slot)];
            continue;
        }
        emit(prefix);
        if (next < maximum) {
            keys[static_cast<size_t>(slot)] = key;
            codes[static_cast<size_t>(slot)] = next++;
        } else {
            std::ranges::fill(keys, -1);
            clearFlag = true;
            emit(clear);
        }
        prefix = index;
    }
    emit(prefix);
    emit(clear + 1);
    flush();
    return blocks;
}

} // namespace reference

namespace {

/// Shades of noise with flat stretches between.
Bytes Indices(size_t count, int bits, uint32_t seed)
{
    std::mt19937 random(seed);
    Bytes indices(count);
    for (size_t at = 0; at < count;) {
        const bool isFlat = random() % 3 == 0;
        const auto flat = static_cast<uint8_t>(random() % (size_t{1} << bits));
        for (size_t length = 1 + random() % 500; length > 0 && at < count; --length, ++at)
            indices[at] = isFlat ? flat : static_cast<uint8_t>(random() % (size_t{1} << bits));
    }
    return indices;
}

std::vector<GifFrame> Frames(const Bytes& file)
{
    CGifReader reader;
    EXPECT_TRUE(reader.Open(file));
    std::vector<GifFrame> frames;
    GifFrame frame;
    while (reader.ConsumedBytes() < reader.DataBytes()) {
        if (reader.NextFrame(frame))
            frames.push_back(std::move(frame));
    }
    return frames;
}

/// A screen of 2 x 2 with black, red, green and blue.
const Bytes kHeader = {'G', 'I', 'F', '8', '9', 'a', 2, 0,   2, 0, 0x81, 3,  0,
                       0,   0,   0,   255, 0,   0,   0, 255, 0, 0, 0,    255};
/// 1, 2, 3, 0 with a minimum code size of 2.
const Bytes kImage = {',', 0, 0, 0, 0, 2, 0, 2, 0, 0, 2, 3, 0x8C, 0x06, 0x05, 0};

Bytes Joined(std::initializer_list<Bytes> parts)
{
    Bytes file;
    for (const Bytes& part : parts)
        file.insert(file.end(), part.begin(), part.end());
    return file;
}

TEST(GifLzw, EncodesTheStatedBytes)
{
    for (int bits = 2; bits <= 8; ++bits) {
        for (const size_t count : {1, 2, 300, 40000, 150000}) {
            const Bytes indices = Indices(count, bits, static_cast<uint32_t>(count));
            Bytes blocks;
            CGifLzwEncoder encoder(bits, blocks);
            encoder.Encode(std::span(indices).first(count / 3));
            encoder.Encode(std::span(indices).subspan(count / 3));
            encoder.Finish();
            ASSERT_EQ(blocks, reference::EncodeLzw(indices, bits)) << bits << ' ' << count;
        }
    }
}

TEST(GifLzw, ReadsBackWhatItWrote)
{
    struct Row {
        const char* name;
        int width, height, bits, colours;
        bool isInterlaced;
    };
    constexpr Row kRows[] = {{"single pixel", 1, 1, 8, 2, false},   {"two colours", 33, 9, 1, 2, false},
                             {"sixteen", 35, 20, 4, 16, true},      {"three rows", 7, 3, 8, 5, true},
                             {"all colours", 640, 480, 8, 0, true}, {"one column", 1, 400, 8, 200, false}};
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.name);
        CPackedDib picture = CPackedDib::Create(row.width, row.height, row.bits, row.colours);
        std::mt19937 random(1);
        for (RgbQuad& colour : picture.ColourTable()) {
            colour = {static_cast<uint8_t>(random()), static_cast<uint8_t>(random()),
                      static_cast<uint8_t>(random()), 0};
        }
        const Bytes indices = Indices(picture.Bits().size(), row.bits, 4);
        for (size_t at = 0; at < indices.size(); ++at)
            picture.Bits()[at] = row.bits < 8
                                     ? static_cast<uint8_t>(random())
                                     : static_cast<uint8_t>(indices[at] % picture.ColourTable().size());
        const int tableSize = GifTableSize(static_cast<uint32_t>(picture.ColourTable().size()));
        CGifWriter writer;
        CRecordingUserInterface progress;
        writer.WriteHeader(picture.Size(), picture.ColourTable(), tableSize, row.bits, 1);
        GifFrameOptions options;
        options.position = {3, 4};
        options.isInterlaced = row.isInterlaced;
        options.tableSize = tableSize;
        options.delay = 7;
        writer.WriteFrame(picture, {}, options, &progress);
        writer.WriteTrailer();
        EXPECT_EQ(progress.positions.back(), 100);

        const std::vector<GifFrame> frames = Frames(writer.Bytes());
        ASSERT_EQ(frames.size(), 1u);
        EXPECT_EQ(frames[0].position, (Point{3, 4}));
        EXPECT_EQ(frames[0].delay, 7);
        ASSERT_EQ(frames[0].dib.Size(), picture.Size());
        for (int y = 0; y < row.height; ++y) {
            for (int x = 0; x < row.width; ++x) {
                const int perByte = 8 / row.bits;
                const int index = picture.Row(y)[x / perByte] >> ((perByte - 1 - x % perByte) * row.bits) &
                                  ((1 << row.bits) - 1);
                RgbQuad colour = picture.ColourTable()[static_cast<size_t>(index)];
                colour.reserved = 255;
                ASSERT_EQ(std::memcmp(frames[0].dib.Row(y) + ptrdiff_t{x} * 4, &colour, 4), 0)
                    << x << ' ' << y;
            }
        }
    }
}

TEST(GifWriter, HeaderAndFrameBytes)
{
    CPackedDib picture = CPackedDib::Create(2, 1, 8, 2);
    picture.ColourTable()[1] = {3, 2, 1, 0};
    picture.Row(0)[1] = 1;
    CGifWriter writer;
    writer.WriteHeader({0x102, 3}, {}, 2, 8, 9);
    GifFrameOptions options;
    options.hasLocalPalette = true;
    options.isInterlaced = true;
    options.tableSize = 2;
    options.disposal = 2;
    options.delay = 0x304;
    options.isTransparent = true;
    options.transparentIndex = 5;
    writer.WriteFrame(picture, {}, options, nullptr);
    writer.WriteTrailer();
    const Bytes expected = {'G',  'I', 'F', '8', '9', 'a', 2,   1, 3, 0,    0x70, 9, 0,  0x21, 0xF9,
                            4,    9,   4,   3,   5,   0,   ',', 0, 0, 0,    0,    2, 0,  1,    0,
                            0xC0, 0,   0,   0,   1,   2,   3,   2, 2, 0x44, 0x0A, 0, ';'};
    EXPECT_EQ(writer.Bytes(), expected);
}

TEST(GifWriter, ChoosesTheTransparentIndex)
{
    EXPECT_EQ(GifTableSize(0), 2);
    EXPECT_EQ(GifTableSize(3), 4);
    EXPECT_EQ(GifTableSize(129), 256);
    EXPECT_EQ(GifTableSize(257), 2);
    CPackedDib picture = CPackedDib::Create(5, 1, 8, 4);
    std::ranges::copy(Bytes{0, 1, 2, 3, 3}, picture.Row(0));
    CPackedDib mask = CPackedDib::Create(5, 1, 1);
    EXPECT_EQ(FindTransparentIndex(picture, mask, 2, 4), std::nullopt);
    EXPECT_EQ(FindTransparentIndex(picture, mask, 7, 8), 7);
    mask.Row(0)[0] = 0x60;
    EXPECT_EQ(FindTransparentIndex(picture, mask, 0, 4), 1);
    EXPECT_EQ(FindTransparentIndex(picture, mask, 2, 4), 2);

    GifFrameOptions options;
    options.tableSize = 4;
    options.isTransparent = true;
    options.transparentIndex = 2;
    CGifWriter writer;
    writer.WriteHeader({5, 1}, picture.ColourTable(), 4, 8, 0);
    writer.WriteFrame(picture, mask, options, nullptr);
    const std::vector<GifFrame> frames = Frames(writer.Bytes());
    ASSERT_EQ(frames.size(), 1u);
    const bool opaque[] = {true, false, false, true, true};
    for (int x = 0; x < 5; ++x)
        EXPECT_EQ(PixelOf(frames[0].dib, x, 0) >> 24 != 0, opaque[x]) << x;
}

TEST(GifReader, ReadsFramesBetweenOtherBlocks)
{
    const Bytes control = {'!', 0xF9, 4, 1, 8, 1, 2, 0};
    const Bytes file = Joined({kHeader,
                               {'!', 0xFF, 2, 'a', ',', 0, 0, 0},
                               control,
                               kImage,
                               {';', 77, '!', 9},
                               kImage,
                               {'!', 0xFE, 3, ',', ',', ',', 0, '!', 0x01, 1, 'x', 0},
                               kImage});
    const std::vector<GifFrame> frames = Frames(file);
    ASSERT_EQ(frames.size(), 3u);
    EXPECT_TRUE(SameBytes(frames[0].dib, DibOf(2, 2, {0xFFFF0000, 0x0000FF00, 0xFF0000FF, 0xFF000000})));
    EXPECT_EQ(frames[0].graphicControlByte, 1);
    EXPECT_EQ(frames[0].delay, 0x108);
    EXPECT_EQ(frames[0].transparentIndex, 2);
    EXPECT_TRUE(SameBytes(frames[2].dib, DibOf(2, 2, {0xFFFF0000, 0xFF00FF00, 0xFF0000FF, 0xFF000000})));
    EXPECT_EQ(frames[2].transparentIndex, 255);
}

TEST(GifReader, KeepsWhatADefectLeaves)
{
    struct Row {
        const char* name;
        Bytes data; ///< minimum code size and sub-blocks
        int pixels; ///< decoded; -1: no frame
    };
    // Codes of three bits: clear is 4, end is 5, the first free one is 6.
    const Row kRows[] = {
        {"no clear code at the start", {2, 1, 0x11 | 0x40, 1, 0x01, 0}, 2},
        {"code out of range", {2, 1, 0xCC, 1, 1, 0}, 1},
        {"code out of range after clear", {2, 1, 4 | 6 << 3, 0}, -1},
        {"second clear code is the first pixel", {2, 2, 0x24, 0x0A, 0}, 2},
        {"ends without end code", {2, 1, 0x8C, 0}, 1},
        {"ends in the file", {2, 200, 0x8C, 0x06}, 4},
        {"code size too large", {12, 3, 0x8C, 0x06, 0x05, 0}, -1},
        {"more pixels than the picture has", {2, 5, 0x8C, 0x06, 0x81, 0x20, 0x05, 0}, 4},
    };
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.name);
        const Bytes image(kImage.begin(), kImage.begin() + 10);
        std::vector<GifFrame> frames = Frames(Joined({kHeader, image, row.data}));
        ASSERT_EQ(frames.size(), row.pixels < 0 ? 0u : 1u);
        int pixels = 0;
        for (int at = 0; row.pixels >= 0 && at < 4; ++at)
            pixels += PixelOf(frames[0].dib, at % 2, at / 2) != 0 ? 1 : 0;
        EXPECT_EQ(pixels, std::max(row.pixels, 0));
    }
}

TEST(GifReader, RefusesIncompleteHeaders)
{
    CGifReader reader;
    for (size_t length = 0; length < kHeader.size(); ++length)
        EXPECT_FALSE(reader.Open(std::span(kHeader).first(length)));
    Bytes other = kHeader;
    other[4] = '8';
    EXPECT_FALSE(reader.Open(other));
}

TEST(GifReader, SurvivesDamage)
{
    std::mt19937 random(2);
    // Images that claim all the memory there is.
    Bytes greedy = kHeader;
    for (int count = 0; count < 2000; ++count)
        greedy = Joined({greedy, {',', 0, 0, 0, 0, 255, 255, 255, 7, 0, 2, 1, 0x2C, 0}});
    EXPECT_LE(Frames(greedy).size(), 1u);
    const Bytes good = Joined(
        {kHeader, kImage, {'!', 0xF9, 4, 1, 8, 1, 2, 0}, kImage, {'!', 0xFE, 2, 1, 2, 0}, kImage, {';'}});
    for (int round = 0; round < 3000; ++round) {
        Bytes file = good;
        for (size_t count = 1 + random() % 6; count > 0; --count)
            file[13 + random() % (file.size() - 13)] = static_cast<uint8_t>(random());
        for (const GifFrame& frame : Frames(file))
            EXPECT_FALSE(frame.dib.IsEmpty());
    }
}

} // namespace
