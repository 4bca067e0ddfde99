// SPDX-License-Identifier: GPL-3.0-or-later
#include "journal/JournalFile.h"

#include "platform/io/ByteReader.h"
#include "platform/memory/HeapBlock.h"

#include <libdeflate.h>

#include <algorithm>
#include <array>
#include <cstring>

namespace {

constexpr std::array<uint8_t, kJournalNameBytes> kName{'P', 'X', 'D', ' ', 'J', 'N', 'L', '1'};

enum RecordFlags : uint32_t { kEndsEntry = 1, kIsPacked = 2 };

/// What stands in front of the stored bytes.
struct RecordHeader {
    uint32_t stored = 0; ///< bytes that follow
    uint32_t bytes = 0;  ///< of the piece
    uint32_t number = 0; ///< counted from 0 over the whole file
    uint32_t flags = 0;
    uint32_t checksum = 0; ///< CRC-32 of the fields above and the stored bytes
};
static_assert(sizeof(RecordHeader) == kJournalRecordHeader);

constexpr size_t kCheckedHeaderBytes = 16;

uint32_t ChecksumOf(const RecordHeader& header, std::span<const uint8_t> stored)
{
    std::array<uint8_t, kCheckedHeaderBytes> fields;
    std::memcpy(fields.data(), &header, fields.size());
    return libdeflate_crc32(libdeflate_crc32(0, fields.data(), fields.size()), stored.data(), stored.size());
}

/// A record that has been found whole.
struct Record {
    RecordHeader header;
    std::span<const uint8_t> stored;
};

std::optional<Record> ReadRecord(CByteReader& reader, uint32_t number)
{
    Record record;
    RecordHeader& header = record.header;
    const bool isWhole = reader.ReadU32(header.stored) && reader.ReadU32(header.bytes) &&
                         reader.ReadU32(header.number) && reader.ReadU32(header.flags) &&
                         reader.ReadU32(header.checksum) && reader.ReadBytes(header.stored, record.stored);
    if (!isWhole || header.number != number || header.bytes > kJournalPiece ||
        header.flags > (kEndsEntry | kIsPacked) || ChecksumOf(header, record.stored) != header.checksum)
        return std::nullopt;
    if ((header.flags & kIsPacked) == 0 && header.stored != header.bytes)
        return std::nullopt;
    return record;
}

/// The entry that the records make up; empty when one cannot be unpacked or memory runs out.
CHeapBlock Unpack(std::span<const Record> records, CZstdReader& reader)
{
    size_t size = 0;
    for (const Record& record : records)
        size += record.header.bytes;
    CHeapBlock entry = CHeapBlock::Allocate(size, 0, BlockContent::Undefined);
    std::span<uint8_t> rest = entry.Bytes();
    for (const Record& record : records) {
        if (entry.IsEmpty())
            break;
        const std::span<uint8_t> piece = rest.first(record.header.bytes);
        rest = rest.subspan(piece.size());
        if ((record.header.flags & kIsPacked) == 0)
            std::ranges::copy(record.stored, piece.begin());
        else if (!reader.UnpackPiece(record.stored, piece))
            return {};
    }
    return entry;
}

} // namespace

std::span<const uint8_t> JournalName()
{
    return kName;
}

std::span<const uint8_t> CJournalPacker::Pack(std::span<const uint8_t> piece, EntryEnd end)
{
    m_record.resize(sizeof(RecordHeader) + piece.size());
    const std::span<uint8_t> room = std::span(m_record).subspan(sizeof(RecordHeader));
    // A frame that would not be smaller finds no room.
    const size_t packed = piece.empty() ? 0 : m_packer.PackPiece(piece, room.first(piece.size() - 1));
    RecordHeader header;
    header.bytes = static_cast<uint32_t>(piece.size());
    header.stored = packed != 0 ? static_cast<uint32_t>(packed) : header.bytes;
    header.number = m_number++;
    header.flags = (end == EntryEnd::Yes ? kEndsEntry : 0u) | (packed != 0 ? kIsPacked : 0u);
    if (packed == 0)
        std::ranges::copy(piece, room.begin());
    header.checksum = ChecksumOf(header, room.first(header.stored));
    std::memcpy(m_record.data(), &header, sizeof header);
    return std::span(m_record).first(sizeof header + header.stored);
}

size_t RecordBytes(std::span<const uint8_t> header)
{
    RecordHeader fields;
    std::memcpy(&fields, header.data(), sizeof fields);
    return sizeof fields + fields.stored;
}

std::span<const uint8_t> CJournalPacker::Renumber(std::span<uint8_t> record)
{
    RecordHeader header;
    std::memcpy(&header, record.data(), sizeof header);
    header.number = m_number++;
    header.checksum = ChecksumOf(header, record.subspan(sizeof header));
    std::memcpy(record.data(), &header, sizeof header);
    return record;
}

JournalExtent ReadJournal(std::span<const uint8_t> file,
                          const std::function<bool(std::span<const uint8_t> entry)>& take)
{
    CByteReader reader(file);
    std::span<const uint8_t> name;
    if (!reader.ReadBytes(kJournalNameBytes, name) || !std::ranges::equal(name, kName))
        return {};
    JournalExtent extent{reader.Position(), 0, 0};
    CZstdReader unpacker;
    std::vector<Record> records;
    uint32_t number = 0;
    while (const std::optional<Record> record = ReadRecord(reader, number)) {
        ++number;
        records.push_back(*record);
        if ((record->header.flags & kEndsEntry) == 0)
            continue;
        const CHeapBlock entry = Unpack(records, unpacker);
        if (entry.IsEmpty() || !take(entry.Bytes()))
            break;
        extent = {reader.Position(), number, extent.entries + 1};
        records.clear();
    }
    return extent;
}
