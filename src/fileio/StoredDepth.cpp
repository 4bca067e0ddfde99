// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/StoredDepth.h"

#include "fileio/StreamTags.h"
#include "platform/io/ByteReader.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <numeric>
#include <vector>

namespace {

/// The bits that a picture can have: up to four samples of sixteen, or a floating-point number each.
constexpr int kMostBits = 128;

int Bits(int samples, int bitsOfEach)
{
    const int64_t bits = int64_t{samples} * bitsOfEach;
    return bits <= kMostBits ? static_cast<int>(bits) : 0;
}

/// The number in some bytes, the highest first; 0 beyond the end.
int NumberAt(CByteReader reader, uint64_t position, uint64_t bytes)
{
    std::span<const uint8_t> digits;
    if (!reader.Seek(position) || !reader.ReadBytes(bytes, digits))
        return 0;
    return std::accumulate(digits.begin(), digits.end(), 0,
                           [](int number, uint8_t digit) { return number << 8 | digit; });
}

int DepthOfDibHeader(CByteReader reader)
{
    uint32_t size = 0;
    uint16_t bits = 0;
    // The oldest header has shorter fields for the size.
    constexpr uint32_t kCoreHeader = 12;
    const bool isRead =
        reader.ReadU32(size) && reader.Skip(size == kCoreHeader ? 4 + 2 : 8 + 2) && reader.ReadU16(bits);
    return isRead ? Bits(1, bits) : 0;
}

int DepthOfBmp(CByteReader reader)
{
    constexpr uint64_t kFileHeader = 14;
    return reader.Skip(kFileHeader) ? DepthOfDibHeader(CByteReader(reader.Rest())) : 0;
}

int DepthOfPng(CByteReader reader)
{
    // By colour type: grey, none, red, green and blue, palette, grey and alpha, none, with alpha.
    constexpr std::array<int, 7> kSamples = {1, 0, 3, 1, 2, 0, 4};
    constexpr uint64_t kBeforeDepth = 8 + 8 + 8;
    uint8_t depth = 0;
    uint8_t type = 0;
    const bool isRead = reader.Skip(kBeforeDepth) && reader.ReadU8(depth) && reader.ReadU8(type);
    return isRead && type < kSamples.size() ? Bits(kSamples[type], depth) : 0;
}

int DepthOfJpg(CByteReader reader)
{
    uint16_t marker = 0;
    if (!reader.ReadBigU16(marker) || marker != 0xFFD8)
        return 0;
    uint16_t length = 0;
    while (reader.ReadBigU16(marker) && reader.ReadBigU16(length) && length >= 2) {
        const int kind = marker & 0xFF;
        // Frame headers, without the tables that share their range.
        const bool isFrame = kind >= 0xC0 && kind <= 0xCF && kind != 0xC4 && kind != 0xC8 && kind != 0xCC;
        uint8_t precision = 0;
        uint8_t samples = 0;
        if (isFrame)
            return reader.ReadU8(precision) && reader.Skip(4) && reader.ReadU8(samples)
                       ? Bits(samples, precision)
                       : 0;
        if (!reader.Skip(length - 2U))
            return 0;
    }
    return 0;
}

int DepthOfPcx(CByteReader reader)
{
    return Bits(NumberAt(reader, 65, 1), NumberAt(reader, 3, 1));
}

int DepthOfTga(CByteReader reader)
{
    return Bits(1, NumberAt(reader, 16, 1));
}

/// The numbers of a TIFF file in its byte order.
class CTiffNumbers {
public:
    explicit CTiffNumbers(CByteReader reader) : m_reader(reader) {}

    bool ReadOrder()
    {
        uint16_t order = 0;
        m_isRead = m_reader.ReadU16(order) && (order == 0x4949 || order == 0x4D4D);
        m_isBig = order == 0x4D4D;
        return m_isRead && U16() == 42;
    }
    uint16_t U16()
    {
        uint16_t value = 0;
        m_isRead = m_isRead && (m_isBig ? m_reader.ReadBigU16(value) : m_reader.ReadU16(value));
        return value;
    }
    uint32_t U32()
    {
        uint32_t value = 0;
        m_isRead = m_isRead && (m_isBig ? m_reader.ReadBigU32(value) : m_reader.ReadU32(value));
        return value;
    }
    void Seek(uint64_t position) { m_isRead = m_isRead && m_reader.Seek(position); }
    [[nodiscard]] uint64_t Position() const { return m_reader.Position(); }
    [[nodiscard]] bool IsRead() const { return m_isRead; }

private:
    CByteReader m_reader;
    bool m_isBig = false;
    bool m_isRead = false;
};

int DepthOfTiff(CByteReader reader)
{
    constexpr uint16_t kBitsPerSample = 258;
    constexpr uint16_t kSamplesPerPixel = 277;
    CTiffNumbers numbers(reader);
    if (!numbers.ReadOrder())
        return 0;
    numbers.Seek(numbers.U32());
    int bits = 1;
    int samples = 1;
    for (int entries = numbers.U16(); entries > 0 && numbers.IsRead(); --entries) {
        const uint64_t next = numbers.Position() + 12;
        const uint16_t tag = numbers.U16();
        numbers.U16(); // the type
        const uint32_t count = numbers.U32();
        if (tag == kBitsPerSample) {
            // More than two numbers stand elsewhere.
            if (count > 2)
                numbers.Seek(numbers.U32());
            bits = numbers.U16();
        } else if (tag == kSamplesPerPixel) {
            samples = numbers.U16();
        }
        numbers.Seek(next);
    }
    return numbers.IsRead() ? Bits(samples, bits) : 0;
}

int DepthOfPsd(CByteReader reader)
{
    return Bits(NumberAt(reader, 12, 2), NumberAt(reader, 22, 2));
}

int DepthOfGif(CByteReader reader)
{
    uint8_t flags = 0;
    if (!reader.Seek(10) || !reader.ReadU8(flags))
        return 0;
    // Without a palette for all images each has its own, mostly a full one.
    return (flags & 0x80) != 0 ? (flags & 7) + 1 : 8;
}

/// Of icons and cursors; the pictures are DIBs or PNG files.
int DepthOfIcon(CByteReader reader)
{
    constexpr uint64_t kEntryBytes = 16;
    uint16_t count = 0;
    if (!reader.Seek(4) || !reader.ReadU16(count))
        return 0;
    int most = 0;
    for (uint64_t entry = 0; entry < count; ++entry) {
        uint32_t offset = 0;
        CByteReader picture = reader;
        uint8_t first = 0;
        if (!reader.Seek(6 + entry * kEntryBytes + 12) || !reader.ReadU32(offset) || !picture.Seek(offset) ||
            !CByteReader(picture.Rest()).ReadU8(first))
            break;
        const CByteReader rest(picture.Rest());
        most = std::max(most, first == 0x89 ? DepthOfPng(rest) : DepthOfDibHeader(rest));
    }
    return most;
}

/// How deeply lists stand inside of lists where pictures are described.
constexpr int kMostLists = 4;

/// Visits the chunks of a RIFF file, and those inside of its lists, until `visit` finds a depth.
template <typename Visit> int FindInChunks(CByteReader reader, Visit visit, int lists = kMostLists)
{
    if (lists == 0)
        return 0;
    uint32_t size = 0;
    std::span<const uint8_t> tag;
    while (reader.ReadBytes(4, tag) && reader.ReadU32(size)) {
        const std::string_view name(reinterpret_cast<const char*>(tag.data()), tag.size());
        const bool isList = name == "LIST" || name == "RIFF";
        const uint64_t length = std::min<uint64_t>(size, reader.Remaining());
        CByteReader chunk;
        const bool isInside = isList ? reader.Slice(reader.Position() + 4, length < 4 ? 0 : length - 4, chunk)
                                     : reader.Slice(reader.Position(), length, chunk);
        if (!isInside)
            return 0;
        if (const int depth = isList ? FindInChunks(chunk, visit, lists - 1) : visit(name, chunk); depth > 0)
            return depth;
        // Chunks of odd length are followed by a byte that belongs to none.
        if (!reader.Skip(std::min<uint64_t>(length + length % 2, reader.Remaining())))
            return 0;
    }
    return 0;
}

int DepthOfAni(CByteReader reader)
{
    return FindInChunks(reader, [](std::string_view name, const CByteReader& chunk) {
        return name == "icon" ? DepthOfIcon(chunk) : 0;
    });
}

int DepthOfAvi(CByteReader reader)
{
    return FindInChunks(reader, [isVideo = false](std::string_view name, CByteReader chunk) mutable {
        if (name == "strh")
            isVideo = ReadTag(chunk, "vids");
        return name == "strf" && isVideo ? DepthOfDibHeader(chunk) : 0;
    });
}

int DepthOfNative(CByteReader /*reader*/)
{
    return 32;
}

constexpr struct {
    std::string_view extension; ///< the first one of the format
    int (*depth)(CByteReader);
} kRows[] = {{"GIF", DepthOfGif}, {"ICO", DepthOfIcon}, {"CUR", DepthOfIcon},   {"ANI", DepthOfAni},
             {"AVI", DepthOfAvi}, {"PSD", DepthOfPsd},  {"PXD", DepthOfNative}, {"BMP", DepthOfBmp},
             {"JPG", DepthOfJpg}, {"PCX", DepthOfPcx},  {"PNG", DepthOfPng},    {"TGA", DepthOfTga},
             {"TIF", DepthOfTiff}};

} // namespace

int StoredDepth(const FormatRow& format, std::span<const uint8_t> head)
{
    const auto* row = std::ranges::find_if(
        kRows, [&](const auto& candidate) { return format.extensions.starts_with(candidate.extension); });
    return row == std::end(kRows) ? 0 : row->depth(CByteReader(head));
}

int StoredDepth(const FormatRow& format, const std::filesystem::path& path)
{
    std::vector<uint8_t> head(kDepthHeadBytes);
    std::ifstream file(path, std::ios::binary);
    file.read(reinterpret_cast<char*>(head.data()), static_cast<std::streamsize>(head.size()));
    return StoredDepth(format, std::span(head).first(static_cast<size_t>(file.gcount())));
}
