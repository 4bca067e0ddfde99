// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Limits.h"
#include "platform/codec/Image.h"
#include "platform/codec/RowProgress.h"
#include "platform/codec/TiffFile.h"
#include "platform/codec/TiffSamples.h"
#include "platform/io/FileBytes.h"

#include <algorithm>
#include <optional>
#include <span>
#include <vector>

namespace {

constexpr uint16_t kMaxSamples = 16;

uint16_t Field(TIFF* tiff, uint32_t tag)
{
    uint16_t value = 0;
    TIFFGetFieldDefaulted(tiff, tag, &value);
    return value;
}

std::optional<Size> ReadSize(TIFF* tiff)
{
    uint32_t width = 0;
    uint32_t height = 0;
    if (TIFFGetField(tiff, TIFFTAG_IMAGEWIDTH, &width) == 0 ||
        TIFFGetField(tiff, TIFFTAG_IMAGELENGTH, &height) == 0)
        return std::nullopt;
    if (width == 0 || height == 0 || uint64_t{width} * height > uint64_t{kMaxPicturePixels})
        return std::nullopt;
    const uint64_t pixelBits =
        uint64_t{Field(tiff, TIFFTAG_BITSPERSAMPLE)} * Field(tiff, TIFFTAG_SAMPLESPERPIXEL);
    if (uint64_t{width} * height * pixelBits / 8 > kMaxTiffDecodedBytes)
        return std::nullopt;
    return Size{static_cast<int>(width), static_cast<int>(height)};
}

/// Extra samples without a stated meaning are not alpha; with nothing stated about them, they are.
TiffLayout::Alpha AlphaOf(TIFF* tiff, const TiffLayout& layout)
{
    if (layout.samples <= layout.ColourSamples() || layout.colour == TiffLayout::Colour::Cmyk)
        return TiffLayout::Alpha::None;
    uint16_t count = 0;
    uint16_t* kinds = nullptr;
    if (TIFFGetField(tiff, TIFFTAG_EXTRASAMPLES, &count, &kinds) == 0 || count == 0)
        return TiffLayout::Alpha::Straight;
    switch (kinds[0]) {
    case EXTRASAMPLE_ASSOCALPHA:
        return TiffLayout::Alpha::Premultiplied;
    case EXTRASAMPLE_UNASSALPHA:
        return TiffLayout::Alpha::Straight;
    default:
        return TiffLayout::Alpha::None;
    }
}

/// Nothing for pages that only the library can turn into colours.
std::optional<TiffLayout> LayoutOf(TIFF* tiff, Size size)
{
    TiffLayout layout;
    layout.width = size.width;
    layout.height = size.height;
    layout.bits = Field(tiff, TIFFTAG_BITSPERSAMPLE);
    layout.samples = Field(tiff, TIFFTAG_SAMPLESPERPIXEL);
    layout.isPlanar = Field(tiff, TIFFTAG_PLANARCONFIG) == PLANARCONFIG_SEPARATE && layout.samples > 1;
    const uint16_t format = Field(tiff, TIFFTAG_SAMPLEFORMAT);
    if (layout.bits < 1 || layout.bits > 16 || layout.samples < 1 || layout.samples > kMaxSamples ||
        (format != SAMPLEFORMAT_UINT && format != SAMPLEFORMAT_VOID))
        return std::nullopt;
    switch (Field(tiff, TIFFTAG_PHOTOMETRIC)) {
    case PHOTOMETRIC_MINISWHITE:
        layout.isWhiteZero = true;
        break;
    case PHOTOMETRIC_MINISBLACK:
        break;
    case PHOTOMETRIC_PALETTE:
        layout.colour = TiffLayout::Colour::Palette;
        break;
    case PHOTOMETRIC_RGB:
        layout.colour = TiffLayout::Colour::Rgb;
        break;
    case PHOTOMETRIC_SEPARATED:
        if (Field(tiff, TIFFTAG_INKSET) != INKSET_CMYK)
            return std::nullopt;
        layout.colour = TiffLayout::Colour::Cmyk;
        break;
    case PHOTOMETRIC_YCBCR:
        // The JPEG decoder delivers such pixels as RGB when told to.
        if (Field(tiff, TIFFTAG_COMPRESSION) != COMPRESSION_JPEG || layout.isPlanar ||
            TIFFSetField(tiff, TIFFTAG_JPEGCOLORMODE, JPEGCOLORMODE_RGB) == 0)
            return std::nullopt;
        layout.colour = TiffLayout::Colour::Rgb;
        break;
    default:
        return std::nullopt;
    }
    if (layout.samples < layout.ColourSamples())
        return std::nullopt;
    layout.alpha = AlphaOf(tiff, layout);
    return layout;
}

CHeapBlock BufferOf(uint64_t bytes)
{
    return bytes == 0 || bytes > kMaxTiffBufferBytes ? CHeapBlock()
                                                     : CHeapBlock::Allocate(static_cast<size_t>(bytes));
}

/// The first rows of a strip that the end of the file cuts: as many of its `rows` as the part that is there
/// gives, each of `rowBytes` bytes. Empty when the strip is whole or gives none.
CHeapBlock DecodeCutStrip(TIFF* tiff, uint32_t strip, std::span<const uint8_t> file, uint64_t rowBytes,
                          int64_t rows)
{
    const uint64_t offset = TIFFGetStrileOffset(tiff, strip);
    if (offset >= file.size() || TIFFGetStrileByteCount(tiff, strip) <= file.size() - offset)
        return {};
    const std::span<const uint8_t> part = file.subspan(static_cast<size_t>(offset));
    std::vector<uint8_t> stored(part.begin(), part.end());
    // The library tells only whether all rows asked for could be decoded.
    CHeapBlock decoded;
    for (int64_t low = 1, high = rows; low <= high;) {
        const int64_t middle = low + (high - low) / 2;
        CHeapBlock attempt = BufferOf(rowBytes * static_cast<uint64_t>(middle));
        if (!attempt.IsEmpty() &&
            TIFFReadFromUserBuffer(tiff, strip, stored.data(), static_cast<tmsize_t>(stored.size()),
                                   attempt.Data(), static_cast<tmsize_t>(attempt.Size())) != 0) {
            decoded = std::move(attempt);
            low = middle + 1;
        } else {
            high = middle - 1;
        }
    }
    return decoded;
}

/// The number of rows, over all planes, that could be read. A row that cannot be is the end of its strip.
int64_t ReadStrips(TIFF* tiff, std::span<const uint8_t> file, const TiffLayout& layout, CTiffSamples& samples,
                   CPackedDib& dib, IProgress* progress)
{
    CHeapBlock row = BufferOf(TIFFScanlineSize64(tiff));
    const size_t needed =
        (static_cast<size_t>(layout.width) * layout.bits * (layout.isPlanar ? 1u : layout.samples) + 7) / 8;
    if (row.Size() < needed)
        return 0;
    uint32_t stripRows = 0;
    TIFFGetFieldDefaulted(tiff, TIFFTAG_ROWSPERSTRIP, &stripRows);
    const int64_t step = std::max<int64_t>(stripRows, 1);
    const size_t planes = layout.isPlanar ? layout.samples : 1u;
    CRowProgress steps(progress, layout.height * static_cast<int64_t>(planes));
    int64_t done = 0;
    for (size_t plane = 0; plane < planes; ++plane) {
        const auto place = [&](const uint8_t* stored, int64_t y) {
            samples.Place(stored, layout.width, plane, dib.Row(static_cast<int>(y)));
            steps.SetDone(++done);
        };
        for (int64_t y = 0; y < layout.height;) {
            const auto at = static_cast<uint32_t>(y);
            if (TIFFReadScanline(tiff, row.Data(), at, static_cast<uint16_t>(plane)) >= 0) {
                place(row.Data(), y++);
                continue;
            }
            const int64_t next = (y / step + 1) * step;
            const int64_t rows = std::min<int64_t>(next, layout.height) - y;
            const uint32_t strip = TIFFComputeStrip(tiff, at, static_cast<uint16_t>(plane));
            const CHeapBlock decoded =
                y % step == 0 ? DecodeCutStrip(tiff, strip, file, row.Size(), rows) : CHeapBlock();
            for (size_t begin = 0; begin < decoded.Size(); begin += row.Size())
                place(decoded.Data() + begin, y++);
            y = next;
        }
    }
    return done;
}

/// The number of tiles, over all planes, that could be read.
int64_t ReadTiles(TIFF* tiff, const TiffLayout& layout, CTiffSamples& samples, CPackedDib& dib,
                  IProgress* progress)
{
    uint32_t tileWidth = 0;
    uint32_t tileHeight = 0;
    TIFFGetField(tiff, TIFFTAG_TILEWIDTH, &tileWidth);
    TIFFGetField(tiff, TIFFTAG_TILELENGTH, &tileHeight);
    CHeapBlock tile = BufferOf(TIFFTileSize64(tiff));
    const auto rowBytes = static_cast<uint64_t>(TIFFTileRowSize64(tiff));
    if (tile.IsEmpty() || tileWidth == 0 || tileHeight == 0 || rowBytes * tileHeight > tile.Size())
        return 0;
    const size_t planes = layout.isPlanar ? layout.samples : 1u;
    CRowProgress steps(progress, TIFFNumberOfTiles(tiff));
    int64_t tried = 0;
    int64_t done = 0;
    for (size_t plane = 0; plane < planes; ++plane) {
        for (int64_t top = 0; top < layout.height; top += tileHeight) {
            for (int64_t left = 0; left < layout.width; left += tileWidth) {
                steps.SetDone(++tried);
                const uint32_t index =
                    TIFFComputeTile(tiff, static_cast<uint32_t>(left), static_cast<uint32_t>(top), 0,
                                    static_cast<uint16_t>(plane));
                if (TIFFReadEncodedTile(tiff, index, tile.Data(), static_cast<tmsize_t>(tile.Size())) < 0)
                    continue;
                const auto count = static_cast<int>(std::min<int64_t>(tileWidth, layout.width - left));
                const int64_t bottom = std::min<int64_t>(top + tileHeight, layout.height);
                for (int64_t y = top; y < bottom; ++y) {
                    samples.Place(tile.Data() + static_cast<uint64_t>(y - top) * rowBytes, count, plane,
                                  dib.Row(static_cast<int>(y)) + left * 4);
                }
                ++done;
            }
        }
    }
    return done;
}

bool ReadSamples(TIFF* tiff, std::span<const uint8_t> file, const TiffLayout& layout, CPackedDib& dib,
                 IProgress* progress)
{
    CTiffSamples samples(layout, tiff);
    const int64_t done = TIFFIsTiled(tiff) != 0 ? ReadTiles(tiff, layout, samples, dib, progress)
                                                : ReadStrips(tiff, file, layout, samples, dib, progress);
    if (done == 0)
        return false;
    for (int y = 0; y < layout.height; ++y)
        samples.Finish(dib.Row(y), layout.width);
    return true;
}

/// Through the library's conversion of everything to RGBA, for the rarer kinds of colour. It stops at the
/// first broken strip or tile; what came before is kept.
bool ReadConverted(TIFF* tiff, CPackedDib& dib)
{
    constexpr int kStopAtError = 1;
    char message[1024] = {};
    TIFFRGBAImage image = {};
    if (TIFFRGBAImageOK(tiff, message) == 0 || TIFFRGBAImageBegin(&image, tiff, kStopAtError, message) == 0)
        return false;
    // As stored, with the bottom row first.
    image.orientation = ORIENTATION_TOPLEFT;
    image.req_orientation = ORIENTATION_BOTLEFT;
    auto* raster = reinterpret_cast<uint32_t*>(dib.Bits().data());
    const bool isRead = TIFFRGBAImageGet(&image, raster, image.width, image.height) != 0;
    const bool hasAlpha = image.alpha != 0;
    TIFFRGBAImageEnd(&image);
    const std::span<const uint8_t> bits = dib.Bits();
    if (!isRead && std::all_of(bits.begin(), bits.end(), [](uint8_t byte) { return byte == 0; }))
        return false;
    for (int y = 0; y < dib.Height(); ++y) {
        uint8_t* row = dib.Row(y);
        for (uint8_t* pixel = row; pixel != row + ptrdiff_t{dib.Width()} * 4; pixel += 4)
            std::swap(pixel[0], pixel[2]);
        if (hasAlpha)
            DividePixelsByAlpha(row, dib.Width());
    }
    return true;
}

} // namespace

CPackedDib CImage::LoadTIFFFile(const std::filesystem::path& path, IProgress* progress)
{
    const std::optional<CHeapBlock> file = ReadFileBytes(path);
    if (!file)
        return {};
    TiffMemory memory = {file->Bytes()};
    const TiffHandle tiff = OpenTiff(memory);
    const std::optional<Size> size = tiff != nullptr ? ReadSize(tiff.get()) : std::nullopt;
    // Every tile takes some bytes.
    if (!size || (TIFFIsTiled(tiff.get()) != 0 && TIFFNumberOfTiles(tiff.get()) > file->Size()))
        return {};
    CPackedDib dib = CPackedDib::CreateTransparent(size->width, size->height);
    if (dib.IsEmpty())
        return {};
    const std::optional<TiffLayout> layout = LayoutOf(tiff.get(), *size);
    if (!(layout ? ReadSamples(tiff.get(), file->Bytes(), *layout, dib, progress)
                 : ReadConverted(tiff.get(), dib)))
        return {};
    return dib;
}
