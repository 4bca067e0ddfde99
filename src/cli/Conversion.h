// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "cli/Session.h"

#include <ostream>
#include <span>
#include <string>

/// Takes a "NAME=VALUE" text over into the settings, as one that was read from the store; false when it is
/// none.
[[nodiscard]] bool Assign(CSettings& settings, const std::string& assignment);

/// Opens the first file, adds the others, and saves in the format that the target's extension chooses.
/// Returns the exit status.
[[nodiscard]] int Convert(CSession& session, std::span<const std::string> sources, const std::string& target,
                          std::ostream& errors);
