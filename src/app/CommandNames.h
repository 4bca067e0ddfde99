// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/CommandTable.h"

/// The menu text without its mark and the dots behind it: "Gaussian Blur".
[[nodiscard]] std::string CommandName(const CommandRow& row);
/// The menus that lead to the command, "Transform > Rotate"; the panel's name for commands of no menu.
[[nodiscard]] std::string CommandPlace(const CommandRow& row);
/// A name of letters and digits that no other command has, under which things are stored:
/// "Transform-GaussianBlur".
[[nodiscard]] std::string CommandKey(const CommandRow& row);
/// Why a command that is disabled cannot be run.
[[nodiscard]] Str WhyDisabled(const CommandContext& context, CommandId id);

/// The commands that match every word, the best first: words stand in the name, in the menus that lead
/// there or in the prompt, in any order and in part; the letters of a name may also be left out here and
/// there ("gsblr"). All of them, in menu order, without a word.
[[nodiscard]] std::vector<const CommandRow*> SearchCommands(std::string_view words);
