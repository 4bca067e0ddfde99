// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/codec/PlainPng.h"

#include "platform/Limits.h"
#include "platform/codec/PngFilter.h"
#include "platform/codec/RowProgress.h"
#include "platform/io/ByteReader.h"

#include <libdeflate.h>

#include <algorithm>
#include <array>
#include <memory>
#include <optional>

namespace {

constexpr std::array<uint8_t, 8> kSignature = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1a, '\n'};
constexpr uint64_t kZlibHeaderBytes = 2;
/// Rows are read in whole 32-bit words.
constexpr size_t kMargin = 4;

struct DecompressorDeleter {
    void operator()(libdeflate_decompressor* decompressor) const
    {
        libdeflate_free_decompressor(decompressor);
    }
};

constexpr uint32_t ChunkName(const char (&name)[5])
{
    uint32_t value = 0;
    for (int index = 0; index < 4; ++index)
        value = value << 8 | static_cast<uint8_t>(name[index]);
    return value;
}

struct Chunk {
    uint32_t name = 0;
    std::span<const uint8_t> content;
};

std::optional<Chunk> NextChunk(CByteReader& reader)
{
    Chunk chunk;
    uint32_t size = 0;
    if (!reader.ReadBigU32(size) || !reader.ReadBigU32(chunk.name) ||
        !reader.ReadBytes(size, chunk.content) || !reader.Skip(4))
        return std::nullopt;
    return chunk;
}

struct Header {
    uint32_t width = 0;
    uint32_t height = 0;
    int channels = 0;

    [[nodiscard]] uint64_t RowBytes() const { return uint64_t{width} * static_cast<uint64_t>(channels); }
    [[nodiscard]] uint64_t InflatedBytes() const { return (RowBytes() + 1) * height; }
};

std::optional<Header> HeaderOf(const Chunk& chunk)
{
    constexpr uint8_t kRgb = 2;
    constexpr uint8_t kRgba = 6;
    Header header;
    CByteReader reader(chunk.content);
    std::array<uint8_t, 5> fields = {};
    if (chunk.name != ChunkName("IHDR") || !reader.ReadBigU32(header.width) ||
        !reader.ReadBigU32(header.height))
        return std::nullopt;
    for (uint8_t& field : fields) {
        if (!reader.ReadU8(field))
            return std::nullopt;
    }
    const auto [depth, colour, compression, filter, interlace] = fields;
    header.channels = colour == kRgb ? 3 : 4;
    if (depth != 8 || (colour != kRgb && colour != kRgba) || compression != 0 || filter != 0 ||
        interlace != 0 || header.width == 0 || header.height == 0 ||
        uint64_t{header.width} * header.height > uint64_t{kMaxPicturePixels} ||
        header.InflatedBytes() > kMaxInflatedBytes)
        return std::nullopt;
    return header;
}

/// Passes over what stands before the picture's data; nothing when that may change what the pixels mean.
std::optional<Chunk> FirstData(CByteReader& reader)
{
    while (const std::optional<Chunk> chunk = NextChunk(reader)) {
        if (chunk->name == ChunkName("IDAT"))
            return chunk;
        // A lower-case first letter marks a chunk that may be ignored.
        const bool isOptional = (chunk->name & 0x20000000) != 0;
        if (chunk->name == ChunkName("tRNS") || (!isOptional && chunk->name != ChunkName("PLTE")))
            break;
    }
    return std::nullopt;
}

/// The content of all data chunks in one run of bytes: `joined` where they are several.
std::span<const uint8_t> JoinData(CByteReader& reader, const Chunk& first, CHeapBlock& joined)
{
    std::optional<Chunk> chunk = NextChunk(reader);
    if (!chunk || chunk->name != ChunkName("IDAT"))
        return first.content;
    joined = CHeapBlock::Allocate(reader.Size(), 0, BlockContent::Undefined);
    if (joined.IsEmpty())
        return {};
    uint8_t* end = std::copy(first.content.begin(), first.content.end(), joined.Data());
    for (; chunk && chunk->name == ChunkName("IDAT"); chunk = NextChunk(reader))
        end = std::copy(chunk->content.begin(), chunk->content.end(), end);
    return {joined.Data(), end};
}

/// The filtered rows; empty when the data are not exactly that long.
CHeapBlock Inflate(const Header& header, std::span<const uint8_t> data)
{
    constexpr uint8_t kDeflate = 8;
    constexpr uint8_t kPresetDictionary = 0x20;
    const uint64_t size = header.InflatedBytes();
    if (data.size() < kZlibHeaderBytes || (data[0] & 15) != kDeflate || (data[1] & kPresetDictionary) != 0 ||
        size / kMaxInflation > data.size())
        return {};
    const std::unique_ptr<libdeflate_decompressor, DecompressorDeleter> decompressor(
        libdeflate_alloc_decompressor());
    CHeapBlock rows = CHeapBlock::Allocate(static_cast<size_t>(size) + kMargin, 0, BlockContent::Undefined);
    if (decompressor == nullptr || rows.IsEmpty())
        return {};
    const std::span<const uint8_t> stream = data.subspan(kZlibHeaderBytes);
    const libdeflate_result result = libdeflate_deflate_decompress(
        decompressor.get(), stream.data(), stream.size(), rows.Data(), static_cast<size_t>(size), nullptr);
    if (result != LIBDEFLATE_SUCCESS)
        return {};
    std::fill_n(rows.Data() + size, kMargin, uint8_t{0});
    return rows;
}

} // namespace

CPackedDib DecodePlainPng(std::span<const uint8_t> file, IProgress* progress)
{
    CByteReader reader(file);
    std::span<const uint8_t> signature;
    if (!reader.ReadBytes(kSignature.size(), signature) ||
        !std::equal(signature.begin(), signature.end(), kSignature.begin()))
        return {};
    const std::optional<Chunk> start = NextChunk(reader);
    const std::optional<Header> header = start ? HeaderOf(*start) : std::nullopt;
    const std::optional<Chunk> data = header ? FirstData(reader) : std::nullopt;
    if (!data)
        return {};
    CHeapBlock joined;
    const CHeapBlock rows = Inflate(*header, JoinData(reader, *data, joined));
    const auto width = static_cast<int>(header->width);
    const auto height = static_cast<int>(header->height);
    const CHeapBlock zeroes = CHeapBlock::Allocate(size_t{header->width} * 4);
    if (rows.IsEmpty() || zeroes.IsEmpty())
        return {};
    CPackedDib dib = CPackedDib::CreateForOverwrite(width, height);
    if (dib.IsEmpty())
        return {};
    CRowProgress steps(progress, height);
    const uint8_t* above = zeroes.Data();
    const uint8_t* stored = rows.Data();
    for (int y = 0; y < height; ++y) {
        if (*stored >= kPngFilters)
            return {};
        UnfilterPngRow(static_cast<PngFilter>(*stored), stored + 1, above, width, header->channels,
                       dib.Row(y));
        stored += header->RowBytes() + 1;
        above = dib.Row(y);
        steps.SetDone(y + 1);
    }
    return dib;
}
