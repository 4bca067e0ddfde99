// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/codec/SaveImage.h"

#include "platform/codec/CodecSupport.h"
#include "platform/codec/SaveOptions.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <functional>

namespace {

constexpr uint32_t kOpaque = 0xff000000;

CPackedDib Mapped(const CPackedDib& dib, const std::function<uint32_t(uint32_t)>& map)
{
    CPackedDib mapped = dib.Duplicate();
    for (int y = 0; y < dib.Height(); ++y) {
        for (int x = 0; x < dib.Width(); ++x) {
            const uint32_t pixel = map(PixelOf(dib, x, y));
            std::memcpy(mapped.Row(y) + ptrdiff_t{x} * 4, &pixel, sizeof pixel);
        }
    }
    return mapped;
}

CPackedDib Opaque(const CPackedDib& dib)
{
    return Mapped(dib, [](uint32_t pixel) { return pixel | kOpaque; });
}

/// Noise of any depth, with a palette of noise.
CPackedDib Noise(int width, int height, int bits)
{
    CPackedDib dib = RandomDib(width, height, 21, bits);
    uint32_t seed = 22;
    for (RgbQuad& colour : dib.ColourTable()) {
        seed = seed * 1664525 + 1013904223;
        colour = {static_cast<uint8_t>(seed >> 8), static_cast<uint8_t>(seed >> 16),
                  static_cast<uint8_t>(seed >> 24), 0};
    }
    return dib;
}

/// What the pixels of `dib` mean, computed one by one from the format's definition.
CPackedDib MeaningOf(const CPackedDib& dib)
{
    CPackedDib meaning = CPackedDib::Create(dib.Width(), dib.Height(), 32);
    for (int y = 0; y < dib.Height(); ++y) {
        for (int x = 0; x < dib.Width(); ++x) {
            const int bits = dib.BitCount();
            uint32_t value = 0;
            for (int bit = 0; bit < std::min(bits, 8); ++bit) {
                const int at = x * bits + bit;
                value = value << 1 | ((dib.Row(y)[at / 8] >> (7 - at % 8)) & 1);
            }
            uint32_t pixel = 0;
            if (bits <= 8) {
                std::memcpy(&pixel, &dib.ColourTable()[value], sizeof pixel);
            } else if (bits == 16) {
                std::memcpy(&value, dib.Row(y) + ptrdiff_t{x} * 2, 2);
                for (const int shift : {10, 5, 0})
                    pixel = pixel << 8 | (((value >> shift) & 31) * 255 + 15) / 31;
            } else {
                std::memcpy(&pixel, dib.Row(y) + ptrdiff_t{x} * (bits / 8), static_cast<size_t>(bits / 8));
            }
            if (bits != 32)
                pixel |= kOpaque;
            std::memcpy(meaning.Row(y) + ptrdiff_t{x} * 4, &pixel, sizeof pixel);
        }
    }
    return meaning;
}

uint32_t LargestDifference(const CPackedDib& a, const CPackedDib& b)
{
    int largest = a.Size() == b.Size() ? 0 : 256;
    for (size_t at = 0; largest < 256 && at < a.Bits().size(); ++at)
        largest = std::max(largest, std::abs(int{a.Bits()[at]} - int{b.Bits()[at]}));
    return static_cast<uint32_t>(largest);
}

uint32_t TiffValue(TiffCompression compression)
{
    return TiffOptions{compression}.Value();
}

} // namespace

TEST(SaveImage, LosslessFormatsGiveBackEveryPixel)
{
    struct Row {
        const char* name;
        uint32_t option;
        bool keepsAlpha;
    };
    const Row kCases[] = {{"a.png", 0, true},
                          {"a.PNG", PngOptions{RgbQuad{1, 2, 3, 0}}.Value(), true},
                          {"plain.tga", TgaOptions{false, false}.Value(), true},
                          {"runs.tga", TgaOptions{true, false}.Value(), true},
                          {"bottomup.tga", TgaOptions{false, true}.Value(), true},
                          {"runsbottomup.Tga", TgaOptions{true, true}.Value(), true},
                          {"none.tif", TiffValue(TiffCompression::None), true},
                          {"lzw.tiff", TiffValue(TiffCompression::Lzw), true},
                          {"deflate.tif", TiffValue(TiffCompression::Deflate), true},
                          {"adobe.tif", TiffValue(TiffCompression::AdobeDeflate), true},
                          {"unknown.tif", 77, true},
                          {"a.pcx", 0, false}};
    const CTemporaryFolder folder;
    for (const Row& row : kCases) {
        SCOPED_TRACE(row.name);
        for (const Size size : {Size{1, 1}, Size{3, 700}, Size{641, 90}}) {
            const CPackedDib picture = MixedPicture(size.width, size.height);
            const CPackedDib opaque = Opaque(picture);
            ASSERT_TRUE(CImage::SaveImageFile(folder.File(row.name), picture, row.option, nullptr));
            EXPECT_TRUE(SameBytes(LoadPicture(folder.File(row.name)), row.keepsAlpha ? picture : opaque));
            ASSERT_TRUE(CImage::SaveImageFile(folder.File(row.name), opaque, row.option, nullptr));
            EXPECT_TRUE(SameBytes(LoadPicture(folder.File(row.name)), opaque));
        }
    }
}

TEST(SaveImage, EveryDepthOfBmpAndPalettePcxComesBack)
{
    const CTemporaryFolder folder;
    for (const int bits : {1, 4, 8, 16, 24, 32}) {
        SCOPED_TRACE(bits);
        const CPackedDib picture = Noise(45, 17, bits);
        ASSERT_TRUE(CImage::SaveImageFile(folder.File("a.bmp"), picture, 85, nullptr));
        EXPECT_TRUE(SameBytes(LoadPicture(folder.File("a.bmp")), MeaningOf(picture)));
        const bool fitsPcx = bits == 8 || bits == 32;
        EXPECT_EQ(CImage::SaveImageFile(folder.File("a.pcx"), picture, 0, nullptr), fitsPcx);
        if (fitsPcx) {
            EXPECT_TRUE(SameBytes(LoadPicture(folder.File("a.pcx")), Opaque(MeaningOf(picture))));
        }
    }
}

TEST(SaveImage, FaxModesKeepWhatIsDarkerThanHalf)
{
    const CTemporaryFolder folder;
    const CPackedDib picture = MixedPicture(211, 60);
    const CPackedDib expected = Mapped(picture, [](uint32_t pixel) {
        const uint32_t brightness =
            (pixel & 255) * 114 + (pixel >> 8 & 255) * 587 + (pixel >> 16 & 255) * 299;
        return brightness < 127'500 ? kOpaque : 0xffffffff;
    });
    CPackedDib bilevel = RandomDib(37, 9, 5, 1);
    bilevel.ColourTable()[0] = {255, 255, 255, 0};
    for (const TiffCompression mode : {TiffCompression::Group3, TiffCompression::Group4}) {
        ASSERT_TRUE(CImage::SaveImageFile(folder.File("fax.tif"), picture, TiffValue(mode), nullptr));
        EXPECT_TRUE(SameBytes(LoadPicture(folder.File("fax.tif")), expected));
        ASSERT_TRUE(CImage::SaveImageFile(folder.File("fax.tif"), bilevel, TiffValue(mode), nullptr));
        EXPECT_TRUE(SameBytes(LoadPicture(folder.File("fax.tif")), MeaningOf(bilevel)));
    }
}

TEST(SaveImage, LossyFormatsStayNearAndFollowTheQuality)
{
    const CTemporaryFolder folder;
    CPackedDib smooth = UniformDib(200, 120, kOpaque);
    for (int y = 0; y < 120; ++y) {
        for (int x = 0; x < 200; ++x)
            std::fill_n(smooth.Row(y) + ptrdiff_t{x} * 4, 3, static_cast<uint8_t>(x + y / 3));
    }
    ASSERT_TRUE(
        CImage::SaveImageFile(folder.File("a.tif"), smooth, TiffValue(TiffCompression::Jpeg), nullptr));
    EXPECT_LE(LargestDifference(LoadPicture(folder.File("a.tif")), smooth), 10u);
    ASSERT_TRUE(CImage::SaveImageFile(folder.File("a.jpg"), smooth, 95, nullptr));
    EXPECT_LE(LargestDifference(LoadPicture(folder.File("a.jpg")), smooth), 6u);

    const CPackedDib busy = MixedPicture(200, 120);
    const auto sizeAt = [&](uint32_t quality) {
        EXPECT_TRUE(CImage::SaveImageFile(folder.File("b.jpeg"), busy, quality, nullptr));
        return FileContent(folder.File("b.jpeg"));
    };
    EXPECT_LT(sizeAt(20).size(), sizeAt(85).size());
    EXPECT_EQ(sizeAt(0), sizeAt(1));
    EXPECT_EQ(sizeAt(static_cast<uint32_t>(-5)), sizeAt(1));
    EXPECT_EQ(sizeAt(4000), sizeAt(100));
}

TEST(SaveImage, PngNamesItsBackground)
{
    const CTemporaryFolder folder;
    const auto chunkIn = [&](uint32_t option) {
        EXPECT_TRUE(
            CImage::SaveImageFile(folder.File("a.png"), UniformDib(2, 2, 0x80112233), option, nullptr));
        const std::vector<uint8_t> file = FileContent(folder.File("a.png"));
        const std::string name = "bKGD";
        const auto found = std::search(file.begin(), file.end(), name.begin(), name.end());
        return found == file.end() ? std::vector<uint8_t>() : std::vector<uint8_t>(found + 4, found + 10);
    };
    EXPECT_EQ(chunkIn(PngOptions{RgbQuad{10, 20, 30, 0}}.Value()),
              (std::vector<uint8_t>{0, 30, 0, 20, 0, 10}));
    EXPECT_TRUE(chunkIn(PngOptions{}.Value()).empty());
}

TEST(SaveImage, AFailureLeavesTheOldFile)
{
    const CTemporaryFolder folder;
    const CPackedDib picture = MixedPicture(30, 30);
    const CPackedDib tooWide = CPackedDib::Create(70'000, 1, 32);
    for (const char* name : {"a.jpg", "a.tga", "a.pcx"}) {
        SCOPED_TRACE(name);
        ASSERT_TRUE(CImage::SaveImageFile(folder.File(name), picture, 1, nullptr));
        const std::vector<uint8_t> before = FileContent(folder.File(name));
        EXPECT_FALSE(CImage::SaveImageFile(folder.File(name), tooWide, 1, nullptr));
        EXPECT_FALSE(CImage::SaveImageFile(folder.File(name), CPackedDib(), 1, nullptr));
        EXPECT_EQ(FileContent(folder.File(name)), before);
    }
    EXPECT_FALSE(CImage::SaveImageFile(folder.File("a.xyz"), picture, 0, nullptr));
    EXPECT_FALSE(CImage::SaveImageFile(folder.File("png"), picture, 0, nullptr));
}
