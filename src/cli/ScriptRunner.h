// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "cli/Session.h"

#include <istream>
#include <ostream>
#include <string>

/// Exit statuses of the program.
inline constexpr int kAllDone = 0;
inline constexpr int kRefusedOrFailed = 1;
inline constexpr int kWrongUsage = 2;

struct ScriptOptions {
    std::string name;       ///< stands in front of errors
    bool keepGoing = false; ///< a refused statement does not end the script
};

/// Runs statements as they are read, until the end, a script error, or a refused statement. Returns the exit
/// status. What the session prints and what `errors` gets appear in the order in which they happen.
[[nodiscard]] int RunScript(CSession& session, std::istream& script, const ScriptOptions& options,
                            std::ostream& errors);
