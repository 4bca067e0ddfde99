// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/settings/Settings.h"

#include <istream>
#include <ostream>
#include <string>
#include <vector>

/// What the command line program is given by its surroundings.
struct Surroundings {
    std::istream& input;
    std::ostream& output;
    std::ostream& errors;
    /// The user's stored settings, for --user-settings; none where there are none.
    ISettingsStore* userSettings = nullptr;
};

/// Runs one verb; arguments do not hold the program's name. Returns the exit status: 0 all done, 1 something
/// was refused or failed, 2 wrong usage or a script error.
[[nodiscard]] int RunCommandLine(std::vector<std::string> arguments, const Surroundings& surroundings);
