// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/commands/CommandFamilies.h"

namespace {

using enum CommandId;

bool CanUndo(const CommandContext& context)
{
    return HasDocument(context) && context.document->History().UndoItem().enabled;
}

bool CanRedo(const CommandContext& context)
{
    return HasDocument(context) && context.document->History().RedoItem().enabled;
}

bool Undo(CommandContext& context)
{
    // A drag under way belongs to a state that is about to go.
    if (context.view != nullptr && context.view->CancelDrag())
        return true;
    return context.document->Undo();
}

bool Redo(CommandContext& context)
{
    if (context.view != nullptr && context.view->CancelDrag())
        return true;
    return context.document->Redo();
}

std::string UndoText(const CommandContext& context)
{
    return HasDocument(context) ? context.document->History().UndoItem().text
                                : std::string(Text(Str::CantUndo));
}

std::string RedoText(const CommandContext& context)
{
    return HasDocument(context) ? context.document->History().RedoItem().text
                                : std::string(Text(Str::CantRedo));
}

constexpr CommandRow kRows[] = {
    {EditUndo, "Edit", 0, "&Undo", "Undo the last action", "Undo", "Ctrl+Z", "undo", CanUndo, nullptr, Undo,
     UndoText},
    {EditRedo, "Edit", 0, "&Redo", "Redo the previously undone action", "Redo", "Ctrl+Y; Ctrl+Shift+Z",
     "redo", CanRedo, nullptr, Redo, RedoText},
    {EditPreferences, "Edit", 9, "Pre&ferences...", "Changes the settings of the program", "Preferences",
     "Ctrl+,", "preferences", HasShell, nullptr, RunInShell},
};

} // namespace

std::span<const CommandRow> EditCommands()
{
    return kRows;
}
