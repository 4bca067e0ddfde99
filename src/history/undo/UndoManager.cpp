// SPDX-License-Identifier: GPL-3.0-or-later
#include "history/undo/UndoManager.h"

namespace {

HistoryItem ItemFor(const CEditCommand* command, Str nothing)
{
    if (command == nullptr)
        return {std::string(SourceText(nothing)), false};
    return {command->Name(), true};
}

} // namespace

void CUndoManager::Record(std::unique_ptr<CEditCommand> command, int maxTimes)
{
    if (static_cast<int64_t>(m_undo.size()) > maxTimes)
        m_undo.pop_front();
    m_undo.push_back(std::move(command));
}

bool CUndoManager::Undo()
{
    if (m_undo.empty())
        return false;
    m_redo.push_back(std::move(m_undo.back()));
    m_undo.pop_back();
    m_redo.back()->Undo();
    return true;
}

bool CUndoManager::Redo()
{
    if (m_redo.empty())
        return false;
    m_undo.push_back(std::move(m_redo.back()));
    m_redo.pop_back();
    m_undo.back()->Redo();
    return true;
}

void CUndoManager::WithdrawNewest()
{
    if (!m_undo.empty())
        m_undo.pop_back();
}

void CUndoManager::Clear()
{
    m_undo.clear();
    m_redo.clear();
}

HistoryItem CUndoManager::UndoItem() const
{
    return ItemFor(PeekUndo(), Str::CantUndo);
}

HistoryItem CUndoManager::RedoItem() const
{
    return ItemFor(PeekRedo(), Str::CantRedo);
}
