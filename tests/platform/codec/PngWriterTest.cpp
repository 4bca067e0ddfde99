// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/codec/PngWriter.h"

#include "platform/codec/CodecSupport.h"
#include "platform/codec/DeflateJoint.h"

#include <libdeflate.h>

#include <random>

namespace {

/// What a reader must give back for a picture written with fewer channels.
CPackedDib Expected(const CPackedDib& dib, PngColour colour)
{
    CPackedDib expected = dib.Duplicate();
    for (int y = 0; y < dib.Height() && colour != PngColour::Rgba; ++y) {
        for (int x = 0; x < dib.Width(); ++x)
            expected.Row(y)[x * 4 + 3] = 255;
    }
    return expected;
}

} // namespace

TEST(PngWriter, WhatIsReadIsWhatWasWritten)
{
    struct Row {
        const char* name;
        int width, height;
        PngColour colour;
    };
    constexpr Row kCases[] = {{"single pixel", 1, 1, PngColour::Rgba},
                              {"one column", 1, 70, PngColour::Rgb},
                              {"shorter than a vector", 7, 5, PngColour::Rgb},
                              {"odd width", 333, 40, PngColour::Rgba},
                              {"several bands", 1501, 1103, PngColour::Rgba},
                              {"several bands without alpha", 2003, 901, PngColour::Rgb}};
    const CTemporaryFolder folder;
    for (const Row& row : kCases) {
        SCOPED_TRACE(row.name);
        const CPackedDib picture = MixedPicture(row.width, row.height);
        ASSERT_TRUE(WritePng(folder.File("out.png"), PngPictureOf(ViewOf(picture), row.colour)));
        EXPECT_TRUE(SameBytes(LoadPicture(folder.File("out.png")), Expected(picture, row.colour)));
    }
}

TEST(PngWriter, GreyPixelsAreOneByteEach)
{
    std::vector<uint8_t> grey(61 * 3);
    for (size_t index = 0; index < grey.size(); ++index)
        grey[index] = static_cast<uint8_t>(index * 7);
    const CTemporaryFolder folder;
    const PngPicture picture = {grey.data(), 61, 61, 3, PngColour::Grey};
    ASSERT_TRUE(WritePng(folder.File("grey.png"), picture));
    const CPackedDib read = LoadPicture(folder.File("grey.png"));
    ASSERT_FALSE(read.IsEmpty());
    for (int y = 0; y < 3; ++y) {
        for (int x = 0; x < 61; ++x) {
            const uint32_t value = grey[static_cast<size_t>(y * 61 + x)];
            ASSERT_EQ(PixelOf(read, x, y), 0xff000000u | value << 16 | value << 8 | value);
        }
    }
}

TEST(PngWriter, FailsWithoutMemoryOrFolder)
{
    const CPackedDib picture = MixedPicture(40, 40);
    EXPECT_FALSE(WritePng("/absent/folder/x.png", PngPictureOf(ViewOf(picture))));
    for (int64_t after = 0; after < 4; ++after) {
        const CAllocationFailure failure(after);
        EXPECT_TRUE(EncodePng(PngPictureOf(ViewOf(picture))).IsEmpty());
    }
}

TEST(DeflateJoint, JoinedStreamsInflateToTheJoinedData)
{
    std::mt19937 random(5);
    for (int level = 0; level <= 12; level += 3) {
        SCOPED_TRACE(level);
        std::vector<uint8_t> all;
        std::vector<uint8_t> joined;
        libdeflate_compressor* compressor = libdeflate_alloc_compressor(level);
        for (int part = 0; part < 12; ++part) {
            // From a single byte over runs to noise, so that every kind of block occurs.
            std::vector<uint8_t> data(part == 0 ? 1 : random() % 90'000);
            for (uint8_t& byte : data)
                byte = static_cast<uint8_t>(random() % (part % 3 == 0 ? 256 : part % 3 == 1 ? 5 : 1));
            std::vector<uint8_t> stream(libdeflate_deflate_compress_bound(compressor, data.size()) +
                                        kDeflateJointBytes);
            size_t size = libdeflate_deflate_compress(compressor, data.data(), data.size(), stream.data(),
                                                      stream.size());
            if (part < 11) {
                const std::optional<size_t> opened = OpenDeflateStream(stream, size);
                ASSERT_TRUE(opened);
                size = *opened;
            }
            all.insert(all.end(), data.begin(), data.end());
            joined.insert(joined.end(), stream.begin(), stream.begin() + static_cast<ptrdiff_t>(size));
        }
        libdeflate_free_compressor(compressor);
        std::vector<uint8_t> inflated(all.size());
        libdeflate_decompressor* decompressor = libdeflate_alloc_decompressor();
        EXPECT_EQ(libdeflate_deflate_decompress(decompressor, joined.data(), joined.size(), inflated.data(),
                                                inflated.size(), nullptr),
                  LIBDEFLATE_SUCCESS);
        libdeflate_free_decompressor(decompressor);
        EXPECT_EQ(inflated, all);
    }
}
