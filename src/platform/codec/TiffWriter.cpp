// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/codec/AlphaBytes.h"
#include "platform/codec/PictureWriters.h"
#include "platform/codec/PngFilter.h"
#include "platform/codec/RowProgress.h"
#include "platform/codec/SaveOptions.h"
#include "platform/codec/TiffFile.h"

#include <algorithm>
#include <vector>

namespace {

constexpr uint32_t kJpegQuality = 85;
/// Bytes that a strip should have before compression; its rows are a multiple of the JPEG blocks' 16.
constexpr size_t kStripBytes = size_t{1} << 18;
constexpr size_t kStripStep = 16;

enum class Content { Rgba, Rgb, Bilevel };

bool IsFax(TiffCompression compression)
{
    return compression == TiffCompression::Group3 || compression == TiffCompression::Group4;
}

Content ContentOf(const CPackedDib& dib, TiffCompression compression)
{
    if (IsFax(compression))
        return Content::Bilevel;
    return compression == TiffCompression::Jpeg || IsOpaque(dib) ? Content::Rgb : Content::Rgba;
}

/// Brightness of a colour by ITU-R BT.601, in thousandths of 0..255.
uint32_t Brightness(uint8_t blue, uint8_t green, uint8_t red)
{
    return blue * 114u + green * 587u + red * 299u;
}
constexpr uint32_t kHalfBrightness = 127'500;

/// One bit a pixel, the leftmost in the highest bit, 1 for the darker half.
void PackBilevelRow(const CPackedDib& dib, int y, uint8_t* packed)
{
    const uint8_t* row = dib.Row(y);
    const std::span<const RgbQuad> colours = dib.ColourTable();
    const auto width = static_cast<size_t>(dib.Width());
    std::fill_n(packed, (width + 7) / 8, uint8_t{0});
    for (size_t x = 0; x < width; ++x) {
        uint32_t brightness = 0;
        if (dib.BitCount() == 1) {
            const RgbQuad& colour = colours[((row[x / 8] >> (7 - x % 8)) & 1u) % colours.size()];
            brightness = Brightness(colour.blue, colour.green, colour.red);
        } else {
            brightness = Brightness(row[x * 4], row[x * 4 + 1], row[x * 4 + 2]);
        }
        if (brightness < kHalfBrightness)
            packed[x / 8] = static_cast<uint8_t>(packed[x / 8] | 0x80u >> (x % 8));
    }
}

bool SetFields(TIFF* tiff, const CPackedDib& dib, TiffCompression compression, Content content)
{
    const uint32_t samples = content == Content::Rgba ? 4 : content == Content::Rgb ? 3 : 1;
    const uint32_t photometric = content == Content::Bilevel            ? PHOTOMETRIC_MINISWHITE
                                 : compression == TiffCompression::Jpeg ? PHOTOMETRIC_YCBCR
                                                                        : PHOTOMETRIC_RGB;
    const size_t rowBytes =
        (static_cast<size_t>(dib.Width()) * samples * (content == Content::Bilevel ? 1 : 8) + 7) / 8;
    const size_t stripRows = std::max(kStripBytes / rowBytes / kStripStep, size_t{1}) * kStripStep;
    struct Row {
        uint32_t tag;
        uint32_t value;
    };
    const Row kFields[] = {{TIFFTAG_IMAGEWIDTH, static_cast<uint32_t>(dib.Width())},
                           {TIFFTAG_IMAGELENGTH, static_cast<uint32_t>(dib.Height())},
                           {TIFFTAG_BITSPERSAMPLE, content == Content::Bilevel ? 1u : 8u},
                           {TIFFTAG_SAMPLESPERPIXEL, samples},
                           {TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG},
                           {TIFFTAG_ORIENTATION, ORIENTATION_TOPLEFT},
                           {TIFFTAG_COMPRESSION, static_cast<uint32_t>(compression)},
                           {TIFFTAG_PHOTOMETRIC, photometric},
                           {TIFFTAG_ROWSPERSTRIP, static_cast<uint32_t>(stripRows)}};
    for (const Row& field : kFields) {
        if (TIFFSetField(tiff, field.tag, field.value) == 0)
            return false;
    }
    switch (compression) {
    case TiffCompression::Lzw:
    case TiffCompression::Deflate:
    case TiffCompression::AdobeDeflate:
        // Differences of neighbours compress better.
        if (TIFFSetField(tiff, TIFFTAG_PREDICTOR, PREDICTOR_HORIZONTAL) == 0)
            return false;
        break;
    case TiffCompression::Jpeg:
        if (TIFFSetField(tiff, TIFFTAG_JPEGQUALITY, kJpegQuality) == 0 ||
            TIFFSetField(tiff, TIFFTAG_JPEGCOLORMODE, JPEGCOLORMODE_RGB) == 0)
            return false;
        break;
    default:
        break;
    }
    const uint16_t alpha = EXTRASAMPLE_UNASSALPHA;
    return content != Content::Rgba || TIFFSetField(tiff, TIFFTAG_EXTRASAMPLES, 1, &alpha) != 0;
}

} // namespace

bool PutTiff(CAtomicFile& file, const CPackedDib& dib, uint32_t option, IProgress* progress)
{
    const TiffCompression compression = TiffOptions::Of(option).compression;
    if (dib.BitCount() != 32 && !(dib.BitCount() == 1 && IsFax(compression)))
        return false;
    const Content content = ContentOf(dib, compression);
    const TiffHandle tiff = CreateTiff(file.Stream());
    if (tiff == nullptr || !SetFields(tiff.get(), dib, compression, content))
        return false;
    // Whole strips at once: the library deflates those in one go, which is several times as fast as row by
    // row.
    const auto rowBytes = static_cast<size_t>(TIFFScanlineSize64(tiff.get()));
    uint32_t stripRows = 0;
    TIFFGetField(tiff.get(), TIFFTAG_ROWSPERSTRIP, &stripRows);
    std::vector<uint8_t> packed(rowBytes * stripRows);
    CRowProgress steps(progress, dib.Height());
    uint32_t strip = 0;
    for (int top = 0; top < dib.Height(); ++strip) {
        const int bottom = std::min(top + static_cast<int>(stripRows), dib.Height());
        uint8_t* row = packed.data();
        for (; top < bottom; ++top, row += rowBytes) {
            if (content == Content::Bilevel)
                PackBilevelRow(dib, top, row);
            else
                PackPngRow(dib.Row(top), dib.Width(), content == Content::Rgba ? 4 : 3, row);
        }
        if (TIFFWriteEncodedStrip(tiff.get(), strip, packed.data(), row - packed.data()) < 0)
            return false;
        steps.SetDone(top);
    }
    return TIFFFlush(tiff.get()) != 0;
}
