// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/codec/CodecSupport.h"
#include "platform/codec/TiffFile.h"

#include <cstring>
#include <random>

namespace {

constexpr int kWidth = 37;
constexpr int kHeight = 21;
constexpr uint32_t kTile = 16;

struct Layout {
    const char* name;
    uint16_t bits, samples, photometric, planar;
    int extra = -1; ///< kind of the last sample when it is none of the colours
    bool isTiled = false;
    uint32_t stripRows = 5;
};

/// The sample values of the test picture, pixel by pixel.
std::vector<uint32_t> SamplesOf(const Layout& layout)
{
    std::mt19937 random(layout.bits);
    std::vector<uint32_t> samples(size_t{kWidth} * kHeight * layout.samples);
    for (uint32_t& sample : samples)
        sample = static_cast<uint32_t>(random()) & ((1u << layout.bits) - 1);
    return samples;
}

/// Packs what `at` gives for column 0, 1, ... from the highest bit on.
template <class At> std::vector<uint8_t> Pack(size_t count, uint16_t bits, const At& at)
{
    std::vector<uint8_t> packed((count * bits + 7) / 8);
    for (size_t index = 0; index < count * bits; ++index) {
        const uint32_t bit = (at(index / bits) >> (bits - 1 - index % bits)) & 1;
        // 16-bit samples lie in the machine's order, here the low byte first.
        const size_t byte = bits == 16 ? index / 8 ^ 1 : index / 8;
        packed[byte] = static_cast<uint8_t>(packed[byte] | bit << (7 - index % 8));
    }
    return packed;
}

bool WriteTiff(const std::filesystem::path& path, const Layout& layout, const std::vector<uint32_t>& samples)
{
    std::FILE* stream = std::fopen(path.c_str(), "w+b");
    {
        const TiffHandle tiff = CreateTiff(stream);
        TIFFSetField(tiff.get(), TIFFTAG_IMAGEWIDTH, kWidth);
        TIFFSetField(tiff.get(), TIFFTAG_IMAGELENGTH, kHeight);
        TIFFSetField(tiff.get(), TIFFTAG_BITSPERSAMPLE, layout.bits);
        TIFFSetField(tiff.get(), TIFFTAG_SAMPLESPERPIXEL, layout.samples);
        TIFFSetField(tiff.get(), TIFFTAG_PHOTOMETRIC, layout.photometric);
        TIFFSetField(tiff.get(), TIFFTAG_PLANARCONFIG, layout.planar);
        TIFFSetField(tiff.get(), TIFFTAG_COMPRESSION, COMPRESSION_LZW);
        if (layout.extra >= 0) {
            const auto kind = static_cast<uint16_t>(layout.extra);
            TIFFSetField(tiff.get(), TIFFTAG_EXTRASAMPLES, 1, &kind);
        }
        if (layout.isTiled) {
            TIFFSetField(tiff.get(), TIFFTAG_TILEWIDTH, kTile);
            TIFFSetField(tiff.get(), TIFFTAG_TILELENGTH, kTile);
        } else {
            TIFFSetField(tiff.get(), TIFFTAG_ROWSPERSTRIP, layout.stripRows);
        }
        const bool isPlanar = layout.planar == PLANARCONFIG_SEPARATE;
        const size_t inRow = isPlanar ? 1 : layout.samples;
        for (uint16_t plane = 0; plane < (isPlanar ? layout.samples : 1); ++plane) {
            // Sample `index` of the run that begins at (left, y); 0 outside the picture.
            const auto sampleAt = [&](uint32_t left, uint32_t y, size_t index) -> uint32_t {
                const size_t x = left + index / inRow;
                const size_t sample = isPlanar ? plane : index % inRow;
                return x < kWidth && y < kHeight ? samples[(y * kWidth + x) * layout.samples + sample] : 0;
            };
            for (uint32_t y = 0; y < kHeight && !layout.isTiled; ++y) {
                std::vector<uint8_t> row =
                    Pack(kWidth * inRow, layout.bits, [&](size_t index) { return sampleAt(0, y, index); });
                TIFFWriteScanline(tiff.get(), row.data(), y, plane);
            }
            for (uint32_t top = 0; top < kHeight && layout.isTiled; top += kTile) {
                for (uint32_t left = 0; left < kWidth; left += kTile) {
                    std::vector<uint8_t> tile;
                    for (uint32_t y = top; y < top + kTile; ++y) {
                        const std::vector<uint8_t> row = Pack(kTile * inRow, layout.bits, [&](size_t index) {
                            return sampleAt(left, y, index);
                        });
                        tile.insert(tile.end(), row.begin(), row.end());
                    }
                    TIFFWriteTile(tiff.get(), tile.data(), left, top, 0, plane);
                }
            }
        }
    }
    return std::fclose(stream) == 0;
}

/// The pixel that a pixel's samples mean, computed in floating point.
uint32_t MeaningOf(const Layout& layout, const uint32_t* samples)
{
    const double largest = (1u << layout.bits) - 1;
    const auto level = [&](int index) { return samples[index] / largest; };
    const auto byte = [](double value) { return static_cast<uint32_t>(value * 255 + 0.5); };
    double colour[3] = {level(0), level(0), level(0)};
    int colours = 1;
    if (layout.photometric == PHOTOMETRIC_RGB) {
        colours = 3;
        for (int index = 0; index < 3; ++index)
            colour[index] = level(index);
    } else if (layout.photometric == PHOTOMETRIC_SEPARATED) {
        colours = 4;
        // Inks are rounded to bytes before they are mixed.
        for (int index = 0; index < 3; ++index)
            colour[index] = (255 - byte(level(index))) * (255 - byte(level(3))) / 65025.0;
    } else if (layout.photometric == PHOTOMETRIC_MINISWHITE) {
        std::fill_n(colour, 3, 1 - level(0));
    }
    uint32_t alpha = 255;
    if (layout.extra > 0)
        alpha = byte(level(colours));
    uint32_t pixel = alpha << 24;
    for (int index = 0; index < 3; ++index) {
        uint32_t value = byte(colour[index]);
        if (layout.extra == EXTRASAMPLE_ASSOCALPHA && alpha != 0)
            value = std::min(value * 255 / alpha, 255u);
        pixel |= value << (16 - 8 * index);
    }
    return pixel;
}

} // namespace

TEST(TiffReader, EveryDepthAndArrangementOfSamples)
{
    constexpr uint16_t kWhite = PHOTOMETRIC_MINISWHITE;
    constexpr uint16_t kBlack = PHOTOMETRIC_MINISBLACK;
    constexpr uint16_t kRgb = PHOTOMETRIC_RGB;
    constexpr uint16_t kInks = PHOTOMETRIC_SEPARATED;
    constexpr uint16_t kTogether = PLANARCONFIG_CONTIG;
    constexpr uint16_t kApart = PLANARCONFIG_SEPARATE;
    constexpr int kStraight = EXTRASAMPLE_UNASSALPHA;
    const Layout kCases[] = {{"1 bit", 1, 1, kBlack, kTogether},
                             {"2 bits", 2, 1, kBlack, kTogether},
                             {"4 bits, 0 is white", 4, 1, kWhite, kTogether},
                             {"8 bits, 0 is white, alpha", 8, 2, kWhite, kTogether, kStraight},
                             {"16 bits grey", 16, 1, kBlack, kTogether},
                             {"5 bits RGB", 5, 3, kRgb, kTogether},
                             {"12 bits RGB", 12, 3, kRgb, kTogether},
                             {"12 bits RGB apart", 12, 3, kRgb, kApart},
                             {"16 bits RGB and alpha", 16, 4, kRgb, kTogether, kStraight},
                             {"premultiplied", 8, 4, kRgb, kTogether, EXTRASAMPLE_ASSOCALPHA},
                             {"fourth sample of no meaning", 8, 4, kRgb, kApart, EXTRASAMPLE_UNSPECIFIED},
                             {"tiles", 8, 3, kRgb, kTogether, -1, true},
                             {"tiles apart with alpha", 16, 4, kRgb, kApart, kStraight, true},
                             {"tiles of 4 bits", 4, 1, kBlack, kTogether, -1, true},
                             {"inks", 8, 4, kInks, kTogether},
                             {"inks apart, 16 bits", 16, 4, kInks, kApart}};
    const CTemporaryFolder folder;
    for (const Layout& layout : kCases) {
        SCOPED_TRACE(layout.name);
        const std::vector<uint32_t> samples = SamplesOf(layout);
        ASSERT_TRUE(WriteTiff(folder.File("a.tif"), layout, samples));
        CPackedDib expected = CPackedDib::Create(kWidth, kHeight, 32);
        for (size_t index = 0; index < size_t{kWidth} * kHeight; ++index) {
            const uint32_t pixel = MeaningOf(layout, samples.data() + index * layout.samples);
            std::memcpy(expected.Row(static_cast<int>(index / kWidth)) + index % kWidth * 4, &pixel, 4);
        }
        EXPECT_TRUE(SameBytes(LoadPicture(folder.File("a.tif")), expected));
    }
}

TEST(TiffReader, KeepsTheRowsOfACutStrip)
{
    const CTemporaryFolder folder;
    const Layout layout = {"16 bits in one strip", 16, 3,     PHOTOMETRIC_RGB,
                           PLANARCONFIG_CONTIG,    -1, false, static_cast<uint32_t>(kHeight)};
    ASSERT_TRUE(WriteTiff(folder.File("a.tif"), layout, SamplesOf(layout)));
    const CPackedDib whole = LoadPicture(folder.File("a.tif"));
    std::vector<uint8_t> file = FileContent(folder.File("a.tif"));

    // The strip moves behind the directory, where the file can be cut within it.
    uint32_t directory = 0;
    std::memcpy(&directory, file.data() + 4, sizeof directory);
    const auto valueOf = [&](uint32_t tag) {
        uint8_t* entry = file.data() + directory + 2;
        while (entry[0] != (tag & 0xFF) || entry[1] != tag >> 8)
            entry += 12;
        return entry + 8;
    };
    uint32_t offset = 0;
    uint32_t count = 0;
    std::memcpy(&offset, valueOf(TIFFTAG_STRIPOFFSETS), sizeof offset);
    std::memcpy(&count, valueOf(TIFFTAG_STRIPBYTECOUNTS), sizeof count);
    const auto moved = static_cast<uint32_t>(file.size());
    std::memcpy(valueOf(TIFFTAG_STRIPOFFSETS), &moved, sizeof moved);
    const std::vector<uint8_t> strip(file.begin() + offset, file.begin() + offset + count);
    file.insert(file.end(), strip.begin(), strip.end());

    const CPackedDib cut = LoadBytes(std::span(file).first(moved + count / 2), folder.File("cut.tif"));
    ASSERT_EQ(cut.Size(), whole.Size());
    int rows = 0;
    while (rows < kHeight && std::memcmp(cut.Row(rows), whole.Row(rows), cut.Stride()) == 0)
        ++rows;
    EXPECT_NEAR(rows, kHeight / 2, 2);
    for (int y = rows; y < kHeight; ++y)
        EXPECT_TRUE(
            std::all_of(cut.Row(y), cut.Row(y) + cut.Stride(), [](uint8_t byte) { return byte == 0; }));
    EXPECT_TRUE(LoadBytes(std::span(file).first(moved), folder.File("cut.tif")).IsEmpty());
}
