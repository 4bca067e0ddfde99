// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Limits.h"

#include "fileio/DocumentFiles.h"
#include "fileio/FilePreview.h"
#include "fileio/SaveAs.h"
#include "support/TestDocument.h"
#include "support/TestFiles.h"

#include <libdeflate.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <string_view>

namespace {

namespace fs = std::filesystem;
using Bytes = std::vector<uint8_t>;
using namespace std::chrono_literals;

constexpr int kWidth = 41;
constexpr int kHeight = 31;
/// Together more than a picture may have, whichever way a format writes them.
constexpr uint32_t kHuge = 30000;
static_assert(int64_t{kHuge} * kHuge > kMaxPicturePixels);

struct LimitsTest : testing::Test {
    LimitsTest()
    {
        test.doc.Canvas().width = kWidth;
        test.doc.Canvas().height = kHeight;
        test.Add(RandomDib(kWidth, kHeight, 3), 0, 0, true);
    }
    void ExpectRefused(const fs::path& path)
    {
        TestDocument other;
        const auto begin = std::chrono::steady_clock::now();
        EXPECT_FALSE(OpenIntoDocument(other.doc, path));
        EXPECT_LT(std::chrono::steady_clock::now() - begin, 10s);
        EXPECT_EQ(other.ui.TakeMessages(),
                  (std::vector<std::string>{"Load file " + path.string() + " fail!"}));
    }
    TestDocument test;
    const CTemporaryFolder folder;
};

Bytes Coded(uint32_t value, size_t bytes, bool isBig)
{
    Bytes coded(bytes);
    for (size_t at = 0; at < bytes; ++at)
        coded[isBig ? bytes - 1 - at : at] = static_cast<uint8_t>(value >> (8 * at));
    return coded;
}

/// Puts other bytes wherever some stand, and says how often.
int Replace(Bytes& file, const Bytes& old, const Bytes& next)
{
    int count = 0;
    for (auto at = file.begin(); (at = std::search(at, file.end(), old.begin(), old.end())) != file.end();
         at += static_cast<ptrdiff_t>(old.size()), ++count)
        std::ranges::copy(next, at);
    return count;
}

/// How a format writes its size: two numbers after one another, or each behind a tag.
struct SizeRow {
    std::string_view extension;
    size_t bytes;
    bool isBig;
    bool isHeightFirst;
    uint32_t width = kWidth;
    uint32_t height = kHeight;
};

constexpr SizeRow kSizes[] = {
    {".bmp", 4, false, false},
    {".jpg", 2, true, true},
    {".pcx", 2, false, false, kWidth - 1, kHeight - 1},
    {".png", 4, true, false},
    {".tga", 2, false, false},
    {".gif", 2, false, false},
    {".psd", 4, true, true},
    {".ico", 4, false, false, kWidth, 2 * kHeight},
    {".cur", 4, false, false, kWidth, 2 * kHeight},
    {".ani", 4, false, false, kWidth, 2 * kHeight},
    {".pxd", 4, false, false},
    {".tif", 0, false, false},
};

void Enlarge(Bytes& file, const SizeRow& row)
{
    if (row.bytes == 0) {
        // TIFF: tag, type, count, value
        for (const auto& [tag, value] : {std::pair{256u, row.width}, std::pair{257u, row.height}}) {
            Bytes entry = Coded(tag, 2, false);
            Bytes huge = entry;
            // The type is 16 or 32 bits, as the writer likes it.
            for (const uint32_t type : {3u, 4u}) {
                Bytes old = entry;
                Bytes next = huge;
                for (Bytes* bytes : {&old, &next}) {
                    const Bytes kind = Coded(type, 2, false);
                    const Bytes one = Coded(1, 4, false);
                    bytes->insert(bytes->end(), kind.begin(), kind.end());
                    bytes->insert(bytes->end(), one.begin(), one.end());
                    const Bytes number = Coded(bytes == &old ? value : kHuge, 4, false);
                    bytes->insert(bytes->end(), number.begin(), number.end());
                }
                Replace(file, old, next);
            }
        }
        return;
    }
    const auto pair = [&](uint32_t width, uint32_t height) {
        Bytes first = Coded(row.isHeightFirst ? height : width, row.bytes, row.isBig);
        const Bytes second = Coded(row.isHeightFirst ? width : height, row.bytes, row.isBig);
        first.insert(first.end(), second.begin(), second.end());
        return first;
    };
    EXPECT_GT(Replace(file, pair(row.width, row.height), pair(kHuge, kHuge)), 0);
    if (row.extension == ".png") {
        constexpr size_t kHeader = 12;
        constexpr size_t kHeaderBytes = 17;
        std::ranges::copy(Coded(libdeflate_crc32(0, file.data() + kHeader, kHeaderBytes), 4, true),
                          file.begin() + kHeader + kHeaderBytes);
    }
}

TEST_F(LimitsTest, PicturesThatAreTooLargeAreRefused)
{
    for (const SizeRow& row : kSizes) {
        SCOPED_TRACE(row.extension);
        const fs::path path = folder.File(std::string("a").append(row.extension));
        ASSERT_TRUE(row.extension == ".pxd" ? SaveDocument(test.doc, path)
                                            : SaveDocumentAs(test.doc, path, *FindSaveFormat(path), {}));
        Bytes file = FileContents(path);
        const Bytes before = file;
        Enlarge(file, row);
        EXPECT_NE(file, before);
        WriteContents(path, file);
        if (row.extension != ".gif") {
            ExpectRefused(path);
            continue;
        }
        // Images that cannot be true are left out, the screen costs nothing.
        TestDocument other;
        EXPECT_TRUE(OpenIntoDocument(other.doc, path));
        EXPECT_TRUE(other.doc.Canvas().objects.IsEmpty());
    }
}

void Append(Bytes& file, std::initializer_list<uint32_t> values, size_t bytes, bool isBig)
{
    for (const uint32_t value : values) {
        const Bytes coded = Coded(value, bytes, isBig);
        file.insert(file.end(), coded.begin(), coded.end());
    }
}

/// A grey JPG picture whose samples are all in the middle: one bit for each block of 64 in every scan.
Bytes JpgFile(uint32_t width, uint32_t height, size_t scans, bool isProgressive)
{
    Bytes file{0xFF, 0xD8, 0xFF, 0xDB, 0, 67, 0};
    file.resize(file.size() + 64, 1);
    Append(file, {isProgressive ? 0xFFC2u : 0xFFC0u, 11}, 2, true);
    file.push_back(8);
    Append(file, {height, width}, 2, true);
    file.insert(file.end(), {1, 1, 0x11, 0});
    // A code of one bit, 0, for "no difference" and "no more coefficients".
    for (const uint8_t table : {uint8_t{0}, uint8_t{0x10}}) {
        file.insert(file.end(), {0xFF, 0xC4, 0, 20, table, 1});
        file.resize(file.size() + 16);
    }
    const size_t blocks = size_t{(width + 7) / 8} * ((height + 7) / 8);
    for (size_t scan = 0; scan < scans; ++scan) {
        file.insert(file.end(),
                    {0xFF, 0xDA, 0, 8, 1, 1, 0, 0, static_cast<uint8_t>(isProgressive ? 0 : 63), 0});
        file.resize(file.size() + blocks * (isProgressive ? 1 : 2) / 8 + 1);
    }
    file.insert(file.end(), {0xFF, 0xD9});
    return file;
}

Bytes JpgOfLength(uint32_t side, size_t bytes)
{
    Bytes file = JpgFile(side, side, 1, false);
    file.resize(bytes);
    return file;
}

void AppendPngChunk(Bytes& file, std::string_view name, Bytes content)
{
    Append(file, {static_cast<uint32_t>(content.size())}, 4, true);
    content.insert(content.begin(), name.begin(), name.end());
    file.insert(file.end(), content.begin(), content.end());
    Append(file, {libdeflate_crc32(0, content.data(), content.size())}, 4, true);
}

Bytes Deflated(size_t zeroes)
{
    const Bytes plain(zeroes);
    Bytes packed(zeroes / 500 + 1000);
    const std::unique_ptr<libdeflate_compressor, decltype(&libdeflate_free_compressor)> compressor(
        libdeflate_alloc_compressor(6), &libdeflate_free_compressor);
    packed.resize(
        libdeflate_zlib_compress(compressor.get(), plain.data(), plain.size(), packed.data(), packed.size()));
    return packed;
}

/// A picture of zeroes whose data give so many bytes when they are inflated.
Bytes PngFile(uint32_t side, size_t inflated, size_t padding = 0, size_t text = 0)
{
    Bytes file{0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
    Bytes header;
    Append(header, {side, side}, 4, true);
    header.insert(header.end(), {8, 6, 0, 0, 0});
    AppendPngChunk(file, "IHDR", header);
    AppendPngChunk(file, "paDd", Bytes(padding));
    Bytes words{'a', 0, 0};
    const Bytes packed = Deflated(text);
    words.insert(words.end(), packed.begin(), packed.end());
    AppendPngChunk(file, "zTXt", words);
    AppendPngChunk(file, "IDAT", Deflated(inflated));
    AppendPngChunk(file, "IEND", {});
    return file;
}

struct TiffShape {
    uint32_t width, height, samples, bits;
    uint32_t tile = 0; ///< side; 0: one strip
};

/// Four bytes of data, whatever they are said to be.
Bytes TiffFile(const TiffShape& shape)
{
    std::vector<std::pair<uint32_t, uint32_t>> tags{
        {256, shape.width}, {257, shape.height}, {258, shape.bits}, {259, 1}, {262, 1}, {277, shape.samples}};
    if (shape.tile == 0)
        tags.insert(tags.end(), {{273, 8}, {278, shape.height}, {279, 4}});
    else
        tags.insert(tags.end(), {{322, shape.tile}, {323, shape.tile}, {324, 8}, {325, 4}});
    std::ranges::sort(tags);
    Bytes file{'I', 'I', 42, 0, 12, 0, 0, 0, 1, 2, 3, 4};
    Append(file, {static_cast<uint32_t>(tags.size())}, 2, false);
    for (const auto& [tag, value] : tags) {
        Append(file, {tag, 4}, 2, false);
        Append(file, {1, value}, 4, false);
    }
    Append(file, {0}, 4, false);
    return file;
}

/// Objects that share the pixels of one, all of which are 0.
Bytes NativeFile(uint32_t side, uint32_t objects)
{
    Bytes file{'P', 'X', 'D', ' ', '2', '0', '0', '0'};
    Append(file, {0, 0, side, side, 0, 0, objects}, 4, false);
    for (uint32_t object = 0; object < objects; ++object) {
        Append(file, {side, side}, 4, false);
        file.resize(file.size() + 48);
        Append(file, {0, 0, 1, 36 + 76 * objects, 0}, 4, false);
    }
    constexpr uint32_t kLongestRun = 128;
    for (uint32_t row = 0; row < 4 * side; ++row) {
        for (uint32_t left = side; left > 0; left -= std::min(left, kLongestRun))
            file.insert(file.end(), {static_cast<uint8_t>(257 - std::min(left, kLongestRun)), 0});
    }
    return file;
}

/// On both sides of each bound where a file on the right side costs little.
TEST_F(LimitsTest, FilesThatClaimTooMuchAreRefused)
{
    constexpr uint32_t kSide = 2048;
    constexpr size_t kPixels = size_t{kSide} * kSide;
    constexpr size_t kMostScans = kMaxJpgScannedPixels / kPixels;
    static_assert(kMostScans > kFewestJpgScans && kMostScans < kMostJpgScans);
    constexpr uint32_t kManyPixels = 5000;
    static_assert(uint64_t{kManyPixels} * kManyPixels > kFreePixels);
    const struct {
        std::string_view name;
        std::string_view extension;
        Bytes file;
        bool isRead;
    } rows[] = {
        {"scans of a small picture", "jpg", JpgFile(8, 8, kMostJpgScans, true), true},
        {"more of them", "jpg", JpgFile(8, 8, kMostJpgScans + 1, true), false},
        {"scans of a large picture", "jpg", JpgFile(kSide, kSide, kMostScans, true), true},
        {"more of them", "jpg", JpgFile(kSide, kSide, kMostScans + 1, true), false},
        {"pixels of a cut JPG file", "jpg", JpgOfLength(kSide, kPixels / kMaxJpgPixelsPerByte), true},
        {"more than it can hold", "jpg", JpgOfLength(kSide, kPixels / kMaxJpgPixelsPerByte - 1), false},
        {"data for one pixel that give many", "png", PngFile(1, 50'000'000), true},
        {"a text that gives many bytes", "png", PngFile(1, 5, 0, 50'000'000), true},
        {"rows that the file could hold", "png", PngFile(kManyPixels, 4 * kManyPixels + 1, 100'000), true},
        {"rows that it cannot", "png", PngFile(kManyPixels, 4 * kManyPixels + 1), false},
        {"a TIFF strip", "tif", TiffFile({2, 2, 1, 8}), true},
        {"rows too long for a buffer", "tif", TiffFile({1 << 24, 1, 16, 16}), false},
        {"tiles too large for a buffer", "tif", TiffFile({16, 16, 4, 8, 1 << 14}), false},
        {"too many bytes of samples", "tif", TiffFile({1 << 14, 1 << 13, 9, 16}), false},
        {"native objects that share pixels", "pxd", NativeFile(2100, 3), true},
        {"too many of them", "pxd", NativeFile(2100, 4), false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.name) + ' ' + std::string(row.extension));
        const fs::path path = folder.File(std::string("a.").append(row.extension));
        WriteContents(path, row.file);
        if (!row.isRead) {
            ExpectRefused(path);
            continue;
        }
        TestDocument other;
        const auto begin = std::chrono::steady_clock::now();
        EXPECT_TRUE(OpenIntoDocument(other.doc, path));
        EXPECT_LT(std::chrono::steady_clock::now() - begin, 10s);
    }
}

TEST(CPreviewCollector, TakesPicturesUntilTheyAreTooManyPixels)
{
    constexpr int kSide = 4096;
    const CPackedDib picture = UniformDib(kSide, kSide, 0xFF336699);
    FilePreview preview;
    CPreviewCollector collector(preview, {8, 8}, {});
    int64_t pixels = 0;
    while (collector.Take(picture))
        pixels += int64_t{kSide} * kSide;
    EXPECT_EQ(pixels + int64_t{kSide} * kSide, kMostPreviewPixels);
}

TEST_F(LimitsTest, FilesThatAreTooLongAreNotRead)
{
    for (const std::string_view ending :
         {"bmp", "jpg", "pcx", "png", "tga", "tif", "gif", "ico", "cur", "ani", "psd", "pxd"}) {
        SCOPED_TRACE(ending);
        const fs::path path = folder.File(std::string("long.").append(ending));
        WriteContents(path, {});
        fs::resize_file(path, static_cast<uintmax_t>(ending == "pxd" ? kMaxNativeBytes : kMaxFileBytes) + 1);
        ExpectRefused(path);
        fs::remove(path);
    }
}

} // namespace
