// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/ui/UserInterface.h"

/// Says nothing and answers Yes.
class CSilentUserInterface final : public IUserInterface {
public:
    void SetPosition(int /*percent*/) override {}
    void ShowMessage(const std::string& /*text*/) override {}
    bool AskYesNo(const std::string& /*question*/) override { return true; }
    void SetStatusText(const std::string& /*text*/) override {}
};
