// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/CommandTable.h"

/// The rows of one menu each; the command table joins them.
[[nodiscard]] std::span<const CommandRow> FileCommands();
[[nodiscard]] std::span<const CommandRow> EditCommands();
[[nodiscard]] std::span<const CommandRow> ViewCommands();
[[nodiscard]] std::span<const CommandRow> ObjectCommands();
[[nodiscard]] std::span<const CommandRow> LayoutCommands();
[[nodiscard]] std::span<const CommandRow> TransformCommands();
[[nodiscard]] std::span<const CommandRow> ToolCommands();
[[nodiscard]] std::span<const CommandRow> WindowCommands();
[[nodiscard]] std::span<const CommandRow> HelpCommands();

// Conditions and handlers that several families share.
[[nodiscard]] bool Always(const CommandContext& context);
[[nodiscard]] bool HasShell(const CommandContext& context);
[[nodiscard]] bool HasDocument(const CommandContext& context);
[[nodiscard]] bool HasView(const CommandContext& context);
/// A window to ask with and a document to act on.
[[nodiscard]] bool HasShellAndDocument(const CommandContext& context);
/// Hands the command to the windows.
bool RunInShell(CommandContext& context);
[[nodiscard]] bool IsCheckedInShell(const CommandContext& context);
