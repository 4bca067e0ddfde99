// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/PsdPixels.h"

#include "fileio/RowCoder.h"
#include "platform/Limits.h"
#include "platform/codec/Inflate.h"
#include "platform/parallel/PictureBands.h"
#include "platform/parallel/RowBands.h"

#include <algorithm>
#include <array>

namespace {

enum class PsdCompression : uint16_t { Raw = 0, Rows = 1, Zip = 2, ZipWithPrediction = 3 };

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
            return bytes <= data.Remaining() * kMaxInflation && Unzip(data.Rest(), bytes);
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

/// 8 bits a sample of 1 or 16. A bit that is set is black.
void NarrowRow(const uint8_t* row, int depth, size_t width, uint8_t* samples)
{
    for (size_t x = 0; x < width; ++x) {
        if (depth == 1)
            samples[x] = (row[x / 8] >> (7 - x % 8) & 1) != 0 ? 0 : 255;
        else
            samples[x] = static_cast<uint8_t>(((row[2 * x] << 8 | row[2 * x + 1]) * 255 + 32767) / 65535);
    }
}

/// Light that passes two layers of ink; samples are 255 where there is none.
uint8_t Mixed(uint8_t ink, uint8_t black)
{
    return static_cast<uint8_t>((ink * black + 127) / 255);
}

/// Makes rows of pixels of the rows of planes.
class CPsdRowComposer {
public:
    CPsdRowComposer(const PsdHeader& header, std::span<const PsdPlane> planes, size_t width)
        : m_header(header), m_planes(planes), m_width(width),
          m_colours(static_cast<size_t>(PsdColourChannels(header.mode))), m_absent(width, 0),
          m_opaque(width, 255)
    {
        if (header.mode == PsdMode::Indexed || header.mode == PsdMode::Cmyk)
            m_made.resize(3 * width);
    }

    void Compose(size_t y, uint8_t* pixels)
    {
        std::array<const uint8_t*, 3> colours{};
        for (size_t channel = 0; channel < 3; ++channel)
            colours[channel] = Samples(m_colours == 1 ? 0 : channel, y, m_absent);
        if (!m_made.empty()) {
            for (size_t channel = 0; channel < 3; ++channel)
                Make(channel, colours[channel], y);
            colours = {m_made.data(), m_made.data() + m_width, m_made.data() + 2 * m_width};
        }
        InterleaveRows({colours[2], colours[1], colours[0], Samples(m_colours, y, m_opaque)}, m_width,
                       pixels);
    }

private:
    [[nodiscard]] const uint8_t* Samples(size_t plane, size_t y, const std::vector<uint8_t>& otherwise) const
    {
        return plane < m_planes.size() && !m_planes[plane].IsEmpty() ? m_planes[plane].Data() + y * m_width
                                                                     : otherwise.data();
    }

    /// Red, green or blue of what are no such samples.
    void Make(size_t channel, const uint8_t* samples, size_t y)
    {
        uint8_t* const made = m_made.data() + channel * m_width;
        if (m_header.mode == PsdMode::Indexed) {
            constexpr std::array<uint8_t RgbQuad::*, 3> kBytes = {&RgbQuad::red, &RgbQuad::green,
                                                                  &RgbQuad::blue};
            for (size_t x = 0; x < m_width; ++x)
                made[x] = m_header.palette[samples[x]].*kBytes[channel];
            return;
        }
        const uint8_t* const black = Samples(3, y, m_opaque);
        for (size_t x = 0; x < m_width; ++x)
            made[x] = Mixed(samples[x], black[x]);
    }

    const PsdHeader& m_header;
    std::span<const PsdPlane> m_planes;
    size_t m_width;
    size_t m_colours;
    std::vector<uint8_t> m_absent;
    std::vector<uint8_t> m_opaque;
    std::vector<uint8_t> m_made;
};

constexpr int kPixelsPerMicrosecond = 500;

} // namespace

std::vector<PsdPlane> ReadPsdPlanes(CByteReader data, int depth, int width, int height, int stored, int count)
{
    const size_t rowSamples = static_cast<size_t>(width);
    const size_t pixels = rowSamples * static_cast<size_t>(height);
    const size_t rowBytes = (rowSamples * static_cast<size_t>(depth) + 7) / 8;
    CPsdRows rows(rowBytes, static_cast<size_t>(height) * static_cast<size_t>(stored), depth);
    CHeapBlock row = CHeapBlock::Allocate(rowBytes + kRowSlack);
    if (row.IsEmpty() || !rows.Open(data))
        return {};
    std::vector<PsdPlane> planes;
    for (int index = 0; index < count; ++index) {
        PsdPlane plane = CHeapBlock::Allocate(pixels + kRowSlack, 0, BlockContent::Undefined);
        if (plane.IsEmpty())
            return {};
        for (size_t y = 0; y < static_cast<size_t>(height); ++y) {
            uint8_t* const samples = plane.Data() + y * rowSamples;
            // The slack of a row is the next one, which is still to come.
            if (!rows.Read(depth == 8 ? samples : row.Data()))
                return {};
            if (depth != 8)
                NarrowRow(row.Data(), depth, rowSamples, samples);
        }
        planes.push_back(std::move(plane));
    }
    return planes;
}

CPackedDib ComposePsdPicture(const PsdHeader& header, std::span<const PsdPlane> planes, int width, int height)
{
    return MakePictureInBands({width, height}, BandRows(width, kPixelsPerMicrosecond),
                              [&](CPackedDib& dib, int begin, int end) {
                                  CPsdRowComposer composer(header, planes, static_cast<size_t>(width));
                                  for (int y = end - 1; y >= begin; --y)
                                      composer.Compose(static_cast<size_t>(y), dib.Row(y));
                                  return true;
                              });
}
