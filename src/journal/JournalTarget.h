// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "journal/JournalFile.h"
#include "platform/Limits.h"
#include "platform/io/FileDescriptor.h"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <utility>
#include <vector>

/// Whether something is missing between what a journal holds and what comes next.
enum class JournalGap : bool { No, Yes };

/// A file of records that grows at its end.
class CRecordFile {
public:
    CRecordFile(CFileDescriptor file, uint64_t bytes, uint32_t records)
        : m_file(std::move(file)), m_bytes(bytes), m_flushedBytes(bytes), m_packer(records)
    {
    }

    /// Whole records, and the name in front. What stands behind them is damaged and ends the file.
    [[nodiscard]] uint64_t Bytes() const { return m_bytes; }
    /// False after a failure, a full disk for one; then and ever after nothing more is taken.
    bool Append(std::span<const uint8_t> record);
    bool Append(std::span<const uint8_t> piece, EntryEnd end) { return Append(m_packer.Pack(piece, end)); }
    /// Appends the records of another file from `begin` on, with new numbers, until there are `most` bytes of
    /// them or none left; `begin` moves on.
    bool AppendFrom(const CRecordFile& other, uint64_t& begin, uint64_t most);
    /// Has the system put it on the disk.
    bool Flush();
    [[nodiscard]] bool HasFailed() const { return m_hasFailed; }

private:
    CFileDescriptor m_file;
    uint64_t m_bytes;
    uint64_t m_flushedBytes;
    CJournalPacker m_packer;
    bool m_hasFailed = false;
};

/// A journal that is being written, and at times the file beside it that is about to take its place. But for
/// what is said to be for everyone, only the writer's thread touches it.
class CJournalTarget {
public:
    /// A new file, or one to go on with behind `extent`; none when it cannot be opened.
    [[nodiscard]] static std::shared_ptr<CJournalTarget> Open(const std::filesystem::path& path,
                                                              const JournalExtent& extent);
    CJournalTarget(std::filesystem::path path, std::unique_ptr<CRecordFile> file, uint64_t newBytes);

    void Append(std::span<const uint8_t> piece, EntryEnd end);
    void Flush();

    /// A file beside the journal is begun, to which all that the document is by now is written; it takes the
    /// journal's place in one step, together with what is appended meanwhile, which behind a gap goes into
    /// that file only. A failure leaves the journal.
    void BeginRewrite(JournalGap gap);
    void AppendAnew(std::span<const uint8_t> piece, EntryEnd end);
    /// Takes over a part of what has been appended meanwhile, and the journal's place once that is all. False
    /// when there is more to do.
    [[nodiscard]] bool GoOnFinishing();
    void AbandonRewrite() noexcept;
    /// Memory ran out: something is missing from now on.
    void GiveUp() noexcept;

    // For everyone
    /// Whether it should be written anew: it is long, or something could not be written to it, and no new
    /// file is about to take its place.
    [[nodiscard]] bool WantsRewrite() const;
    /// Not before some seconds from now.
    void PostponeRewrite();
    /// An entry, or the end of a new file, is on its way.
    void AwaitEntry() { ++m_awaitedEntries; }
    void AwaitRewrite() { ++m_awaitedRewrites; }
    /// Whether every entry that has been on its way is on the disk.
    [[nodiscard]] bool HasAllEntries() const { return m_awaitedEntries == 0; }
    /// Removes the file. What is appended afterwards is lost.
    void Remove();

private:
    /// A piece that the journal could not take, for the file that takes its place.
    struct Kept {
        std::vector<uint8_t> piece;
        EntryEnd end;
    };
    [[nodiscard]] bool TakePlace();
    void FinishRewrite();
    void NoteEntriesOnDisk() { m_awaitedEntries -= std::exchange(m_unflushedEntries, 0); }

    std::filesystem::path m_path;
    std::filesystem::path m_anewPath;
    std::unique_ptr<CRecordFile> m_file;
    std::unique_ptr<CRecordFile> m_anew; ///< none: it is not being written anew
    uint64_t m_mark = 0;                 ///< up to where that holds what the journal does
    uint64_t m_toldBytes = 0;            ///< that it had when all was told; 0 until then
    std::vector<Kept> m_kept;
    size_t m_keptBytes = 0;
    uint32_t m_unflushedEntries = 0;

    std::atomic<uint64_t> m_bytes;
    std::atomic<uint64_t> m_newBytes; ///< that it had when it was new; 0 until it has its first entry
    std::atomic<bool> m_hasFailed = false;
    std::atomic<uint32_t> m_awaitedEntries = 0;
    std::atomic<uint32_t> m_awaitedRewrites = 0;
    std::atomic<std::chrono::steady_clock::time_point> m_rewriteFrom{};
    std::mutex m_place; ///< held while files are removed or change places
    bool m_isRemoved = false;
};
