// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "journal/JournalTarget.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <filesystem>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

/// Which of a journal's two files: the one that counts, or the one that is about to take its place.
enum class JournalCopy : uint8_t { Current, Anew };

/// Writes journals on a thread of its own: it is handed finished pieces, packs them, appends them to their
/// files and has the system put them on the disk. Whoever hands them over never waits for any of that.
/// Entries never wait for files that are about to take a journal's place: those grow while nothing else is
/// there to be written, a piece at a time.
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
    /// Memory for a piece, empty: that of one that has been written, where there is such.
    [[nodiscard]] std::vector<uint8_t> TakeBuffer();
    void Write(const std::shared_ptr<CJournalTarget>& target, std::vector<uint8_t> piece, EntryEnd end,
               JournalCopy copy = JournalCopy::Current);
    /// See CJournalTarget. What was handed over for the journal before the begin counts as told anew, what
    /// comes behind it is appended to the new file, and the end is the end of what was handed over for that.
    void BeginRewrite(const std::shared_ptr<CJournalTarget>& target, JournalGap gap);
    void FinishRewrite(const std::shared_ptr<CJournalTarget>& target);
    void AbandonRewrite(const std::shared_ptr<CJournalTarget>& target);
    /// Returns when all entries that were handed over are on the disk, and new files in their places.
    void Drain();
    /// What has been handed over for one of the files and not been written yet.
    [[nodiscard]] size_t WaitingBytes(JournalCopy copy) const { return LaneOf(copy).waitingBytes; }

private:
    enum class Job : uint8_t { Append, Begin, BeginBehindGap, Abandon, AppendAnew, Finish };
    struct Piece {
        std::shared_ptr<CJournalTarget> target;
        std::vector<uint8_t> bytes;
        EntryEnd end = EntryEnd::No;
        Job job = Job::Append;
        uint64_t number = 0; ///< in the order in which pieces were handed over
    };
    /// Pieces that are done in their order. The last one that has not been done stays at the front.
    struct Lane {
        std::deque<Piece> pieces;
        std::atomic<size_t> waitingBytes = 0;
    };

    [[nodiscard]] Lane& LaneOf(JournalCopy copy) { return m_lanes[static_cast<size_t>(copy)]; }
    [[nodiscard]] const Lane& LaneOf(JournalCopy copy) const { return m_lanes[static_cast<size_t>(copy)]; }
    void Add(JournalCopy copy, Piece piece);
    void Run();
    /// The lane whose first piece is next; none when there are none. Called with the mutex held, as are those
    /// below.
    [[nodiscard]] Lane* NextLane();
    [[nodiscard]] bool IsFlushDue(const Lane* next) const;
    void Pop(Lane& lane);

    /// False when there is more to do of it.
    [[nodiscard]] bool Do(const Piece& piece);
    void Flush();

    std::mutex m_mutex;
    std::condition_variable m_wake;
    std::condition_variable m_idle;
    Lane m_lanes[2];
    uint64_t m_handed = 0;
    std::vector<std::vector<uint8_t>> m_buffers; ///< of pieces that have been written
    bool m_isIdle = true;
    bool m_ends = false;

    // The thread's own
    std::vector<std::shared_ptr<CJournalTarget>> m_unflushed; ///< entries of these have ended
    std::chrono::steady_clock::time_point m_unflushedSince;

    std::thread m_thread;
};
