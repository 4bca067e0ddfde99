// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/CommandTable.h"

/// The help page of a command, as its file is called without the ending: "gaussian-blur". Empty for a
/// command that nobody has described.
[[nodiscard]] std::string_view HelpPage(CommandId id);
/// The page of a tool.
[[nodiscard]] std::string_view HelpPage(ToolMode mode);
/// The page of a file format, by one of its endings, whatever its case and with or without a dot.
[[nodiscard]] std::string FormatHelpPage(std::string_view ending);
