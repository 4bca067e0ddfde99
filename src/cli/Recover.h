// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "cli/Session.h"

#include <filesystem>
#include <span>

/// Opens the documents that journals tell, in order, and prints a line for each:
/// recovered "TITLE" undo COMMANDS redo COMMANDS modified 0|1. The journals stay as they are. Returns the
/// exit status.
[[nodiscard]] int Recover(CSession& session, std::span<const std::filesystem::path> journals);
