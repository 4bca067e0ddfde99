// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "journal/DocumentJournal.h"
#include "journal/JournalFolder.h"
#include "journal/Recovery.h"

#include <chrono>
#include <map>
#include <memory>

/// The journals of a process: one for each open document, in a folder of its own, and one thread that writes
/// them. A document that is closed as it should be leaves nothing behind.
class CJournal {
public:
    /// None when the folder cannot be made.
    [[nodiscard]] static std::unique_ptr<CJournal> Create(const std::filesystem::path& parent);
    ~CJournal();

    /// Begins a journal with what the document holds.
    void Begin(CPixoluneDoc& document);
    /// Goes on with the journal at `path`, which becomes this process's own.
    void GoOn(const RecoveredDocument& recovered, const std::filesystem::path& path);
    /// The document is being closed: its journal is removed.
    void End(CPixoluneDoc& document);

    /// Notes what has happened since the last call, which must be when no drag and no dialog is unfinished,
    /// so that what would be recovered is what the person at the program has seen.
    void Note();
    /// Memory ran out while documents were changed: their journals are written anew.
    void Distrust() noexcept;
    /// Hands noted changes over to the thread for about `budget`; false when there is nothing more to do.
    bool Work(std::chrono::microseconds budget);
    /// Notes and hands over everything; waits until it is on the disk where that is asked for.
    void Finish();
    void WaitUntilWritten() { m_writer.Drain(); }

private:
    struct Entry {
        std::shared_ptr<CJournalTarget> target;
        std::unique_ptr<CDocumentJournal> journal;
    };
    explicit CJournal(std::unique_ptr<CJournalFolder> folder) : m_folder(std::move(folder)) {}

    std::unique_ptr<CJournalFolder> m_folder;
    CJournalWriter m_writer;
    std::map<CPixoluneDoc*, Entry> m_entries;
};
