// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/CommandTable.h"

#include "app/commands/CommandFamilies.h"

#include <algorithm>
#include <cassert>

namespace {

std::vector<CommandRow> JoinFamilies()
{
    std::vector<CommandRow> rows;
    for (const auto family :
         {FileCommands(), EditCommands(), ViewCommands(), ObjectCommands(), LayoutCommands(),
          TransformCommands(), ToolCommands(), WindowCommands(), HelpCommands()})
        rows.insert(rows.end(), family.begin(), family.end());
    return rows;
}

} // namespace

std::span<const CommandRow> CommandTable()
{
    static const std::vector<CommandRow> rows = JoinFamilies();
    return rows;
}

const CommandRow& FindCommand(CommandId id)
{
    const auto rows = CommandTable();
    const auto row = std::ranges::find(rows, id, &CommandRow::id);
    assert(row != rows.end());
    return *row;
}

bool IsCommandEnabled(const CommandContext& context, CommandId id)
{
    return FindCommand(id).isEnabled(context);
}

bool RunCommand(CommandContext& context, CommandId id)
{
    if (!IsCommandEnabled(context, id))
        return false;
    context.id = id;
    const CommandRow& row = FindCommand(id);
    // A drag ends before anything else is done. Looking from elsewhere does not disturb it, and another tool
    // gives it up.
    if (!row.menu.starts_with("View") && !row.menu.starts_with("Tools")) {
        if (context.view != nullptr)
            context.view->FinishDrag();
        // What has been done until now does not wait for a dialog to be closed.
        if (CJournal* journal = context.app.Journal())
            journal->Note();
    }
    return row.run(context);
}

bool Always(const CommandContext& /*context*/)
{
    return true;
}

bool HasShell(const CommandContext& context)
{
    return context.shell != nullptr;
}

bool HasDocument(const CommandContext& context)
{
    return context.document != nullptr;
}

bool HasView(const CommandContext& context)
{
    return context.view != nullptr;
}

bool HasShellAndDocument(const CommandContext& context)
{
    return HasShell(context) && HasDocument(context);
}

bool RunInShell(CommandContext& context)
{
    return context.shell->RunWindowCommand(context.id);
}

bool IsCheckedInShell(const CommandContext& context)
{
    return context.shell != nullptr && context.shell->IsWindowCommandChecked(context.id);
}
