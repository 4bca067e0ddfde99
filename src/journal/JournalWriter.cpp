// SPDX-License-Identifier: GPL-3.0-or-later
#include "journal/JournalWriter.h"

#include <algorithm>
#include <new>
#include <utility>

#ifdef __linux__
#include <sys/resource.h>
#include <unistd.h>
#endif

namespace {

using namespace std::chrono_literals;

/// Entries that come one upon another are put on the disk together, but none waits for longer.
constexpr auto kMostUnflushed = 100ms;
constexpr size_t kMostBuffers = 32;

/// Lets the threads that somebody waits for go first where processors are scarce, but not so much that
/// entries would come late.
void StandBack()
{
#ifdef __linux__
    constexpr int kNiceness = 5;
    ::setpriority(PRIO_PROCESS, static_cast<id_t>(::gettid()), kNiceness); // only a hint
#endif
}

} // namespace

CJournalWriter::CJournalWriter()
{
    m_buffers.reserve(kMostBuffers);
    m_thread = std::thread([this] { Run(); });
}

CJournalWriter::~CJournalWriter()
{
    {
        const std::lock_guard lock(m_mutex);
        m_ends = true;
    }
    m_wake.notify_one();
    m_thread.join();
}

std::shared_ptr<CJournalTarget> CJournalWriter::Open(const std::filesystem::path& path,
                                                     const JournalExtent& extent)
{
    return CJournalTarget::Open(path, extent);
}

std::vector<uint8_t> CJournalWriter::TakeBuffer()
{
    const std::lock_guard lock(m_mutex);
    if (m_buffers.empty())
        return {};
    std::vector<uint8_t> buffer = std::move(m_buffers.back());
    m_buffers.pop_back();
    buffer.clear();
    return buffer;
}

void CJournalWriter::Write(const std::shared_ptr<CJournalTarget>& target, std::vector<uint8_t> piece,
                           EntryEnd end, JournalCopy copy)
{
    const bool isCurrent = copy == JournalCopy::Current;
    Add(copy, {target, std::move(piece), end, isCurrent ? Job::Append : Job::AppendAnew});
    if (isCurrent && end == EntryEnd::Yes)
        target->AwaitEntry();
}

void CJournalWriter::BeginRewrite(const std::shared_ptr<CJournalTarget>& target, JournalGap gap)
{
    Add(JournalCopy::Current, {target, {}, {}, gap == JournalGap::Yes ? Job::BeginBehindGap : Job::Begin});
}

void CJournalWriter::FinishRewrite(const std::shared_ptr<CJournalTarget>& target)
{
    Add(JournalCopy::Anew, {target, {}, {}, Job::Finish});
    target->AwaitRewrite();
}

void CJournalWriter::AbandonRewrite(const std::shared_ptr<CJournalTarget>& target)
{
    Add(JournalCopy::Current, {target, {}, {}, Job::Abandon});
}

void CJournalWriter::Add(JournalCopy copy, Piece piece)
{
    {
        const std::lock_guard lock(m_mutex);
        Lane& lane = LaneOf(copy);
        const size_t bytes = piece.bytes.size();
        piece.number = ++m_handed;
        lane.pieces.push_back(std::move(piece));
        lane.waitingBytes += bytes;
        m_isIdle = false;
    }
    m_wake.notify_one();
}

void CJournalWriter::Drain()
{
    std::unique_lock lock(m_mutex);
    m_idle.wait(lock, [this] { return m_isIdle; });
}

CJournalWriter::Lane* CJournalWriter::NextLane()
{
    Lane& entries = LaneOf(JournalCopy::Current);
    Lane& anew = LaneOf(JournalCopy::Anew);
    if (entries.pieces.empty())
        return anew.pieces.empty() ? nullptr : &anew;
    const Piece& first = entries.pieces.front();
    // Another file is begun only when nothing is left of the one before it. Once that has been abandoned, its
    // pieces go nowhere.
    const bool begins = first.job == Job::Begin || first.job == Job::BeginBehindGap;
    const auto isBefore = [&](const Piece& piece) {
        return piece.target == first.target && piece.number < first.number;
    };
    return begins && std::ranges::any_of(anew.pieces, isBefore) ? &anew : &entries;
}

bool CJournalWriter::IsFlushDue(const Lane* next) const
{
    return !m_unflushed.empty() && (next != &LaneOf(JournalCopy::Current) ||
                                    std::chrono::steady_clock::now() - m_unflushedSince >= kMostUnflushed);
}

void CJournalWriter::Pop(Lane& lane)
{
    std::vector<uint8_t>& bytes = lane.pieces.front().bytes;
    lane.waitingBytes -= bytes.size();
    if (bytes.capacity() >= kJournalPiece && m_buffers.size() < kMostBuffers)
        m_buffers.push_back(std::move(bytes));
    lane.pieces.pop_front();
}

void CJournalWriter::Run()
{
    StandBack();
    std::unique_lock lock(m_mutex);
    while (true) {
        Lane* const lane = NextLane();
        if (IsFlushDue(lane)) {
            lock.unlock();
            Flush();
            lock.lock();
        } else if (lane != nullptr) {
            // Whoever hands over only adds behind it.
            const Piece& piece = lane->pieces.front();
            lock.unlock();
            const bool isDone = Do(piece);
            lock.lock();
            if (isDone)
                Pop(*lane);
        } else {
            m_isIdle = true;
            m_idle.notify_all();
            if (m_ends)
                return;
            m_wake.wait(lock);
        }
    }
}

bool CJournalWriter::Do(const Piece& piece)
{
    CJournalTarget& target = *piece.target;
    try {
        switch (piece.job) {
        case Job::Append:
            target.Append(piece.bytes, piece.end);
            if (piece.end == EntryEnd::Yes &&
                std::ranges::find(m_unflushed, piece.target) == m_unflushed.end()) {
                if (m_unflushed.empty())
                    m_unflushedSince = std::chrono::steady_clock::now();
                m_unflushed.push_back(piece.target);
            }
            break;
        case Job::AppendAnew:
            target.AppendAnew(piece.bytes, piece.end);
            break;
        case Job::Begin:
            target.BeginRewrite(JournalGap::No);
            break;
        case Job::BeginBehindGap:
            target.BeginRewrite(JournalGap::Yes);
            break;
        case Job::Finish:
            return target.GoOnFinishing();
        case Job::Abandon:
            target.AbandonRewrite();
            break;
        }
    } catch (const std::bad_alloc&) {
        target.GiveUp();
        return piece.job != Job::Finish; // which has nothing left to do next time
    }
    return true;
}

void CJournalWriter::Flush()
{
    for (const std::shared_ptr<CJournalTarget>& target : m_unflushed)
        target->Flush();
    m_unflushed.clear();
}
