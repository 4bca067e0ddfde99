// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/commands/CommandFamilies.h"

namespace {

using enum CommandId;

constexpr CommandRow kRows[] = {
    {WindowNext, "Window", 0, "Ne&xt", "Switch to the next document", "", "Ctrl+Tab", "", HasShellAndDocument,
     nullptr, RunInShell},
    {WindowPrevious, "Window", 0, "&Previous", "Switch to the previous document", "", "Ctrl+Shift+Tab", "",
     HasShellAndDocument, nullptr, RunInShell},
};

} // namespace

std::span<const CommandRow> WindowCommands()
{
    return kRows;
}
