// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/commands/CommandFamilies.h"

namespace {

using enum CommandId;

constexpr CommandRow Row(CommandId id, int group, std::string_view text, std::string_view prompt,
                         std::string_view shortcut)
{
    return {id, "Window", group, text, prompt, "", shortcut, "", HasShellAndDocument, nullptr, RunInShell};
}

constexpr CommandRow kRows[] = {
    Row(WindowNew, 0, "&New Window", "Open another window for the active document", "Ctrl+Shift+W"),
    {WindowTabs, "Window", 1, "&Tabs", "Show every window as a tab", "", "", "", HasShell, IsCheckedInShell,
     RunInShell},
    Row(WindowCascade, 1, "&Cascade", "Arrange windows so they overlap", ""),
    Row(WindowTileHorizontally, 1, "Tile &Horizontally",
        "Arrange windows one below the other, without overlap", ""),
    Row(WindowTileVertically, 1, "Tile &Vertically", "Arrange windows side by side, without overlap", ""),
    Row(WindowNext, 2, "Ne&xt", "Switch to the next window", "Ctrl+Tab"),
    Row(WindowPrevious, 2, "&Previous", "Switch to the previous window", "Ctrl+Shift+Tab"),
    Row(WindowClose, 3, "C&lose", "Close the active window", "Ctrl+F4"),
    Row(WindowCloseAll, 3, "Close &All", "Close all documents", "Ctrl+Shift+F4"),
};

} // namespace

std::span<const CommandRow> WindowCommands()
{
    return kRows;
}
