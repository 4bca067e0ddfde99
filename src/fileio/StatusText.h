// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/strings/Strings.h"
#include "platform/ui/UserInterface.h"

#include <filesystem>

/// Shows "Reading file " or "Saving file " with the bare file name and an empty progress bar, and clears the
/// text when the operation is over.
class CFileStatus {
public:
    CFileStatus(IUserInterface& ui, Str text, const std::filesystem::path& path) : m_ui(ui)
    {
        ui.SetStatusText(std::string(Text(text)) + path.filename().string());
        ui.SetPosition(0);
    }
    ~CFileStatus() { m_ui.SetStatusText({}); }
    CFileStatus(const CFileStatus&) = delete;
    CFileStatus& operator=(const CFileStatus&) = delete;

private:
    IUserInterface& m_ui;
};
