// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "cli/Session.h"

#include <filesystem>
#include <ostream>
#include <string>
#include <vector>

/// Takes a "NAME=VALUE" text over into the settings, as one that was read from the store; false when it is
/// none.
[[nodiscard]] bool Assign(CSettings& settings, const std::string& assignment);

/// What to convert.
struct Conversion {
    std::vector<std::filesystem::path> sources; ///< at least one
    std::string target;
    std::vector<std::string> options; ///< as those of the statement save-as
};

/// Opens the first source, adds the others, and saves in the format that the target's extension chooses.
/// Returns the exit status.
[[nodiscard]] int Convert(CSession& session, const Conversion& conversion, std::ostream& errors);
