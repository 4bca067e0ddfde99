// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Services.h"
#include "platform/clipboard/Clipboard.h"
#include "platform/settings/Settings.h"
#include "platform/ui/UserInterface.h"

/// Services for reading and writing that nobody is told about and that changes nothing of the program: a
/// copy of the settings, no messages, every question answered No.
class CQuietServices {
public:
    explicit CQuietServices(const CSettings& settings) : m_settings(settings) {}
    CQuietServices(const CQuietServices&) = delete;
    CQuietServices& operator=(const CQuietServices&) = delete;

    [[nodiscard]] CSettings& Settings() { return m_settings; }
    [[nodiscard]] AppServices& Services() { return m_services; }

private:
    class CSilence final : public IUserInterface {
    public:
        void SetPosition(int /*percent*/) override {}
        void ShowMessage(const std::string& /*text*/) override {}
        [[nodiscard]] bool AskYesNo(const std::string& /*question*/) override { return false; }
        void SetStatusText(const std::string& /*text*/) override {}
    };

    CSettings m_settings;
    CSilence m_silence;
    CPrivateClipboard m_clipboard;
    CObjectNameCounter m_names;
    AppServices m_services{m_settings, m_silence, m_clipboard, m_names};
};
