// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/PixoluneApp.h"

#include "document/NewDocument.h"
#include "fileio/DocumentFiles.h"
#include "platform/strings/Strings.h"

#include <algorithm>
#include <charconv>
#include <new>
#include <string_view>

namespace {

constexpr std::string_view kNewTitle = "Untitled ";

/// The number in the title of a new document; 0 for other titles.
int NumberIn(std::string_view title)
{
    int number = 0;
    if (title.starts_with(kNewTitle))
        std::from_chars(title.data() + kNewTitle.size(), title.data() + title.size(), number);
    return number;
}

} // namespace

CPixoluneApp::CPixoluneApp(IUserInterface& ui, IClipboard& clipboard)
    : m_services{m_settings, ui, clipboard, m_names}
{
}

CPixoluneDoc* CPixoluneApp::NewDocument()
{
    auto document = std::make_unique<CPixoluneDoc>(m_services);
    if (!InitializeNewDocument(*document))
        return nullptr;
    document->SetNewTitle(NextNewTitle());
    return Add(std::move(document));
}

std::string CPixoluneApp::NextNewTitle()
{
    return std::string(kNewTitle) + std::to_string(++m_newTitles);
}

CPixoluneDoc* CPixoluneApp::OpenDocument(const std::filesystem::path& path)
{
    auto document = std::make_unique<CPixoluneDoc>(m_services);
    if (!OpenIntoDocument(*document, path))
        return nullptr;
    return Add(std::move(document));
}

CPixoluneDoc* CPixoluneApp::Add(std::unique_ptr<CPixoluneDoc> document)
{
    m_documents.push_back(std::move(document));
    if (m_journal)
        m_journal->Begin(*m_documents.back());
    return m_documents.back().get();
}

CPixoluneDoc* CPixoluneApp::TakeRecovered(RecoveredDocument recovered, const std::filesystem::path& path)
{
    const std::string title = recovered.document->Title();
    m_newTitles = std::max(m_newTitles, NumberIn(title));
    const auto hasTitle = [&](const auto& document) { return document->Title() == title; };
    if (NumberIn(title) > 0 && std::ranges::any_of(m_documents, hasTitle))
        recovered.document->SetNewTitle(NextNewTitle());
    if (m_journal)
        m_journal->GoOn(recovered, path);
    m_documents.push_back(std::move(recovered.document));
    return m_documents.back().get();
}

CPixoluneDoc* CPixoluneApp::AdoptDocument(CObjectCanvas canvas, std::string title)
{
    auto document = std::make_unique<CPixoluneDoc>(m_services);
    document->Adopt(std::move(canvas));
    document->SetNewTitle(std::move(title));
    document->SetModified(true);
    return Add(std::move(document));
}

void CPixoluneApp::CloseDocument(CPixoluneDoc* document)
{
    m_tidier.Forget();
    if (m_journal)
        m_journal->End(*document);
    std::erase_if(m_documents,
                  [&](const std::unique_ptr<CPixoluneDoc>& open) { return open.get() == document; });
}

bool CPixoluneApp::KeepJournals(const std::filesystem::path& parent)
{
    m_journal = CJournal::Create(parent);
    return m_journal != nullptr;
}

bool CPixoluneApp::RunWithinMemory(const std::function<void()>& run, const std::function<void()>& giveUp)
{
    m_reserve.Refill();
    try {
        run();
        return true;
    } catch (const std::bad_alloc&) {
        // All that it had asked for has gone back by now.
        m_reserve.Refill();
    }
    if (m_journal)
        m_journal->Distrust();
    try {
        giveUp();
        for (const auto& document : m_documents) {
            document->NotifyObjectsChanged();
            document->NotifyObjectSelectionChanged();
            document->NotifyCanvasSizeChanged();
            document->NotifyFrameChanged();
        }
    } catch (const std::bad_alloc&) {
        // What is shown may be older than what is there.
    }
    m_services.ui.ShowMessage(std::string(Text(Str::OutOfMemory)));
    return false;
}

bool CPixoluneApp::WorkWhileIdle(std::chrono::microseconds budget)
{
    if (m_journal && m_journal->Work(budget))
        return true;
    bool hasMore = false;
    for (const auto& document : m_documents)
        hasMore = hasMore || m_tidier.Work(*document, budget);
    const auto until = std::chrono::steady_clock::now() + budget;
    for (const auto& document : m_documents)
        hasMore = hasMore || document->Canvas().FindAlphas(until);
    return hasMore;
}
