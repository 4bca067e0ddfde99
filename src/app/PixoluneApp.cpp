// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/PixoluneApp.h"

#include "document/NewDocument.h"
#include "fileio/DocumentFiles.h"

CPixoluneApp::CPixoluneApp(IUserInterface& ui, IClipboard& clipboard)
    : m_services{m_settings, ui, clipboard, m_names}
{
}

CPixoluneDoc* CPixoluneApp::NewDocument()
{
    auto document = std::make_unique<CPixoluneDoc>(m_services);
    if (!InitializeNewDocument(*document))
        return nullptr;
    document->SetNewTitle("Untitled " + std::to_string(m_nextNewTitle++));
    m_documents.push_back(std::move(document));
    return m_documents.back().get();
}

CPixoluneDoc* CPixoluneApp::OpenDocument(const std::filesystem::path& path)
{
    auto document = std::make_unique<CPixoluneDoc>(m_services);
    if (!OpenIntoDocument(*document, path))
        return nullptr;
    m_documents.push_back(std::move(document));
    return m_documents.back().get();
}

CPixoluneDoc* CPixoluneApp::AdoptDocument(CObjectCanvas canvas, std::string title)
{
    auto document = std::make_unique<CPixoluneDoc>(m_services);
    document->Adopt(std::move(canvas));
    document->SetNewTitle(std::move(title));
    document->SetModified(true);
    m_documents.push_back(std::move(document));
    return m_documents.back().get();
}

void CPixoluneApp::CloseDocument(CPixoluneDoc* document)
{
    m_tidier.Forget();
    std::erase_if(m_documents,
                  [&](const std::unique_ptr<CPixoluneDoc>& open) { return open.get() == document; });
}

bool CPixoluneApp::WorkWhileIdle(std::chrono::microseconds budget)
{
    bool hasMore = false;
    for (const auto& document : m_documents)
        hasMore = hasMore || m_tidier.Work(*document, budget);
    return hasMore;
}
