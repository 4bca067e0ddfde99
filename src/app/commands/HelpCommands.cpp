// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/commands/CommandFamilies.h"

namespace {

using enum CommandId;

constexpr CommandRow kRows[] = {
    {HelpTopics, "Help", 0, "&Help Topics", "Explains what is in use", "Help Topics", "F1", "help", HasShell,
     nullptr, RunInShell},
    {HelpKeyboard, "Help", 0, "&Keyboard Shortcuts", "Lists the keys of all commands", "Keyboard Shortcuts",
     "", "keyboard", HasShell, nullptr, RunInShell},
    {HelpFindCommand, "Help", 0, "&Find Command...", "Finds a command by parts of its name", "Find Command",
     "Ctrl+Shift+P", "find-command", HasShell, nullptr, RunInShell},
    {HelpAbout, "Help", 1, "&About Pixolune...", "Display program information, version number and copyright",
     "About", "", "about", HasShell, nullptr, RunInShell},
};

} // namespace

std::span<const CommandRow> HelpCommands()
{
    return kRows;
}
