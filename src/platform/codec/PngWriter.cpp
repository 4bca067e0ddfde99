// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/codec/PngWriter.h"

#include "platform/codec/AlphaBytes.h"
#include "platform/codec/DeflateJoint.h"
#include "platform/codec/PictureWriters.h"
#include "platform/codec/PngChunk.h"
#include "platform/codec/PngFilter.h"
#include "platform/codec/SaveOptions.h"
#include "platform/io/AtomicFile.h"

#include <libdeflate.h>
#include <tbb/parallel_for.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <vector>

namespace {

/// Filtered bytes of one band. Each band is compressed without a view of the bands before it, which costs
/// less than a thousandth at this size.
constexpr size_t kBandBytes = size_t{1} << 21;
constexpr size_t kBandsPerRound = 4;
constexpr int kCompressionLevel = 5;
constexpr size_t kRowMargin = 16;

struct CompressorDeleter {
    void operator()(libdeflate_compressor* compressor) const { libdeflate_free_compressor(compressor); }
};

struct Band {
    int firstRow = 0;
    int rows = 0;
    CHeapBlock stream;
    size_t streamBytes = 0;
    size_t filteredBytes = 0;
    uint32_t adler = 1;
    bool done = false;
};

size_t RowBytes(const PngPicture& picture)
{
    return static_cast<size_t>(picture.width) * static_cast<size_t>(picture.colour);
}

void ReadRow(const PngPicture& picture, int y, uint8_t* packed)
{
    const uint8_t* row = picture.top + picture.stride * y;
    if (picture.colour == PngColour::Grey)
        std::memcpy(packed, row, RowBytes(picture));
    else
        PackPngRow(row, picture.width, static_cast<int>(picture.colour), packed);
}

/// The band's rows, each behind its filter type. Empty when memory runs out.
CHeapBlock FilterBand(const PngPicture& picture, const Band& band)
{
    const size_t bytes = RowBytes(picture);
    CHeapBlock filtered = CHeapBlock::Allocate(band.filteredBytes, 0, BlockContent::Undefined);
    const size_t lineBytes = kRowMargin + bytes;
    CHeapBlock lines = CHeapBlock::Allocate((2 + kPngFilters) * lineBytes);
    if (filtered.IsEmpty() || lines.IsEmpty())
        return {};
    uint8_t* row = lines.Data() + kRowMargin;
    uint8_t* above = row + lineBytes;
    uint8_t* candidates[kPngFilters] = {};
    for (size_t filter = 1; filter < kPngFilters; ++filter)
        candidates[filter] = above + filter * lineBytes;

    if (band.firstRow > 0)
        ReadRow(picture, band.firstRow - 1, above);
    uint8_t* out = filtered.Data();
    for (int y = band.firstRow; y < band.firstRow + band.rows; ++y) {
        ReadRow(picture, y, row);
        candidates[0] = row;
        uint64_t costs[kPngFilters] = {};
        FilterPngRow(row, above, bytes, static_cast<size_t>(picture.colour), candidates, costs);
        const auto best = static_cast<size_t>(std::min_element(costs, costs + kPngFilters) - costs);
        *out++ = static_cast<uint8_t>(best);
        std::memcpy(out, candidates[best], bytes);
        out += bytes;
        std::swap(row, above);
    }
    return filtered;
}

void CompressBand(const PngPicture& picture, Band& band, bool isLast)
{
    const CHeapBlock filtered = FilterBand(picture, band);
    const std::unique_ptr<libdeflate_compressor, CompressorDeleter> compressor(
        libdeflate_alloc_compressor(kCompressionLevel));
    if (filtered.IsEmpty() || compressor == nullptr)
        return;
    const size_t bound = libdeflate_deflate_compress_bound(compressor.get(), filtered.Size());
    band.stream = CHeapBlock::Allocate(bound + kDeflateJointBytes, 0, BlockContent::Undefined);
    if (band.stream.IsEmpty())
        return;
    band.adler = libdeflate_adler32(1, filtered.Data(), filtered.Size());
    band.streamBytes = libdeflate_deflate_compress(compressor.get(), filtered.Data(), filtered.Size(),
                                                   band.stream.Data(), bound);
    if (band.streamBytes != 0 && !isLast)
        band.streamBytes = OpenDeflateStream(band.stream.Bytes(), band.streamBytes).value_or(0);
    band.done = band.streamBytes != 0;
}

/// The checksum of two runs of bytes from those of each (RFC 1950, section 8.2: two sums modulo 65521).
uint32_t JoinAdler(uint32_t first, uint32_t second, uint64_t secondBytes)
{
    constexpr uint64_t kModulus = 65521;
    const uint64_t sum = ((first & 0xffff) + (second & 0xffff) + kModulus - 1) % kModulus;
    const uint64_t carried = (secondBytes % kModulus) * (((first & 0xffff) + kModulus - 1) % kModulus);
    const uint64_t sums = ((first >> 16) + (second >> 16) + carried) % kModulus;
    return static_cast<uint32_t>(sums << 16 | sum);
}

std::vector<Band> SplitIntoBands(const PngPicture& picture)
{
    const size_t filteredRow = RowBytes(picture) + 1;
    const auto height = static_cast<size_t>(picture.height);
    const size_t count = std::clamp(filteredRow * height / kBandBytes, size_t{1}, height);
    std::vector<Band> bands(count);
    for (size_t index = 0; index < count; ++index) {
        Band& band = bands[index];
        band.firstRow = static_cast<int>(height * index / count);
        band.rows = static_cast<int>(height * (index + 1) / count) - band.firstRow;
        band.filteredBytes = static_cast<size_t>(band.rows) * filteredRow;
    }
    return bands;
}

/// All bands, each with its stream. None when memory runs out.
std::vector<Band> CompressPicture(const PngPicture& picture, IProgress* progress)
{
    if (picture.width <= 0 || picture.height <= 0)
        return {};
    std::vector<Band> bands = SplitIntoBands(picture);
    for (size_t first = 0; first < bands.size(); first += kBandsPerRound) {
        const size_t end = std::min(first + kBandsPerRound, bands.size());
        tbb::parallel_for(first, end, [&](size_t index) {
            CompressBand(picture, bands[index], index + 1 == bands.size());
        });
        if (progress != nullptr)
            progress->SetPosition(static_cast<int>(end * 100 / bands.size()));
    }
    if (!std::all_of(bands.begin(), bands.end(), [](const Band& band) { return band.done; }))
        bands.clear();
    return bands;
}

/// The file's parts, in order, to `sink`, a function from bytes to success.
template <class Sink> bool PutFile(const PngPicture& picture, std::span<const Band> bands, Sink&& sink)
{
    using Bytes = std::span<const uint8_t>;
    constexpr uint8_t kColourTypes[] = {0, 0, 0, 2, 6};
    std::array<uint8_t, 13> header = {};
    StoreBigU32(static_cast<uint32_t>(picture.width), header.data());
    StoreBigU32(static_cast<uint32_t>(picture.height), header.data() + 4);
    header[8] = 8;
    header[9] = kColourTypes[static_cast<size_t>(picture.colour)];
    if (!sink(Bytes(kPngSignature)) || !PutPngChunk(sink, "IHDR", header))
        return false;
    if (picture.background && picture.colour != PngColour::Grey) {
        const RgbQuad& colour = *picture.background;
        const std::array<uint8_t, 6> samples = {0, colour.red, 0, colour.green, 0, colour.blue};
        if (!PutPngChunk(sink, "bKGD", samples))
            return false;
    }
    constexpr std::array<uint8_t, 2> kZlibHeader = {0x78, 0x5e};
    uint32_t adler = 1;
    for (const Band& band : bands) {
        const bool isFirst = &band == &bands.front();
        const bool isLast = &band == &bands.back();
        adler = JoinAdler(adler, band.adler, band.filteredBytes);
        std::array<uint8_t, 4> check = {};
        StoreBigU32(adler, check.data());
        if (!PutPngChunk(sink, "IDAT", isFirst ? Bytes(kZlibHeader) : Bytes(),
                         band.stream.Bytes().first(band.streamBytes), isLast ? Bytes(check) : Bytes()))
            return false;
    }
    return PutPngChunk(sink, "IEND", {});
}

bool PutPicture(CAtomicFile& file, const PngPicture& picture, IProgress* progress)
{
    const std::vector<Band> bands = CompressPicture(picture, progress);
    return !bands.empty() &&
           PutFile(picture, bands, [&](std::span<const uint8_t> part) { return file.Write(part); });
}

} // namespace

PngPicture PngPictureOf(const ConstBitmapView& view, PngColour colour)
{
    return {view.top, view.stride, view.width, view.height, colour};
}

CHeapBlock EncodePng(const PngPicture& picture, IProgress* progress)
{
    const std::vector<Band> bands = CompressPicture(picture, progress);
    if (bands.empty())
        return {};
    size_t size = 0;
    if (!PutFile(picture, bands, [&](std::span<const uint8_t> part) {
            size += part.size();
            return true;
        }))
        return {};
    CHeapBlock file = CHeapBlock::Allocate(size);
    if (file.IsEmpty())
        return file;
    uint8_t* out = file.Data();
    const bool put = PutFile(picture, bands, [&](std::span<const uint8_t> part) {
        out = std::copy(part.begin(), part.end(), out);
        return true;
    });
    return put ? std::move(file) : CHeapBlock();
}

bool WritePng(const std::filesystem::path& path, const PngPicture& picture, IProgress* progress)
{
    CAtomicFile file(path);
    return file.IsOpen() && PutPicture(file, picture, progress) && file.Commit();
}

/// Without alpha where that says nothing.
bool PutPng(CAtomicFile& file, const CPackedDib& dib, uint32_t option, IProgress* progress)
{
    if (dib.BitCount() != 32)
        return false;
    PngPicture picture = PngPictureOf(ViewOf(dib), IsOpaque(dib) ? PngColour::Rgb : PngColour::Rgba);
    picture.background = PngOptions::Of(option).background;
    return PutPicture(file, picture, progress);
}
