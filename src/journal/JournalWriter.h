// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "journal/JournalFile.h"

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

/// A journal file that is being written. Only the writer's thread touches what is inside.
class CJournalTarget;

/// Writes journals on a thread of its own: it is handed finished pieces, packs them, appends them to their
/// files and has the system put them on the disk. Whoever hands them over never waits for any of that.
class CJournalWriter {
public:
    CJournalWriter();
    /// Writes what it has been handed before it goes.
    ~CJournalWriter();
    CJournalWriter(const CJournalWriter&) = delete;
    CJournalWriter& operator=(const CJournalWriter&) = delete;

    /// A new file, or one to go on with behind `extent`; none when it cannot be opened.
    [[nodiscard]] std::shared_ptr<CJournalTarget> Open(const std::filesystem::path& path,
                                                       const JournalExtent& extent = {});
    void Write(std::shared_ptr<CJournalTarget> target, std::vector<uint8_t> piece, EntryEnd end);
    /// Returns when all that was handed over is on the disk.
    void Drain();
    /// What has been handed over and not been written yet.
    [[nodiscard]] size_t WaitingBytes() const { return m_waitingBytes; }

private:
    struct Piece {
        std::shared_ptr<CJournalTarget> target;
        std::vector<uint8_t> bytes;
        EntryEnd end;
    };
    void Run();
    void WriteAll(std::vector<Piece> pieces);

    std::mutex m_mutex;
    std::condition_variable m_wake;
    std::condition_variable m_idle;
    std::vector<Piece> m_pieces;
    bool m_isWriting = false;
    bool m_ends = false;
    std::atomic<size_t> m_waitingBytes = 0;
    std::thread m_thread;
};
