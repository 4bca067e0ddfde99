// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/commands/CommandFamilies.h"
#include "canvas/ClipboardCommands.h"
#include "canvas/SelectionOperations.h"

namespace {

using enum CommandId;

/// Undo gives up what is being drawn.
bool IsDrawing(const CommandContext& context)
{
    return HasView(context) && context.view->IsBusy();
}

bool CanUndo(const CommandContext& context)
{
    return HasDocument(context) && (context.document->History().UndoItem().enabled || IsDrawing(context));
}

bool CanRedo(const CommandContext& context)
{
    return HasDocument(context) && context.document->History().RedoItem().enabled;
}

bool Undo(CommandContext& context)
{
    // A shape of several clicks is still under way; a drag has just become the newest step.
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
    if (IsDrawing(context) && !context.document->History().UndoItem().enabled)
        return std::string(FindCommand(EditUndo).text);
    return HasDocument(context) ? context.document->History().UndoItem().text
                                : std::string(SourceText(Str::CantUndo));
}

std::string RedoText(const CommandContext& context)
{
    return HasDocument(context) ? context.document->History().RedoItem().text
                                : std::string(SourceText(Str::CantRedo));
}

template <bool (*command)(CPixoluneView&)> bool OnView(CommandContext& context)
{
    return command(*context.view);
}

bool HasSelection(const CommandContext& context)
{
    return HasView(context) && !context.view->Selection().IsEmpty();
}

bool CanPaste(const CommandContext& context)
{
    return HasView(context) && context.app.Services().clipboard.HasContents();
}

constexpr CommandRow kRows[] = {
    {EditUndo, "Edit", 0, "&Undo", "Undo the last action", "Undo", "Ctrl+Z", "undo", CanUndo, nullptr, Undo,
     UndoText},
    {EditRedo, "Edit", 0, "&Redo", "Redo the previously undone action", "Redo", "Ctrl+Y; Ctrl+Shift+Z",
     "redo", CanRedo, nullptr, Redo, RedoText},
    {EditCut, "Edit", 1, "Cu&t", "Cut the selection and put it on the Clipboard", "Cut",
     "Ctrl+X; Shift+Delete", "cut", HasView, nullptr, OnView<Cut>},
    {EditCopy, "Edit", 1, "&Copy", "Copy the selection and put it on the Clipboard", "Copy",
     "Ctrl+C; Ctrl+Insert", "copy", HasView, nullptr, OnView<Copy>},
    {EditCopyMerged, "Edit", 1, "Copy &Merged", "Copy the frame as one picture and put it on the Clipboard",
     "Copy Merged", "Ctrl+Shift+C", "", HasView, nullptr, OnView<CopyMerged>},
    {EditPaste, "Edit", 1, "&Paste", "Insert Clipboard contents", "Paste", "Ctrl+V; Shift+Insert", "paste",
     CanPaste, nullptr, OnView<Paste>},
    {EditDelete, "Edit", 1, "&Delete", "Erase the selection", "Delete", "Delete", "delete", HasView, nullptr,
     OnView<Delete>},
    {EditSelectAll, "Edit", 2, "Select &All", "Select the entire document", "Select All", "Ctrl+A",
     "select-all", HasView, nullptr, OnView<SelectAll>},
    {EditUnselectAll, "Edit", 2, "&Unselect All", "Unselect all", "Unselect All", "Ctrl+Shift+A",
     "unselect-all", HasSelection, nullptr, OnView<UnselectAll>},
    {EditInvertSelection, "Edit", 2, "&Invert Selection", "Invert selection", "Invert Selection",
     "Ctrl+Shift+I", "invert-selection", HasView, nullptr, OnView<InvertSelection>},
    {EditResize, "Edit", 8, "Resize Image", "Changes the size of image", "Resize Image", "Ctrl+Alt+S",
     "resize", HasShellAndDocument, nullptr, RunInShell},
    {EditPreferences, "Edit", 9, "Pre&ferences...", "Changes the settings of the program", "Preferences",
     "Ctrl+,", "preferences", HasShell, nullptr, RunInShell},
};

} // namespace

std::span<const CommandRow> EditCommands()
{
    return kRows;
}
