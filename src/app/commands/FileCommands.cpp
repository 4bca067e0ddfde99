// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/commands/CommandFamilies.h"
#include "fileio/SaveAs.h"

namespace {

using enum CommandId;

constexpr CommandRow kRows[] = {
    {FileNew, "File", 0, "&New...", "Create a new document", "New", "Ctrl+N", "file-new", HasShell, nullptr,
     RunInShell},
    {FileOpen, "File", 0, "&Open...", "Open an existing document", "Open", "Ctrl+O", "open", HasShell,
     nullptr, RunInShell},
    {FileClose, "File", 0, "&Close", "Close the active document", "Close", "Ctrl+W", "close",
     HasShellAndDocument, nullptr, RunInShell},
    {FileSave, "File", 1, "&Save", "Save the active document", "Save", "Ctrl+S", "save", HasShellAndDocument,
     nullptr, RunInShell},
    {FileSaveAs, "File", 1, "Save As &Document...", "Save the active document with a new name", "Save As",
     "Ctrl+Shift+S", "save-as", HasShellAndDocument, nullptr, RunInShell},
};

constexpr CommandRow kPrintRows[] = {
    {FilePageSetup, "File", 2, "Page Set&up...", "Change the paper and how the picture stands on it",
     "Page Setup", "", "page-setup", HasShell, nullptr, RunInShell},
    {FilePrintPreview, "File", 2, "Print Pre&view", "Display full pages", "Print Preview", "Ctrl+Alt+P",
     "print-preview", HasShellAndDocument, nullptr, RunInShell},
    {FilePrint, "File", 2, "&Print...", "Print the active document", "Print", "Ctrl+P", "print",
     HasShellAndDocument, nullptr, RunInShell},
};

bool CanExportAnimation(const CommandContext& context)
{
    return HasShellAndDocument(context) && context.document->Canvas().CountVisible() > 0;
}

constexpr CommandRow kExportRow = {FileExportAnimation,
                                   "File",
                                   1,
                                   "&Export Animation...",
                                   "Write the visible objects as the frames of an animation",
                                   "Export Animation",
                                   "",
                                   "export-animation",
                                   CanExportAnimation,
                                   nullptr,
                                   RunInShell};

constexpr CommandRow kExitRow = {
    FileExit,  "File",   9,  "E&xit",  "Quit the application; prompts to save documents",
    "Exit",    "Ctrl+Q", "", HasShell, nullptr,
    RunInShell};

/// The rows above with one for each save format.
std::vector<CommandRow> JoinRows()
{
    std::vector<CommandRow> rows(std::begin(kRows), std::end(kRows));
    int id = static_cast<int>(FileSaveAsJpg);
    for (const SaveFormatRow& format : SaveFormatTable()) {
        rows.push_back({static_cast<CommandId>(id++), "File/Save &As...", 1, format.menuText, format.prompt,
                        format.tip, "", "", HasShellAndDocument, nullptr, RunInShell});
    }
    rows.push_back(kExportRow);
    rows.insert(rows.end(), std::begin(kPrintRows), std::end(kPrintRows));
    rows.push_back(kExitRow);
    return rows;
}

} // namespace

std::span<const CommandRow> FileCommands()
{
    static const std::vector<CommandRow> rows = JoinRows();
    return rows;
}
