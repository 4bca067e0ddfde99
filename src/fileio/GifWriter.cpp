// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/GifWriter.h"

#include "fileio/GifLzwEncoder.h"
#include "fileio/GifRows.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cassert>

namespace {

/// The exponent of a table size.
int TableBits(int tableSize)
{
    assert(std::has_single_bit(static_cast<unsigned>(tableSize)) && tableSize >= 2 && tableSize <= 256);
    return std::countr_zero(static_cast<unsigned>(tableSize));
}

/// One byte a pixel.
void ExpandRow(const CPackedDib& picture, int y, std::span<uint8_t> indices)
{
    const uint8_t* row = picture.Row(y);
    const auto bits = static_cast<size_t>(picture.BitCount());
    if (bits == 8) {
        std::copy_n(row, indices.size(), indices.begin());
        return;
    }
    const size_t perByte = 8 / bits;
    for (size_t x = 0; x < indices.size(); ++x) {
        const size_t shift = 8 - bits - x % perByte * bits;
        indices[x] = static_cast<uint8_t>(row[x / perByte] >> shift & ((1 << bits) - 1));
    }
}

bool IsMasked(const CPackedDib& mask, size_t x, int y)
{
    return !mask.IsEmpty() && (mask.Row(y)[x / 8] >> (7 - x % 8) & 1) != 0;
}

} // namespace

int GifTableSize(uint32_t count)
{
    return count > 256 ? 2 : static_cast<int>(std::bit_ceil(std::max(count, 2U)));
}

std::optional<uint8_t> FindTransparentIndex(const CPackedDib& picture, const CPackedDib& mask,
                                            uint8_t current, int tableSize)
{
    std::array<bool, 256> isUsed{};
    std::vector<uint8_t> indices(static_cast<size_t>(picture.Width()));
    for (int y = 0; y < picture.Height(); ++y) {
        ExpandRow(picture, y, indices);
        for (size_t x = 0; x < indices.size(); ++x) {
            if (!IsMasked(mask, x, y))
                isUsed[indices[x]] = true;
        }
    }
    if (current < tableSize && !isUsed[current])
        return current;
    const auto end = isUsed.begin() + tableSize;
    const auto found = std::find(isUsed.begin(), end, false);
    if (found == end)
        return std::nullopt;
    return static_cast<uint8_t>(found - isUsed.begin());
}

void CGifWriter::WritePalette(std::span<const RgbQuad> palette, int tableSize)
{
    const size_t count = std::min(palette.size(), static_cast<size_t>(tableSize));
    for (const RgbQuad& colour : palette.first(count)) {
        m_writer.U8(colour.red);
        m_writer.U8(colour.green);
        m_writer.U8(colour.blue);
    }
    m_writer.Zeroes((static_cast<size_t>(tableSize) - count) * 3);
}

void CGifWriter::WriteHeader(Size screen, std::span<const RgbQuad> palette, int tableSize, int bitCount,
                             uint8_t backgroundIndex)
{
    m_writer.Text(std::string_view("GIF89a"), 6);
    m_writer.U16(static_cast<uint16_t>(screen.width));
    m_writer.U16(static_cast<uint16_t>(screen.height));
    const int depth = ((bitCount - 1) & 15) << 4;
    const int table = palette.empty() ? 0 : 0x80 | (TableBits(tableSize) - 1);
    m_writer.U8(static_cast<uint8_t>(depth | table));
    m_writer.U8(backgroundIndex);
    m_writer.U8(0);
    if (!palette.empty())
        WritePalette(palette, tableSize);
}

void CGifWriter::WriteFrame(const CPackedDib& picture, const CPackedDib& mask, const GifFrameOptions& options,
                            IProgress* progress)
{
    const int tableBits = TableBits(options.tableSize);
    m_writer.U8(0x21);
    m_writer.U8(0xF9);
    m_writer.U8(4);
    m_writer.U8(static_cast<uint8_t>((options.disposal & 7) << 2 | (options.isTransparent ? 1 : 0)));
    m_writer.U16(options.delay);
    m_writer.U8(options.transparentIndex);
    m_writer.U8(0);

    m_writer.U8(',');
    m_writer.U16(static_cast<uint16_t>(options.position.x));
    m_writer.U16(static_cast<uint16_t>(options.position.y));
    m_writer.U16(static_cast<uint16_t>(picture.Width()));
    m_writer.U16(static_cast<uint16_t>(picture.Height()));
    const int table = options.hasLocalPalette ? 0x80 | (tableBits - 1) : 0;
    m_writer.U8(static_cast<uint8_t>(table | (options.isInterlaced ? 0x40 : 0)));
    if (options.hasLocalPalette)
        WritePalette(picture.ColourTable(), options.tableSize);

    const int minimumCodeSize = std::max(tableBits, 2);
    m_writer.U8(static_cast<uint8_t>(minimumCodeSize));
    std::vector<uint8_t> blocks;
    CGifLzwEncoder encoder(minimumCodeSize, blocks);
    std::vector<uint8_t> indices(static_cast<size_t>(picture.Width()));
    const auto lastIndex = static_cast<uint8_t>(options.tableSize - 1);
    int rowsDone = 0;
    for (CGifRows rows(picture.Height(), options.isInterlaced); !rows.AtEnd(); rows.Advance()) {
        ExpandRow(picture, rows.Row(), indices);
        for (size_t x = 0; !mask.IsEmpty() && x < indices.size(); ++x)
            indices[x] = IsMasked(mask, x, rows.Row()) ? options.transparentIndex : indices[x];
        for (uint8_t& index : indices)
            index = std::min(index, lastIndex);
        encoder.Encode(indices);
        ++rowsDone;
        if (progress != nullptr)
            progress->SetPosition(rowsDone * 100 / picture.Height());
    }
    encoder.Finish();
    m_writer.Bytes(blocks);
    m_writer.U8(0);
}

void CGifWriter::WriteRepetitions(uint16_t count)
{
    constexpr std::string_view kApplication = "NETSCAPE2.0";
    m_writer.U8(0x21);
    m_writer.U8(0xFF);
    m_writer.U8(static_cast<uint8_t>(kApplication.size()));
    m_writer.Text(kApplication, kApplication.size());
    m_writer.U8(3);
    m_writer.U8(1);
    m_writer.U16(count);
    m_writer.U8(0);
}

void CGifWriter::WriteTrailer()
{
    m_writer.U8(';');
}
