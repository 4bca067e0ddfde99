// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/commands/CommandFamilies.h"
#include "document/ObjectOperations.h"
#include "document/StackingOperations.h"

namespace {

using enum CommandId;

template <bool (*operation)(CPixoluneDoc&)> bool OnDocument(CommandContext& context)
{
    return operation(*context.document);
}

template <StackingKind kind> bool RestackTo(CommandContext& context)
{
    return Restack(*context.document, kind);
}

constexpr CommandRow kRows[] = {
    {ObjectNew, "Object", 0, "&New Object", "Creates a transparent object on top of all others", "New Object",
     "Ctrl+Shift+N", "object-new", HasDocument, nullptr, OnDocument<NewObject>},
    {ObjectDuplicate, "Object", 0, "&Duplicate Object(s)", "Duplicates all selected objects",
     "Duplicate Object(s)", "Ctrl+D", "object-duplicate", HasDocument, nullptr, OnDocument<DuplicateObjects>},
    {ObjectDelete, "Object", 0, "D&elete Object(s)", "Deletes all selected objects", "Delete Object(s)",
     "Ctrl+Delete", "object-delete", HasDocument, nullptr, OnDocument<DeleteObjects>},
    {ObjectCombine, "Object", 1, "&Combine as Single Object",
     "Combines all selected visible objects as one object", "Combine as Single Object", "Ctrl+E", "",
     HasDocument, nullptr, OnDocument<CombineObjects>},
    {ObjectMakeFrame, "Object", 1, "&Make Frame as Single Object", "Makes one object of the whole frame",
     "Make Frame as Single Object", "Ctrl+Shift+E", "", HasDocument, nullptr, OnDocument<MakeFrame>},
    {ObjectMoveToFront, "Object", 2, "Move to &Front", "Moves all selected objects to the front",
     "Move to Front", "Ctrl+Shift+]; Ctrl+}", "object-front", HasDocument, nullptr,
     RestackTo<StackingKind::MoveToFront>},
    {ObjectMoveForward, "Object", 2, "Move F&orward", "Moves all selected objects one place to the front",
     "Move Forward", "Ctrl+]", "object-up", HasDocument, nullptr, RestackTo<StackingKind::MoveForward>},
    {ObjectMoveToBack, "Object", 2, "Move to &Back", "Moves all selected objects to the back", "Move to Back",
     "Ctrl+Shift+[; Ctrl+{", "object-back", HasDocument, nullptr, RestackTo<StackingKind::MoveToBack>},
    {ObjectMoveBackward, "Object", 2, "Move Back&ward", "Moves all selected objects one place to the back",
     "Move Backward", "Ctrl+[", "object-down", HasDocument, nullptr, RestackTo<StackingKind::MoveBackward>},
    {ObjectTrim, "Object", 3, "&Trim Object(s)", "Cuts the transparent borders off all selected objects",
     "Trim Object(s)", "Ctrl+T", "", HasDocument, nullptr, OnDocument<TrimObjects>},
    {ObjectAddImages, "Object", 4, "Add &Image(s)...", "Adds image files as new objects", "Add Image(s)",
     "Ctrl+Shift+O", "add-images", HasShellAndDocument, nullptr, RunInShell},
    {ObjectAddAvi, "Object", 4, "Add &AVI...", "Adds every frame of an AVI video as a new object", "Add AVI",
     "", "add-video", HasShellAndDocument, nullptr, RunInShell},
    {ObjectProperties, "Object", 5, "&Properties", "Shows and changes the properties of the selected object",
     "Properties", "Alt+Return", "properties", HasShellAndDocument, nullptr, RunInShell},
};

} // namespace

std::span<const CommandRow> ObjectCommands()
{
    return kRows;
}
