// SPDX-License-Identifier: GPL-3.0-or-later
#include "journal/JournalWriter.h"

#include <new>
#include <set>
#include <utility>

CJournalWriter::CJournalWriter() : m_thread([this] { Run(); }) {}

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

void CJournalWriter::Write(std::shared_ptr<CJournalTarget> target, std::vector<uint8_t> piece, EntryEnd end,
                           JournalCopy copy)
{
    Add({std::move(target), std::move(piece), end,
         copy == JournalCopy::Current ? Job::Append : Job::AppendAnew});
}

void CJournalWriter::Add(Piece piece)
{
    {
        const std::lock_guard lock(m_mutex);
        m_waitingBytes += piece.bytes.size();
        m_pieces.push_back(std::move(piece));
    }
    m_wake.notify_one();
}

void CJournalWriter::Drain()
{
    std::unique_lock lock(m_mutex);
    m_idle.wait(lock, [this] { return m_pieces.empty() && !m_isWriting; });
}

void CJournalWriter::Run()
{
    std::unique_lock lock(m_mutex);
    while (true) {
        m_isWriting = false;
        if (m_pieces.empty())
            m_idle.notify_all();
        m_wake.wait(lock, [this] { return m_ends || !m_pieces.empty(); });
        if (m_pieces.empty())
            return;
        m_isWriting = true;
        std::vector<Piece> pieces = std::exchange(m_pieces, {});
        lock.unlock();
        WriteAll(std::move(pieces));
        lock.lock();
    }
}

void CJournalWriter::Do(const Piece& piece)
{
    CJournalTarget& target = *piece.target;
    switch (piece.job) {
    case Job::Append:
        target.Append(piece.bytes, piece.end);
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
        target.FinishRewrite();
        break;
    case Job::Abandon:
        target.AbandonRewrite();
        break;
    }
}

void CJournalWriter::WriteAll(std::vector<Piece> pieces)
{
    std::set<CJournalTarget*> written;
    for (Piece& piece : pieces) {
        const size_t size = piece.bytes.size();
        try {
            if (piece.job == Job::Append)
                written.insert(piece.target.get());
            Do(piece);
        } catch (const std::bad_alloc&) {
            piece.target->GiveUp();
        }
        m_waitingBytes -= size;
        piece.bytes = {};
    }
    for (CJournalTarget* target : written)
        target->Flush();
}
