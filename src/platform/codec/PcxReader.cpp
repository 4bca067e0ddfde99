// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/codec/Image.h"
#include "platform/codec/RowProgress.h"
#include "platform/io/ByteReader.h"
#include "platform/io/FileBytes.h"

#include <algorithm>
#include <array>
#include <optional>
#include <vector>

namespace {

constexpr uint8_t kManufacturer = 10;
constexpr uint8_t kVersionWithoutPalette = 3;
constexpr uint64_t kHeaderBytes = 128;
constexpr uint64_t kPaletteBytes = 768;
constexpr uint8_t kPaletteMark = 12;
constexpr uint8_t kRunMark = 0xc0;

using Palette = std::array<RgbQuad, 256>;

/// What the sixteen values of the display adapter mean where the file does not tell.
constexpr std::array<RgbQuad, 16> kAdapterColours = {{{0x00, 0x00, 0x00, 0},
                                                      {0xaa, 0x00, 0x00, 0},
                                                      {0x00, 0xaa, 0x00, 0},
                                                      {0xaa, 0xaa, 0x00, 0},
                                                      {0x00, 0x00, 0xaa, 0},
                                                      {0xaa, 0x00, 0xaa, 0},
                                                      {0x00, 0x55, 0xaa, 0},
                                                      {0xaa, 0xaa, 0xaa, 0},
                                                      {0x55, 0x55, 0x55, 0},
                                                      {0xff, 0x55, 0x55, 0},
                                                      {0x55, 0xff, 0x55, 0},
                                                      {0xff, 0xff, 0x55, 0},
                                                      {0x55, 0x55, 0xff, 0},
                                                      {0xff, 0x55, 0xff, 0},
                                                      {0x55, 0xff, 0xff, 0},
                                                      {0xff, 0xff, 0xff, 0}}};

struct PcxHeader {
    uint8_t version = 0;
    bool isRuns = false;
    uint8_t bits = 0; ///< of one plane
    uint8_t planes = 0;
    uint16_t planeBytes = 0; ///< of one row
    int width = 0;
    int height = 0;
    std::span<const uint8_t> palette; ///< sixteen colours

    [[nodiscard]] bool IsTrueColour() const { return bits == 8 && planes >= 3; }
};

std::optional<PcxHeader> ReadHeader(CByteReader& reader)
{
    PcxHeader header;
    uint8_t manufacturer = 0;
    uint8_t encoding = 0;
    uint16_t left = 0;
    uint16_t top = 0;
    uint16_t right = 0;
    uint16_t bottom = 0;
    if (!reader.ReadU8(manufacturer) || !reader.ReadU8(header.version) || !reader.ReadU8(encoding) ||
        !reader.ReadU8(header.bits) || !reader.ReadU16(left) || !reader.ReadU16(top) ||
        !reader.ReadU16(right) || !reader.ReadU16(bottom) || !reader.Skip(4) ||
        !reader.ReadBytes(48, header.palette) || !reader.Skip(1) || !reader.ReadU8(header.planes) ||
        !reader.ReadU16(header.planeBytes) || !reader.Seek(kHeaderBytes))
        return std::nullopt;
    header.isRuns = encoding == 1;
    header.width = right - left + 1;
    header.height = bottom - top + 1;
    const uint8_t bits = header.bits;
    const bool isIndexed =
        (bits == 1 || bits == 2 || bits == 4 || bits == 8) && header.planes >= 1 && bits * header.planes <= 8;
    const bool isTrueColour = bits == 8 && (header.planes == 3 || header.planes == 4);
    if (manufacturer != kManufacturer || encoding > 1 || (!isIndexed && !isTrueColour) || header.width <= 0 ||
        header.height <= 0 || int64_t{header.planeBytes} * 8 < int64_t{header.width} * bits)
        return std::nullopt;
    return header;
}

RgbQuad ColourAt(std::span<const uint8_t> triples, size_t index)
{
    return {triples[index * 3 + 2], triples[index * 3 + 1], triples[index * 3], 0};
}

Palette ReadPalette(const PcxHeader& header, const CByteReader& file)
{
    Palette palette = {};
    const int bits = header.bits * header.planes;
    if (bits == 1) {
        palette[1] = {255, 255, 255, 0};
        return palette;
    }
    if (bits <= 4) {
        for (size_t index = 0; index < kAdapterColours.size(); ++index) {
            palette[index] = header.version == kVersionWithoutPalette ? kAdapterColours[index]
                                                                      : ColourAt(header.palette, index);
        }
        return palette;
    }
    // 256 colours stand at the end of the file behind a mark; without them the values are greys.
    CByteReader end;
    uint8_t mark = 0;
    std::span<const uint8_t> triples;
    const uint64_t endBytes = kPaletteBytes + 1;
    const bool isStored = file.Size() >= kHeaderBytes + endBytes &&
                          file.Slice(file.Size() - endBytes, endBytes, end) && end.ReadU8(mark) &&
                          mark == kPaletteMark && end.ReadBytes(kPaletteBytes, triples);
    for (size_t index = 0; index < palette.size(); ++index) {
        const auto grey = static_cast<uint8_t>(index);
        palette[index] = isStored ? ColourAt(triples, index) : RgbQuad{grey, grey, grey, 0};
    }
    return palette;
}

/// Gives the bytes of the rows; a run may reach over the end of a row.
class CRunSource {
public:
    CRunSource(CByteReader reader, bool isRuns) : m_reader(reader), m_isRuns(isRuns) {}

    /// False when the data end before `bytes` is full.
    [[nodiscard]] bool Fill(std::span<uint8_t> bytes)
    {
        for (size_t at = 0; at < bytes.size();) {
            if (m_left == 0 && !ReadRun())
                return false;
            const size_t count = std::min<size_t>(m_left, bytes.size() - at);
            std::fill_n(bytes.begin() + static_cast<ptrdiff_t>(at), count, m_value);
            at += count;
            m_left -= static_cast<uint32_t>(count);
        }
        return true;
    }

private:
    bool ReadRun()
    {
        if (!m_reader.ReadU8(m_value))
            return false;
        m_left = 1;
        if (m_isRuns && m_value >= kRunMark) {
            m_left = m_value - kRunMark;
            if (!m_reader.ReadU8(m_value))
                return false;
        }
        return true;
    }

    CByteReader m_reader;
    bool m_isRuns;
    uint8_t m_value = 0;
    uint32_t m_left = 0;
};

void ConvertRow(const PcxHeader& header, const Palette& palette, const uint8_t* planes, uint8_t* pixel)
{
    const size_t planeBytes = header.planeBytes;
    const size_t bits = header.bits;
    const unsigned mask = (1u << bits) - 1;
    for (size_t x = 0; x < static_cast<size_t>(header.width); ++x, pixel += 4) {
        pixel[3] = 255;
        if (header.IsTrueColour()) {
            for (size_t plane = 0; plane < 3; ++plane)
                pixel[2 - plane] = planes[plane * planeBytes + x];
            continue;
        }
        unsigned index = 0;
        for (size_t plane = 0; plane < header.planes; ++plane) {
            const unsigned byte = planes[plane * planeBytes + x * bits / 8];
            index |= ((byte >> (8 - bits - x * bits % 8)) & mask) << (plane * bits);
        }
        const RgbQuad& colour = palette[index];
        pixel[0] = colour.blue;
        pixel[1] = colour.green;
        pixel[2] = colour.red;
    }
}

} // namespace

CPackedDib CImage::LoadPCXFile(const std::filesystem::path& path, IProgress* progress)
{
    const std::optional<CHeapBlock> file = ReadFileBytes(path);
    if (!file)
        return {};
    CByteReader reader(file->Bytes());
    const std::optional<PcxHeader> header = ReadHeader(reader);
    if (!header)
        return {};
    CPackedDib dib = CPackedDib::CreateTransparent(header->width, header->height);
    if (dib.IsEmpty())
        return {};
    const Palette palette = ReadPalette(*header, reader);
    CRunSource source(reader, header->isRuns);
    std::vector<uint8_t> planes(size_t{header->planeBytes} * header->planes);
    CRowProgress steps(progress, header->height);
    int done = 0;
    while (done < header->height && source.Fill(planes)) {
        ConvertRow(*header, palette, planes.data(), dib.Row(done));
        steps.SetDone(++done);
    }
    return done > 0 ? std::move(dib) : CPackedDib();
}
