// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Limits.h"

#include "fileio/DocumentFiles.h"
#include "fileio/SaveAs.h"
#include "support/TestDocument.h"
#include "support/TestFiles.h"

#include <libdeflate.h>

#include <algorithm>
#include <chrono>
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
