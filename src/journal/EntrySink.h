// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "journal/JournalWriter.h"

#include <memory>
#include <span>
#include <vector>

/// Cuts entries into pieces and hands those to the writer.
class CEntrySink {
public:
    CEntrySink(CJournalWriter& writer, std::shared_ptr<CJournalTarget> target, JournalCopy copy);

    /// The next bytes of the entry.
    void Add(std::span<const uint8_t> bytes);
    /// The entry ends with what was added.
    void End();
    /// Forgets what was added and not handed over yet.
    void Forget() { m_piece.clear(); }

private:
    void HandPiece(EntryEnd end);

    CJournalWriter& m_writer;
    std::shared_ptr<CJournalTarget> m_target;
    JournalCopy m_copy;
    std::vector<uint8_t> m_piece;
};
