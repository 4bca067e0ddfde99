// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "history/undo/EditCommand.h"

#include <deque>
#include <memory>
#include <string>

/// Text and state of the Undo or Redo menu item.
struct HistoryItem {
    std::string text;
    bool enabled = false;
};

/// A document's undo and redo lists; owns every command in them.
class CUndoManager {
public:
    using CommandList = std::deque<std::unique_ptr<CEditCommand>>;

    /// Appends to the undo list. When that list already holds more than `maxTimes` commands the oldest
    /// goes, so it holds at most maxTimes + 1. The redo list stays as it is.
    void Record(std::unique_ptr<CEditCommand> command, int maxTimes);
    /// Appends to the redo list a command that was undone in another run, the next one to be redone.
    void AddUndone(std::unique_ptr<CEditCommand> command) { m_redo.push_back(std::move(command)); }
    /// Moves the newest undo command to the redo list and runs it; false with nothing to undo.
    bool Undo();
    /// Moves the newest redo command back, without the limit test, and runs it; false without one.
    bool Redo();
    /// Forgets the newest undo command without running it: the change it stood for was given up.
    void WithdrawNewest();
    void Clear();

    [[nodiscard]] const CEditCommand* PeekUndo() const
    {
        return m_undo.empty() ? nullptr : m_undo.back().get();
    }
    [[nodiscard]] const CEditCommand* PeekRedo() const
    {
        return m_redo.empty() ? nullptr : m_redo.back().get();
    }
    /// Oldest first.
    [[nodiscard]] const CommandList& UndoList() const { return m_undo; }
    /// The next one to be redone last.
    [[nodiscard]] const CommandList& RedoList() const { return m_redo; }
    [[nodiscard]] HistoryItem UndoItem() const;
    [[nodiscard]] HistoryItem RedoItem() const;

private:
    CommandList m_undo;
    CommandList m_redo;
};
