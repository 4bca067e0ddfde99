// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "cli/ScriptRunner.h"

#include <sstream>
#include <string>

/// What one run of a script left.
struct ScriptResult {
    std::string output;
    std::string errors;
    int status = 0;
};

/// Runs a script named "s" in a session of its own.
inline ScriptResult RunText(const std::string& script, bool keepGoing = false)
{
    std::istringstream input(script);
    std::ostringstream output;
    std::ostringstream errors;
    CSession session(output);
    const int status = RunScript(session, input, {"s", keepGoing}, errors);
    return {output.str(), errors.str(), status};
}
