// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/codec/Zstd.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <vector>

/// A journal file is eight bytes that name it and records after one another. Each record holds a piece of at
/// most kJournalPiece bytes of an entry; an entry is the pieces up to one that says it is the last. Records
/// are numbered and carry a checksum, so that whatever was cut off or damaged ends the journal there.
inline constexpr size_t kJournalPiece = kZstdPiece;
inline constexpr size_t kJournalNameBytes = 8;

/// Whether a piece is the last one of its entry.
enum class EntryEnd : bool { No, Yes };

/// The bytes that begin every journal file.
[[nodiscard]] std::span<const uint8_t> JournalName();

/// Bytes that stand in front of what a record stores.
inline constexpr size_t kJournalRecordHeader = 20;
/// Bytes of the record that begins with `header`.
[[nodiscard]] size_t RecordBytes(std::span<const uint8_t> header);

/// Makes records one after another.
class CJournalPacker {
public:
    /// The first record gets this number.
    explicit CJournalPacker(uint32_t number) : m_number(number) {}
    /// The record of a piece. The bytes stay until the next call.
    [[nodiscard]] std::span<const uint8_t> Pack(std::span<const uint8_t> piece, EntryEnd end);
    /// Gives a record made elsewhere the next number; returns it.
    [[nodiscard]] std::span<const uint8_t> Renumber(std::span<uint8_t> record);

private:
    uint32_t m_number;
    CZstdPacker m_packer;
    std::vector<uint8_t> m_record;
};

/// How much of a journal file is whole.
struct JournalExtent {
    uint64_t bytes = 0;   ///< up to the end of the last entry taken
    uint32_t records = 0; ///< in those bytes
    uint32_t entries = 0; ///< in those bytes
};

/// Calls take(entry) for every whole entry in order, until one is damaged or not taken. Memory for an entry
/// is asked for only once all its records have been found whole; a record of 20 bytes and what it stores
/// gives at most kJournalPiece bytes.
JournalExtent ReadJournal(std::span<const uint8_t> file,
                          const std::function<bool(std::span<const uint8_t> entry)>& take);
