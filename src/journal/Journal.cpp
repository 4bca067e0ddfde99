// SPDX-License-Identifier: GPL-3.0-or-later
#include "journal/Journal.h"

#include <system_error>

std::unique_ptr<CJournal> CJournal::Create(const std::filesystem::path& parent)
{
    std::unique_ptr<CJournalFolder> folder = parent.empty() ? nullptr : CJournalFolder::Create(parent);
    return folder ? std::unique_ptr<CJournal>(new CJournal(std::move(folder))) : nullptr;
}

CJournal::~CJournal()
{
    while (!m_entries.empty())
        End(*m_entries.begin()->first);
}

void CJournal::Begin(CPixoluneDoc& document)
{
    if (auto target = m_writer.Open(m_folder->NewJournal()))
        m_entries[&document] = {target, std::make_unique<CDocumentJournal>(document, m_writer, target)};
}

void CJournal::GoOn(const RecoveredDocument& recovered, const std::filesystem::path& path)
{
    const std::filesystem::path own = m_folder->NewJournal();
    std::error_code error;
    std::filesystem::rename(path, own, error);
    auto target = error ? nullptr : m_writer.Open(own, recovered.extent);
    if (target)
        m_entries[recovered.document.get()] = {
            target, std::make_unique<CDocumentJournal>(*recovered.document, m_writer, target,
                                                       recovered.numbers, recovered.selections)};
}

void CJournal::End(CPixoluneDoc& document)
{
    const auto found = m_entries.find(&document);
    if (found == m_entries.end())
        return;
    // The thread may still write to the file; it goes with the last handle on it.
    found->second.target->Remove();
    m_entries.erase(found);
}

void CJournal::Note()
{
    for (auto& [document, entry] : m_entries)
        entry.journal->Flush();
}

void CJournal::Distrust() noexcept
{
    for (auto& [document, entry] : m_entries)
        entry.journal->Distrust();
}

bool CJournal::Work(std::chrono::microseconds budget)
{
    const auto end = std::chrono::steady_clock::now() + budget;
    bool hasMore = false;
    for (auto& [document, entry] : m_entries)
        hasMore = entry.journal->Work(end) || hasMore;
    return hasMore;
}

void CJournal::Finish()
{
    for (auto& [document, entry] : m_entries)
        entry.journal->Finish();
}
