// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "history/HistoryTidier.h"
#include "journal/Journal.h"
#include "model/PixoluneDoc.h"
#include "platform/Services.h"
#include "platform/clipboard/Clipboard.h"
#include "platform/memory/MemoryReserve.h"
#include "platform/settings/Settings.h"
#include "platform/ui/UserInterface.h"

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <span>
#include <vector>

/// The application object: owns the settings, the name counter and the open documents. Knows no windows.
class CPixoluneApp {
public:
    /// Both must outlive the application object.
    CPixoluneApp(IUserInterface& ui, IClipboard& clipboard);
    CPixoluneApp(const CPixoluneApp&) = delete;
    CPixoluneApp& operator=(const CPixoluneApp&) = delete;

    [[nodiscard]] CSettings& Settings() { return m_settings; }
    [[nodiscard]] AppServices& Services() { return m_services; }

    /// A document made from the New Image settings; none when memory runs out (the user has been told).
    CPixoluneDoc* NewDocument();
    /// A document read from a file; none when it cannot be loaded
    /// (the user has been told).
    CPixoluneDoc* OpenDocument(const std::filesystem::path& path);
    /// A document from a canvas that was saved out of a damaged file: modified, and without a file of its
    /// own.
    CPixoluneDoc* AdoptDocument(CObjectCanvas canvas, std::string title);
    /// A document that its journal at `path` has brought back; with a journal of its own the program goes on
    /// with that one.
    CPixoluneDoc* TakeRecovered(RecoveredDocument recovered, const std::filesystem::path& path);
    /// Frees the document; whether to save it first has been settled.
    void CloseDocument(CPixoluneDoc* document);
    /// In the order in which they were opened.
    [[nodiscard]] std::span<const std::unique_ptr<CPixoluneDoc>> Documents() const { return m_documents; }

    /// Keeps journals in a new folder in `parent` from now on; false when that cannot be made.
    bool KeepJournals(const std::filesystem::path& parent);
    /// The journals of this process; none when it keeps none.
    [[nodiscard]] CJournal* Journal() const { return m_journal.get(); }
    /// Runs what the person at the program has asked for. When memory runs out in the middle, which small
    /// requests do not see, it is given up where it is: giveUp puts back what only windows know of, the
    /// person is told, and journals are written anew. False then.
    bool RunWithinMemory(const std::function<void()>& run, const std::function<void()>& giveUp);
    /// Does for about `budget` what can wait: hands the journals over, makes histories smaller. False when
    /// there is nothing more to do.
    bool WorkWhileIdle(std::chrono::microseconds budget);

private:
    [[nodiscard]] std::string NextNewTitle();
    CPixoluneDoc* Add(std::unique_ptr<CPixoluneDoc> document);

    CMemoryReserve m_reserve;
    CSettings m_settings;
    CObjectNameCounter m_names;
    AppServices m_services;
    std::vector<std::unique_ptr<CPixoluneDoc>> m_documents;
    int m_newTitles = 0; ///< the highest number in the title of a new document so far
    CHistoryTidier m_tidier;
    /// Stands behind the documents, whose observers it holds.
    std::unique_ptr<CJournal> m_journal;
};
