// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/codec/CodecSupport.h"

#include <algorithm>
#include <random>

namespace {

const std::vector<std::string> kFormats = {"bmp", "jpg", "pcx", "png", "tga", "tif"};

} // namespace

TEST(Corpus, LoadsAsExpected)
{
    REQUIRE_CORPUS(folder, "");
    for (const CorpusFile& file : CorpusFiles(kFormats)) {
        SCOPED_TRACE(file.path);
        const CPackedDib dib = LoadPicture(folder / file.path);
        if (file.expect != "either") {
            EXPECT_EQ(dib.IsEmpty(), file.expect == "must-fail");
        }
        if (dib.IsEmpty())
            continue;
        EXPECT_EQ(dib.Width(), file.width);
        EXPECT_EQ(dib.Height(), file.height);
        if (file.truth != "-") {
            EXPECT_TRUE(Matches(dib, LoadPicture(folder / file.truth), file.compare));
        }
    }
}

TEST(Corpus, TruncatedFilesLoadInPartOrFail)
{
    REQUIRE_CORPUS(folder, "");
    const CTemporaryFolder temporary;
    int loaded = 0;
    for (const char* name :
         {"jpg/turbo-420.jpg", "jpg/tower-progressive.jpg", "png/basn2c16.png", "png/basi3p04.png",
          "bmp/suite-pal4rle.bmp", "bmp/suite-rgb16-565.bmp", "tga/200x32-rgb-bottom-rle.tga",
          "pcx/rose-4planes.pcx", "tif/flower-planar.tif", "tif/commons-jpeg-tiles.tiff"}) {
        SCOPED_TRACE(name);
        const std::vector<uint8_t> whole = FileContent(folder / name);
        const CPackedDib complete = LoadPicture(folder / name);
        const std::filesystem::path path =
            temporary.File("cut" + std::filesystem::path(name).extension().string());
        for (size_t step = 0; step < 60; ++step) {
            // Every byte of the headers, then spread over the rest.
            const size_t size = step < 20 ? step * 6 : whole.size() * (step - 20) / 40;
            SCOPED_TRACE(size);
            const CPackedDib part = LoadBytes(std::span(whole).first(std::min(size, whole.size())), path);
            if (part.IsEmpty())
                continue;
            EXPECT_EQ(part.Size(), complete.Size());
            ++loaded;
        }
        // Nearly whole, something must be there; the directory of a TIFF file often is its end.
        if (path.extension() != ".tif" && path.extension() != ".tiff") {
            EXPECT_FALSE(LoadBytes(std::span(whole).first(whole.size() * 9 / 10), path).IsEmpty());
        }
    }
    EXPECT_GT(loaded, 0);
}

TEST(Corpus, DamagedFilesLoadOrFail)
{
    REQUIRE_CORPUS(folder, "");
    const CTemporaryFolder temporary;
    std::mt19937 random(3);
    int loaded = 0;
    for (const CorpusFile& file : CorpusFiles(kFormats)) {
        SCOPED_TRACE(file.path);
        const std::vector<uint8_t> whole = FileContent(folder / file.path);
        const std::string extension = std::filesystem::path(file.path).extension().string();
        for (int step = 0; step < 8 && !whole.empty() && whole.size() < 100'000; ++step) {
            std::vector<uint8_t> damaged = whole;
            // Mostly in the header, where the numbers are that other things depend on.
            for (uint32_t count = 1 + random() % 4; count > 0; --count)
                damaged[random() % (step % 3 == 0 ? damaged.size() : std::min<size_t>(damaged.size(), 150))] =
                    static_cast<uint8_t>(random() % 3 == 0 ? 255 : random());
            const CPackedDib dib = LoadBytes(damaged, temporary.File("damaged" + extension));
            loaded += dib.IsEmpty() ? 0 : 1;
        }
    }
    EXPECT_GT(loaded, 0);
}
