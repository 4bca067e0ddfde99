// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "history/HistoryTidier.h"
#include "model/PixoluneDoc.h"
#include "platform/Services.h"
#include "platform/clipboard/Clipboard.h"
#include "platform/settings/Settings.h"
#include "platform/ui/UserInterface.h"

#include <chrono>
#include <filesystem>
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
    /// A document from a canvas that was saved out of a damaged file: modified, and without a file of its own.
    CPixoluneDoc* AdoptDocument(CObjectCanvas canvas, std::string title);
    /// Frees the document; whether to save it first has been settled.
    void CloseDocument(CPixoluneDoc* document);
    /// In the order in which they were opened.
    [[nodiscard]] std::span<const std::unique_ptr<CPixoluneDoc>> Documents() const { return m_documents; }

    /// Does for about `budget` what can wait: makes histories smaller. False when there is nothing more to do.
    bool WorkWhileIdle(std::chrono::microseconds budget);

private:
    CSettings m_settings;
    CObjectNameCounter m_names;
    AppServices m_services;
    std::vector<std::unique_ptr<CPixoluneDoc>> m_documents;
    int m_nextNewTitle = 1;
    CHistoryTidier m_tidier;
};
