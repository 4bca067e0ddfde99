// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "history/undo/CommandParts.h"
#include "platform/strings/Strings.h"

#include <cstddef>
#include <string>
#include <utility>

class CPixoluneDoc;

/// One change that can be undone. A command is created before the change, captures what it needs, and then
/// holds the state that is not current; undo and redo swap it with the document's.
class CEditCommand {
public:
    explicit CEditCommand(Str undoName) : m_name(SourceText(undoName)) {}
    explicit CEditCommand(std::string name) : m_name(std::move(name)) {}
    virtual ~CEditCommand() = default;
    CEditCommand(const CEditCommand&) = delete;
    CEditCommand& operator=(const CEditCommand&) = delete;

    virtual void Undo() {}
    virtual void Redo() {}
    /// Bytes of pixels that this command alone keeps alive.
    [[nodiscard]] virtual size_t HeldBytes() const { return 0; }

    /// Tells what the command holds.
    virtual void VisitParts(ICommandParts& /*parts*/) const {}

    /// The Edit menu's text: begins with Undo in the undo list and with Redo in the redo list.
    [[nodiscard]] const std::string& Name() const { return m_name; }
    /// The document it was recorded in, whatever document is active now.
    [[nodiscard]] CPixoluneDoc* Document() const { return m_document; }
    void SetDocument(CPixoluneDoc* document) { m_document = document; }

protected:
    /// Puts the word for the other list in front of the name.
    void RenameToRedo() { ReplaceFirstWord("Redo"); }
    void RenameToUndo() { ReplaceFirstWord("Undo"); }

private:
    void ReplaceFirstWord(const char* word) { m_name.replace(0, m_name.find(' '), word); }

    std::string m_name;
    CPixoluneDoc* m_document = nullptr;
};

/// A command whose undo and redo are one and the same exchange.
class CExchangeCommand : public CEditCommand {
public:
    using CEditCommand::CEditCommand;
    void Undo() final
    {
        Exchange();
        RenameToRedo();
    }
    void Redo() final
    {
        Exchange();
        RenameToUndo();
    }

protected:
    /// Swaps the held state with the document's and reports what changed. Must cope with a document that
    /// has changed since: objects may have left the list.
    virtual void Exchange() = 0;
};
