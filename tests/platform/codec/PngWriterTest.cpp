// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/codec/PngWriter.h"

#include "platform/codec/CodecSupport.h"
#include "platform/codec/DeflateJoint.h"
#include "platform/codec/PngFilter.h"

#include <libdeflate.h>

#include <algorithm>
#include <cstdlib>
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

TEST(PngFilter, FollowsTheDefinitionAndIsUndone)
{
    constexpr size_t kMargin = 16;
    for (const int channels : {3, 4}) {
        for (const int width : {1, 2, 21, 100}) {
            SCOPED_TRACE(width * 10 + channels);
            const CPackedDib picture = MixedPicture(width, 2);
            const size_t bytes = static_cast<size_t>(width * channels);
            const auto step = static_cast<size_t>(channels);
            std::vector<uint8_t> row(kMargin + bytes);
            std::vector<uint8_t> above(kMargin + bytes);
            PackPngRow(picture.Row(0), width, channels, above.data() + kMargin);
            PackPngRow(picture.Row(1), width, channels, row.data() + kMargin);
            std::vector<std::vector<uint8_t>> filtered(kPngFilters, std::vector<uint8_t>(bytes + 4));
            uint8_t* const results[kPngFilters] = {filtered[0].data(), filtered[1].data(), filtered[2].data(),
                                                   filtered[3].data(), filtered[4].data()};
            uint64_t costs[kPngFilters] = {};
            FilterPngRow(row.data() + kMargin, above.data() + kMargin, bytes, step, results, costs);
            std::copy_n(row.begin() + kMargin, bytes, filtered[0].begin());
            uint64_t sums[kPngFilters] = {};
            for (size_t at = kMargin; at < kMargin + bytes; ++at) {
                const int left = row[at - step];
                const int up = above[at];
                const int corner = above[at - step];
                const int estimate = left + up - corner;
                const int nearest = std::min(
                    {std::abs(estimate - left), std::abs(estimate - up), std::abs(estimate - corner)});
                const int paeth = std::abs(estimate - left) == nearest ? left
                                  : std::abs(estimate - up) == nearest ? up
                                                                       : corner;
                const int predicted[kPngFilters] = {0, left, up, (left + up) / 2, paeth};
                for (size_t filter = 0; filter < kPngFilters; ++filter) {
                    const auto value = static_cast<uint8_t>(row[at] - predicted[filter]);
                    ASSERT_EQ(filtered[filter][at - kMargin], value) << filter;
                    sums[filter] += value < 128 ? value : 256u - value;
                }
            }
            const CPackedDib expected = Expected(picture, channels == 3 ? PngColour::Rgb : PngColour::Rgba);
            for (size_t filter = 0; filter < kPngFilters; ++filter) {
                EXPECT_EQ(costs[filter], sums[filter]);
                CPackedDib undone = expected.Duplicate();
                std::fill_n(undone.Row(1), undone.Stride(), uint8_t{9});
                UnfilterPngRow(static_cast<PngFilter>(filter), filtered[filter].data(), undone.Row(0), width,
                               channels, undone.Row(1));
                EXPECT_TRUE(SameBytes(undone, expected));
            }
        }
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
