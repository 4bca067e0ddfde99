// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/ui/UserInterface.h"

#include <string>
#include <vector>

/// Remembers what was said and shown. Questions are answered with Yes.
class CRecordingUi final : public IUserInterface {
public:
    void ShowMessage(const std::string& text) override { messages.push_back(text); }
    bool AskYesNo(const std::string& question) override
    {
        messages.push_back(question);
        return true;
    }
    void SetStatusText(const std::string& text) override { statusTexts.push_back(text); }
    void SetPosition(int percent) override { positions.push_back(percent); }

    std::vector<std::string> messages;
    std::vector<std::string> statusTexts;
    std::vector<int> positions;
};
