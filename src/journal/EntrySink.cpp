// SPDX-License-Identifier: GPL-3.0-or-later
#include "journal/EntrySink.h"

#include <algorithm>
#include <utility>

CEntrySink::CEntrySink(CJournalWriter& writer, std::shared_ptr<CJournalTarget> target, JournalCopy copy)
    : m_writer(writer), m_target(std::move(target)), m_copy(copy)
{
}

void CEntrySink::Add(std::span<const uint8_t> bytes)
{
    while (!bytes.empty()) {
        if (m_piece.capacity() == 0)
            m_piece = m_writer.TakeBuffer();
        m_piece.reserve(kJournalPiece);
        const size_t count = std::min(bytes.size(), kJournalPiece - m_piece.size());
        m_piece.insert(m_piece.end(), bytes.begin(), bytes.begin() + static_cast<ptrdiff_t>(count));
        bytes = bytes.subspan(count);
        if (m_piece.size() == kJournalPiece)
            HandPiece(EntryEnd::No);
    }
}

void CEntrySink::End()
{
    HandPiece(EntryEnd::Yes);
}

void CEntrySink::HandPiece(EntryEnd end)
{
    m_writer.Write(m_target, std::exchange(m_piece, {}), end, m_copy);
}
