// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <string>

/// A folder for the files that are written and read; it goes when the program ends.
const std::filesystem::path& ScratchFolder();

/// Runs a command line and waits for it; the program ends when it fails.
void RunCommand(const std::string& command);
