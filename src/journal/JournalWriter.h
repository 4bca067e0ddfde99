// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "journal/JournalTarget.h"

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

/// Which of a journal's two files: the one that counts, or the one that is about to take its place.
enum class JournalCopy : uint8_t { Current, Anew };

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
    void Write(std::shared_ptr<CJournalTarget> target, std::vector<uint8_t> piece, EntryEnd end,
               JournalCopy copy = JournalCopy::Current);
    /// See CJournalTarget; done in the order in which they are asked for, like Write.
    void BeginRewrite(const std::shared_ptr<CJournalTarget>& target, JournalGap gap)
    {
        Add({target, {}, {}, gap == JournalGap::Yes ? Job::BeginBehindGap : Job::Begin});
    }
    void FinishRewrite(const std::shared_ptr<CJournalTarget>& target) { Add({target, {}, {}, Job::Finish}); }
    void AbandonRewrite(const std::shared_ptr<CJournalTarget>& target)
    {
        Add({target, {}, {}, Job::Abandon});
    }
    /// Returns when all that was handed over is on the disk.
    void Drain();
    /// What has been handed over and not been written yet.
    [[nodiscard]] size_t WaitingBytes() const { return m_waitingBytes; }

private:
    enum class Job : uint8_t { Append, AppendAnew, Begin, BeginBehindGap, Finish, Abandon };
    struct Piece {
        std::shared_ptr<CJournalTarget> target;
        std::vector<uint8_t> bytes;
        EntryEnd end;
        Job job;
    };
    void Add(Piece piece);
    void Run();
    static void Do(const Piece& piece);
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
