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
#include <vector>

namespace {

enum class Kind { Palette = 1, Colour = 2, Grey = 3 };

constexpr uint8_t kRunLengthFlag = 8;
constexpr uint8_t kAlphaBitsMask = 0x0f;
constexpr uint8_t kRightToLeftFlag = 0x10;
constexpr uint8_t kTopDownFlag = 0x20;
constexpr SampleMasks kMasks16 = {0x7c00, 0x03e0, 0x001f, 0};
constexpr SampleMasks kMasks16Alpha = {0x7c00, 0x03e0, 0x001f, 0x8000};

struct Pixel {
    uint8_t bytes[4] = {0, 0, 0, 255};
};

struct TgaHeader {
    Kind kind = Kind::Colour;
    bool isRuns = false;
    uint16_t mapFirst = 0;
    uint16_t mapLength = 0;
    uint8_t mapEntryBits = 0;
    uint16_t width = 0;
    uint16_t height = 0;
    uint8_t bits = 0;
    uint8_t descriptor = 0;

    [[nodiscard]] bool StatesAlpha() const { return (descriptor & kAlphaBitsMask) != 0; }
    [[nodiscard]] size_t PixelBytes() const { return (bits + 7u) / 8; }
    [[nodiscard]] size_t MapEntryBytes() const { return (mapEntryBits + 7u) / 8; }
};

bool IsColourDepth(uint8_t bits)
{
    return bits == 15 || bits == 16 || bits == 24 || bits == 32;
}

bool IsUsable(const TgaHeader& header)
{
    switch (header.kind) {
    case Kind::Palette:
        return (header.bits == 8 || header.bits == 16) && header.mapLength > 0 &&
               IsColourDepth(header.mapEntryBits);
    case Kind::Colour:
        return IsColourDepth(header.bits);
    case Kind::Grey:
        return header.bits == 8 || header.bits == 16;
    }
    return false;
}

/// Ends behind the identification field, where the colour map begins.
std::optional<TgaHeader> ReadHeader(CByteReader& reader)
{
    TgaHeader header;
    uint8_t identificationBytes = 0;
    uint8_t hasMap = 0;
    uint8_t type = 0;
    if (!reader.ReadU8(identificationBytes) || !reader.ReadU8(hasMap) || !reader.ReadU8(type) ||
        !reader.ReadU16(header.mapFirst) || !reader.ReadU16(header.mapLength) ||
        !reader.ReadU8(header.mapEntryBits) || !reader.Skip(4) || !reader.ReadU16(header.width) ||
        !reader.ReadU16(header.height) || !reader.ReadU8(header.bits) || !reader.ReadU8(header.descriptor) ||
        !reader.Skip(identificationBytes))
        return std::nullopt;
    header.kind = static_cast<Kind>(type & ~kRunLengthFlag);
    header.isRuns = (type & kRunLengthFlag) != 0;
    if (hasMap == 0)
        header.mapLength = 0;
    if (hasMap > 1 || !IsUsable(header) || header.width == 0 || header.height == 0)
        return std::nullopt;
    return header;
}

/// Turns stored pixels into blue, green, red, alpha.
class CPixelConverter {
public:
    explicit CPixelConverter(const TgaHeader& header)
        : m_header(header), m_samples(header.StatesAlpha() ? kMasks16Alpha : kMasks16)
    {
    }

    /// Takes the colour map that a palette picture needs, and passes over any other.
    [[nodiscard]] bool ReadMap(CByteReader& reader)
    {
        const size_t entryBytes = m_header.MapEntryBytes();
        std::span<const uint8_t> entries;
        if (!reader.ReadBytes(uint64_t{m_header.mapLength} * entryBytes, entries))
            return false;
        if (m_header.kind != Kind::Palette)
            return true;
        m_map.resize(m_header.mapLength);
        for (size_t index = 0; index < m_map.size(); ++index)
            ConvertColour(entries.data() + index * entryBytes, m_header.mapEntryBits, m_map[index].bytes);
        return true;
    }

    void Convert(const uint8_t* stored, uint8_t* pixel) const
    {
        switch (m_header.kind) {
        case Kind::Palette: {
            const uint32_t value = m_header.bits == 8 ? stored[0] : stored[0] | uint32_t{stored[1]} << 8;
            const uint32_t index = value - m_header.mapFirst;
            const Pixel colour = index < m_map.size() ? m_map[index] : Pixel();
            std::memcpy(pixel, colour.bytes, sizeof colour);
            break;
        }
        case Kind::Colour:
            ConvertColour(stored, m_header.bits, pixel);
            break;
        case Kind::Grey:
            std::fill_n(pixel, 3, stored[0]);
            pixel[3] = m_header.bits == 16 ? stored[1] : 255;
            break;
        }
    }

private:
    void ConvertColour(const uint8_t* stored, uint8_t bits, uint8_t* pixel) const
    {
        if (bits <= 16) {
            m_samples.Convert(stored[0] | uint32_t{stored[1]} << 8, pixel);
            return;
        }
        std::memcpy(pixel, stored, 3);
        pixel[3] = bits == 32 ? stored[3] : 255;
    }

    const TgaHeader& m_header;
    CMaskedSamples m_samples;
    std::vector<Pixel> m_map;
};

/// Gives the stored pixels one after another, whether or not they are run-length coded. A packet may reach
/// over the end of a row.
class CPixelSource {
public:
    CPixelSource(CByteReader reader, const TgaHeader& header)
        : m_reader(reader), m_pixelBytes(header.PixelBytes()), m_isRuns(header.isRuns)
    {
    }

    /// The next pixel's bytes; null at the end of the data.
    [[nodiscard]] const uint8_t* Next()
    {
        if (m_isRuns && m_left == 0 && !ReadPacket())
            return nullptr;
        if (!m_isRuns || !m_repeats) {
            if (!m_reader.ReadBytes(m_pixelBytes, m_pixel))
                return nullptr;
        }
        --m_left;
        return m_pixel.data();
    }

private:
    bool ReadPacket()
    {
        uint8_t packet = 0;
        if (!m_reader.ReadU8(packet))
            return false;
        m_left = (packet & 0x7fu) + 1;
        m_repeats = (packet & 0x80) != 0;
        return !m_repeats || m_reader.ReadBytes(m_pixelBytes, m_pixel);
    }

    CByteReader m_reader;
    size_t m_pixelBytes;
    bool m_isRuns;
    bool m_repeats = false;
    uint32_t m_left = 0;
    std::span<const uint8_t> m_pixel;
};

/// The number of whole rows.
int ReadRows(const TgaHeader& header, const CPixelConverter& converter, CPixelSource source, CPackedDib& dib,
             IProgress* progress)
{
    CRowProgress steps(progress, header.height);
    const bool isMirrored = (header.descriptor & kRightToLeftFlag) != 0;
    const bool isTopDown = (header.descriptor & kTopDownFlag) != 0;
    const ptrdiff_t step = isMirrored ? -4 : 4;
    for (int done = 0; done < header.height; ++done) {
        uint8_t* pixel = dib.Row(isTopDown ? done : header.height - 1 - done);
        if (isMirrored)
            pixel += ptrdiff_t{header.width - 1} * 4;
        for (int x = 0; x < header.width; ++x, pixel += step) {
            const uint8_t* stored = source.Next();
            if (stored == nullptr)
                return done;
            converter.Convert(stored, pixel);
        }
        steps.SetDone(done + 1);
    }
    return header.height;
}

} // namespace

CPackedDib CImage::LoadTGAFile(const std::filesystem::path& path, IProgress* progress)
{
    const std::optional<CHeapBlock> file = ReadFileBytes(path);
    if (!file)
        return {};
    CByteReader reader(file->Bytes());
    const std::optional<TgaHeader> header = ReadHeader(reader);
    if (!header)
        return {};
    CPixelConverter converter(*header);
    if (!converter.ReadMap(reader))
        return {};
    CPackedDib dib = CPackedDib::CreateTransparent(header->width, header->height);
    if (dib.IsEmpty() || ReadRows(*header, converter, CPixelSource(reader, *header), dib, progress) == 0)
        return {};
    // The one bit of 16-bit pixels is often stated and never set.
    if (!header->StatesAlpha() || header->bits == 16)
        SettleUnstatedAlpha(dib);
    return dib;
}
