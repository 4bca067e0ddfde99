// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/PsdPixels.h"

#include "fileio/RowCoder.h"
#include "platform/codec/Inflate.h"

#include <algorithm>
#include <array>

namespace {

enum class PsdCompression : uint16_t { Raw = 0, Rows = 1, Zip = 2, ZipWithPrediction = 3 };

/// Most bytes that a byte of a zlib stream can give.
constexpr uint64_t kMostPerZipByte = 1032;

/// Delivers the rows of a channel, or of several that are stored together, one after another.
class CPsdRows {
public:
    /// rows: of all channels together.
    CPsdRows(size_t rowBytes, size_t rows, int depth) : m_rowBytes(rowBytes), m_rows(rows), m_depth(depth) {}

    [[nodiscard]] bool Open(CByteReader data)
    {
        uint16_t compression = 0;
        if (!data.ReadBigU16(compression))
            return false;
        m_compression = static_cast<PsdCompression>(compression);
        const uint64_t bytes = uint64_t{m_rowBytes} * m_rows;
        switch (m_compression) {
        case PsdCompression::Raw:
            m_data = data;
            return bytes <= data.Remaining();
        case PsdCompression::Rows:
            m_lengths = data;
            m_data = data;
            return m_data.Skip(2 * m_rows) && SmallestPackedRow(m_rowBytes) * m_rows <= m_data.Remaining();
        case PsdCompression::Zip:
        case PsdCompression::ZipWithPrediction:
            return bytes <= data.Remaining() * kMostPerZipByte && Unzip(data.Rest(), bytes);
        }
        return false;
    }

    /// row: room for the row and the slack of the row code.
    [[nodiscard]] bool Read(uint8_t* row)
    {
        uint16_t length = 0;
        std::span<const uint8_t> bytes;
        if (m_compression == PsdCompression::Rows)
            return m_lengths.ReadBigU16(length) && m_data.ReadBytes(length, bytes) &&
                   DecompressRow(bytes, m_rowBytes, row);
        if (!m_data.ReadBytes(m_rowBytes, bytes))
            return false;
        std::ranges::copy(bytes, row);
        if (m_compression == PsdCompression::ZipWithPrediction)
            Undo(row);
        return true;
    }

private:
    bool Unzip(std::span<const uint8_t> packed, uint64_t bytes)
    {
        m_unzipped = CHeapBlock::Allocate(static_cast<size_t>(bytes));
        m_data = CByteReader(m_unzipped.Bytes());
        return !m_unzipped.IsEmpty() && InflateZlib(packed, m_unzipped.Bytes());
    }

    /// Each sample is stored as its difference from the one on its left.
    void Undo(uint8_t* row) const
    {
        if (m_depth != 16) {
            for (size_t at = 1; at < m_rowBytes; ++at)
                row[at] = static_cast<uint8_t>(row[at] + row[at - 1]);
            return;
        }
        for (size_t at = 2; at + 1 < m_rowBytes; at += 2) {
            const int sum = (row[at] << 8 | row[at + 1]) + (row[at - 2] << 8 | row[at - 1]);
            row[at] = static_cast<uint8_t>(sum >> 8);
            row[at + 1] = static_cast<uint8_t>(sum);
        }
    }

    size_t m_rowBytes;
    size_t m_rows;
    int m_depth;
    PsdCompression m_compression = PsdCompression::Raw;
    CByteReader m_lengths;
    CByteReader m_data;
    CHeapBlock m_unzipped;
};

/// 8 bits a sample. A bit that is set is black.
void NarrowRow(const uint8_t* row, int depth, size_t width, uint8_t* samples)
{
    for (size_t x = 0; x < width; ++x) {
        if (depth == 1)
            samples[x] = (row[x / 8] >> (7 - x % 8) & 1) != 0 ? 0 : 255;
        else if (depth == 16)
            samples[x] = static_cast<uint8_t>(((row[2 * x] << 8 | row[2 * x + 1]) * 255 + 32767) / 65535);
        else
            samples[x] = row[x];
    }
}

/// Light that passes two layers of ink; samples are 255 where there is none.
uint8_t Mixed(uint8_t ink, uint8_t black)
{
    return static_cast<uint8_t>((ink * black + 127) / 255);
}

} // namespace

std::vector<PsdPlane> ReadPsdPlanes(CByteReader data, int depth, int width, int height, int stored, int count)
{
    const auto pixels = static_cast<size_t>(width) * static_cast<size_t>(height);
    const size_t rowBytes = (static_cast<size_t>(width) * static_cast<size_t>(depth) + 7) / 8;
    CPsdRows rows(rowBytes, static_cast<size_t>(height) * static_cast<size_t>(stored), depth);
    CHeapBlock row = CHeapBlock::Allocate(rowBytes + kRowSlack);
    if (row.IsEmpty() || !rows.Open(data))
        return {};
    std::vector<PsdPlane> planes;
    for (int index = 0; index < count; ++index) {
        PsdPlane plane = CHeapBlock::Allocate(pixels);
        if (plane.IsEmpty())
            return {};
        for (size_t y = 0; y < static_cast<size_t>(height); ++y) {
            if (!rows.Read(row.Data()))
                return {};
            NarrowRow(row.Data(), depth, static_cast<size_t>(width),
                      plane.Data() + y * static_cast<size_t>(width));
        }
        planes.push_back(std::move(plane));
    }
    return planes;
}

CPackedDib ComposePsdPicture(const PsdHeader& header, std::span<const PsdPlane> planes, int width, int height)
{
    CPackedDib dib = CPackedDib::Create(width, height, 32);
    if (dib.IsEmpty())
        return dib;
    const auto colours = static_cast<size_t>(PsdColourChannels(header.mode));
    size_t at = 0;
    const auto sample = [&](size_t plane, uint8_t otherwise) {
        return plane < planes.size() && !planes[plane].IsEmpty() ? planes[plane].Data()[at] : otherwise;
    };
    for (int y = 0; y < height; ++y) {
        uint8_t* pixel = dib.Row(y);
        for (int x = 0; x < width; ++x, ++at, pixel += 4) {
            std::array<uint8_t, 3> rgb{};
            for (size_t channel = 0; channel < 3; ++channel) {
                const uint8_t value = sample(colours == 1 ? 0 : channel, 0);
                rgb[channel] = header.mode == PsdMode::Cmyk ? Mixed(value, sample(3, 255)) : value;
            }
            if (header.mode == PsdMode::Indexed) {
                const RgbQuad& colour = header.palette[rgb[0]];
                rgb = {colour.red, colour.green, colour.blue};
            }
            pixel[0] = rgb[2];
            pixel[1] = rgb[1];
            pixel[2] = rgb[0];
            pixel[3] = sample(colours, 255);
        }
    }
    return dib;
}
