// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "cli/Session.h"

#include <span>
#include <string>

/// Prints for each file what is wrong with it and what of it can be read: a line "file", a line "fault" for
/// each fault, and a line "result". The exit status is kAllDone when every file opens and has no fault.
[[nodiscard]] int CheckFiles(CSession& session, std::span<const std::string> files);
