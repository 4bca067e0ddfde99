// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/codec/AlphaBytes.h"
#include "platform/codec/Image.h"
#include "platform/codec/RowProgress.h"
#include "platform/codec/SampleMasks.h"
#include "platform/io/ByteReader.h"
#include "platform/io/FileBytes.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <optional>

namespace {

constexpr uint32_t kCoreHeaderBytes = 12; ///< OS/2 1.x: 16-bit sizes, three bytes a colour
constexpr uint32_t kInfoHeaderBytes = 40;
constexpr uint32_t kAlphaHeaderBytes = 56; ///< from here on the header has four masks
constexpr uint32_t kMaxHeaderBytes = 1024;
/// The OS/2 2.x header may stop early, and uses compression values of its own.
constexpr uint32_t kLongOs2HeaderBytes = 64;
constexpr uint32_t kShortOs2HeaderBytes = 16;

enum class Compression : uint32_t { Rgb, Rle8, Rle4, BitFields, AlphaBitFields = 6 };

struct BmpHeader {
    int32_t width = 0;
    int32_t height = 0;
    bool isTopDown = false;
    uint16_t bitCount = 0;
    Compression compression = Compression::Rgb;
    uint32_t coloursUsed = 0;
    SampleMasks masks;
    std::array<RgbQuad, 256> colours = {};
    uint64_t bitsOffset = 0;
};

bool IsUsable(const BmpHeader& header)
{
    const uint16_t bits = header.bitCount;
    switch (header.compression) {
    case Compression::Rgb:
        return bits == 1 || bits == 2 || bits == 4 || bits == 8 || bits == 16 || bits == 24 || bits == 32;
    case Compression::Rle8:
        return bits == 8 && !header.isTopDown;
    case Compression::Rle4:
        return bits == 4 && !header.isTopDown;
    case Compression::BitFields:
    case Compression::AlphaBitFields:
        return bits == 16 || bits == 32;
    }
    return false;
}

bool ReadSizes(CByteReader& reader, uint32_t headerBytes, BmpHeader& header)
{
    uint16_t planes = 0;
    if (headerBytes == kCoreHeaderBytes) {
        uint16_t width = 0;
        uint16_t height = 0;
        if (!reader.ReadU16(width) || !reader.ReadU16(height))
            return false;
        header.width = width;
        header.height = height;
    } else if (!reader.ReadI32(header.width) || !reader.ReadI32(header.height)) {
        return false;
    }
    if (!reader.ReadU16(planes) || !reader.ReadU16(header.bitCount))
        return false;
    header.isTopDown = header.height < 0;
    if (header.width <= 0 || header.height == 0 || header.height == INT32_MIN)
        return false;
    header.height = header.isTopDown ? -header.height : header.height;
    return int64_t{header.width} * header.height <= kMaxPicturePixels;
}

bool ReadMasks(CByteReader& reader, uint32_t headerBytes, BmpHeader& header)
{
    if (header.compression == Compression::Rgb) {
        header.masks = header.bitCount == 16 ? SampleMasks{0x7c00, 0x03e0, 0x001f, 0}
                                             : SampleMasks{0xff0000, 0x00ff00, 0x0000ff, 0};
        return true;
    }
    const bool hasAlpha =
        headerBytes >= kAlphaHeaderBytes || header.compression == Compression::AlphaBitFields;
    if (!reader.ReadU32(header.masks.red) || !reader.ReadU32(header.masks.green) ||
        !reader.ReadU32(header.masks.blue) || (hasAlpha && !reader.ReadU32(header.masks.alpha)))
        return false;
    return true;
}

void ReadColours(CByteReader& reader, uint32_t headerBytes, BmpHeader& header)
{
    const size_t most = size_t{1} << header.bitCount;
    const size_t count = header.coloursUsed == 0 ? most : std::min<size_t>(header.coloursUsed, most);
    const uint64_t entryBytes = headerBytes == kCoreHeaderBytes ? 3 : 4;
    const bool isBounded = header.bitsOffset > reader.Position();
    for (size_t index = 0; index < count; ++index) {
        // A table may be shorter than it says, when the pixels begin before its end.
        std::span<const uint8_t> entry;
        if (isBounded && reader.Position() + entryBytes > header.bitsOffset)
            break;
        if (!reader.ReadBytes(entryBytes, entry))
            break;
        header.colours[index] = {entry[0], entry[1], entry[2], 0};
    }
}

std::optional<BmpHeader> ReadHeader(CByteReader& reader)
{
    BmpHeader header;
    uint16_t magic = 0;
    uint32_t bitsOffset = 0;
    uint32_t headerBytes = 0;
    constexpr uint16_t kMagic = 0x4d42;
    if (!reader.ReadU16(magic) || magic != kMagic || !reader.Skip(8) || !reader.ReadU32(bitsOffset))
        return std::nullopt;
    const uint64_t headerStart = reader.Position();
    if (!reader.ReadU32(headerBytes) || headerBytes > kMaxHeaderBytes ||
        (headerBytes != kCoreHeaderBytes && headerBytes < kShortOs2HeaderBytes) ||
        !ReadSizes(reader, headerBytes, header))
        return std::nullopt;
    header.bitsOffset = bitsOffset;

    uint32_t compression = 0;
    const bool isOs2 = headerBytes == kLongOs2HeaderBytes || headerBytes < kInfoHeaderBytes;
    if (headerBytes >= kInfoHeaderBytes) {
        if (!reader.ReadU32(compression) || !reader.Skip(12) || !reader.ReadU32(header.coloursUsed) ||
            !reader.Skip(4))
            return std::nullopt;
    } else if (headerBytes >= kShortOs2HeaderBytes + 4 && !reader.ReadU32(compression)) {
        return std::nullopt;
    }
    header.compression = static_cast<Compression>(compression);
    // Values above 2 mean something else there: Huffman coding and runs of 24-bit pixels.
    if (!IsUsable(header) || (isOs2 && compression > 2))
        return std::nullopt;

    if (header.bitCount > 8) {
        if (!ReadMasks(reader, headerBytes, header))
            return std::nullopt;
    }
    // The masks of the plain header stand behind it.
    const uint64_t headerEnd = headerStart + headerBytes;
    if (reader.Position() < headerEnd && !reader.Seek(headerEnd))
        return std::nullopt;
    if (header.bitCount <= 8)
        ReadColours(reader, headerBytes, header);
    if (header.bitsOffset < reader.Position() && header.bitsOffset < headerEnd)
        header.bitsOffset = reader.Position();
    return header;
}

void PutColour(uint8_t* pixel, const RgbQuad& colour)
{
    pixel[0] = colour.blue;
    pixel[1] = colour.green;
    pixel[2] = colour.red;
    pixel[3] = 255;
}

/// Up to 8 bits a pixel, the leftmost in the highest bits.
void ReadIndexedRow(const BmpHeader& header, const uint8_t* source, uint8_t* pixels)
{
    const unsigned bits = header.bitCount;
    const unsigned mask = (1u << bits) - 1;
    for (size_t x = 0; x < static_cast<size_t>(header.width); ++x) {
        const unsigned shift = 8 - bits - static_cast<unsigned>(x * bits % 8);
        PutColour(pixels + x * 4, header.colours[(source[x * bits / 8] >> shift) & mask]);
    }
}

void ReadRow(const BmpHeader& header, const CMaskedSamples& samples, const uint8_t* source, uint8_t* pixels)
{
    const auto width = static_cast<size_t>(header.width);
    if (header.bitCount <= 8) {
        ReadIndexedRow(header, source, pixels);
    } else if (header.bitCount == 24) {
        for (size_t x = 0; x < width; ++x)
            PutColour(pixels + x * 4, {source[x * 3], source[x * 3 + 1], source[x * 3 + 2], 0});
    } else if (header.compression == Compression::Rgb && header.bitCount == 32) {
        std::memcpy(pixels, source, width * 4);
    } else {
        const size_t bytes = header.bitCount / 8u;
        for (size_t x = 0; x < width; ++x) {
            uint32_t value = 0;
            std::memcpy(&value, source + x * bytes, bytes);
            samples.Convert(value, pixels + x * 4);
        }
    }
}

/// False when there is no whole row.
bool ReadPlainRows(const BmpHeader& header, CByteReader& reader, CPackedDib& dib, CRowProgress& progress)
{
    const auto stride = static_cast<uint64_t>(DibStride(header.width, header.bitCount));
    const uint64_t needed = (uint64_t{header.bitCount} * static_cast<uint64_t>(header.width) + 7) / 8;
    const CMaskedSamples samples(header.masks);
    int done = 0;
    for (; done < header.height && reader.Remaining() >= needed; ++done) {
        std::span<const uint8_t> source;
        // The padding of the last row may be missing.
        if (!reader.ReadBytes(std::min(stride, reader.Remaining()), source))
            break;
        ReadRow(header, samples, source.data(), dib.Row(header.isTopDown ? done : header.height - 1 - done));
        progress.SetDone(done);
    }
    return done > 0;
}

/// Where the next pixel of run-length coded data goes; rows count from the bottom. Pixels outside are
/// dropped.
class CRunPen {
public:
    CRunPen(const BmpHeader& header, CPackedDib& dib) : m_header(header), m_dib(dib) {}

    void Put(uint8_t index)
    {
        if (m_x < m_header.width && m_y < m_header.height) {
            PutColour(m_dib.Row(m_header.height - 1 - m_y) + ptrdiff_t{m_x} * 4, m_header.colours[index]);
            ++m_x;
            m_drew = true;
        }
    }
    void Move(int right, int up)
    {
        m_x = std::min(m_x + right, m_header.width);
        m_y = std::min(m_y + up, m_header.height);
    }
    void NextRow()
    {
        m_x = 0;
        Move(0, 1);
    }
    [[nodiscard]] bool IsAboveTop() const { return m_y >= m_header.height; }
    [[nodiscard]] int Row() const { return m_y; }
    [[nodiscard]] bool Drew() const { return m_drew; }

private:
    const BmpHeader& m_header;
    CPackedDib& m_dib;
    int32_t m_x = 0;
    int32_t m_y = 0;
    bool m_drew = false;
};

/// RLE8 and RLE4. Pixels that the data skip stay transparent. False when nothing was drawn.
bool ReadRuns(const BmpHeader& header, CByteReader& reader, CPackedDib& dib, CRowProgress& progress)
{
    const bool isHalfByte = header.compression == Compression::Rle4;
    // Pixel `index` of a run that begins with `byte`, and of literal bytes.
    const auto half = [](uint8_t byte, unsigned index) {
        return static_cast<uint8_t>(index % 2 == 0 ? byte >> 4 : byte & 15);
    };
    enum Escape : uint8_t { EndOfRow, EndOfPicture, Delta };
    CRunPen pen(header, dib);
    uint8_t count = 0;
    uint8_t value = 0;
    while (!pen.IsAboveTop() && reader.ReadU8(count) && reader.ReadU8(value)) {
        if (count > 0) {
            for (unsigned index = 0; index < count; ++index)
                pen.Put(isHalfByte ? half(value, index) : value);
        } else if (value == EndOfRow) {
            pen.NextRow();
            progress.SetDone(pen.Row());
        } else if (value == EndOfPicture) {
            break;
        } else if (value == Delta) {
            uint8_t right = 0;
            uint8_t up = 0;
            if (!reader.ReadU8(right) || !reader.ReadU8(up))
                break;
            pen.Move(right, up);
        } else {
            // `value` literal pixels, padded to whole 16-bit words.
            const uint64_t bytes = isHalfByte ? (value + 1u) / 2 : value;
            std::span<const uint8_t> literal;
            if (!reader.ReadBytes(std::min(bytes, reader.Remaining()), literal))
                break;
            for (unsigned index = 0; index < value && index / (isHalfByte ? 2 : 1) < literal.size(); ++index)
                pen.Put(isHalfByte ? half(literal[index / 2], index) : literal[index]);
            if (bytes % 2 != 0 && !reader.Skip(1))
                break;
        }
    }
    return pen.Drew();
}

} // namespace

CPackedDib CImage::LoadBmpFile(const std::filesystem::path& path, IProgress* progress)
{
    const std::optional<CHeapBlock> file = ReadFileBytes(path);
    if (!file)
        return {};
    CByteReader reader(file->Bytes());
    const std::optional<BmpHeader> header = ReadHeader(reader);
    if (!header || !reader.Seek(header->bitsOffset))
        return {};
    CPackedDib dib = CPackedDib::CreateTransparent(header->width, header->height);
    CRowProgress steps(progress, header->height);
    const bool isRuns = header->compression == Compression::Rle8 || header->compression == Compression::Rle4;
    if (dib.IsEmpty() ||
        !(isRuns ? ReadRuns(*header, reader, dib, steps) : ReadPlainRows(*header, reader, dib, steps)))
        return {};
    if (header->bitCount == 32 && header->compression == Compression::Rgb)
        SettleUnstatedAlpha(dib);
    return dib;
}
