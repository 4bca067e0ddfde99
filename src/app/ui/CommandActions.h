// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/CommandTable.h"

#include <QObject>

#include <functional>
#include <map>
#include <span>

class CShortcuts;
class QAction;
class QMenu;
class QMenuBar;
class QToolBar;
class QWidget;

/// The command table as actions of a window: menus, tool bars and shortcuts are made from its rows. Menus
/// are filled when they are opened for the first time.
class CCommandActions final : public QObject {
    Q_OBJECT

public:
    using ContextSource = std::function<CommandContext()>;

    /// context: what commands act on at the moment they are asked for.
    CCommandActions(QWidget& window, const CShortcuts& shortcuts, ContextSource context);

    /// None for a command that has no row.
    [[nodiscard]] QAction* Find(CommandId id) const;
    void FillMenuBar(QMenuBar& bar);
    /// Gives every command the keys that it has now.
    void SetShortcuts(const CShortcuts& shortcuts);
    /// A bar of the commands, with a separator where the list has none.
    /// The arrow keys move between its buttons.
    void FillToolBar(QToolBar& bar, std::span<const std::optional<CommandId>> commands) const;
    /// Adds the commands to a context menu, with separators as in a tool bar.
    void FillMenu(QMenu& menu, std::span<const std::optional<CommandId>> commands) const;
    /// Brings what is enabled, checked and written on all actions up to date.
    void Refresh();

Q_SIGNALS:
    /// A command was run.
    void Ran();
    /// A menu of the bar is about to be shown, filled from the table. path: as in the table.
    void MenuOpening(QMenu* menu, const QString& path);

private:
    void CreateAction(const CommandRow& row, QWidget& window);
    void FillFromTable(QMenu& menu, std::string_view path);
    void RefreshOne(const CommandRow& row, const CommandContext& context);

    ContextSource m_context;
    std::map<CommandId, QAction*> m_actions;
};
