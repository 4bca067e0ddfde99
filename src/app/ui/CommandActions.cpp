// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ui/CommandActions.h"

#include "app/HelpPages.h"
#include "app/ui/Shortcuts.h"
#include "app/ui/ToolBarKeys.h"
#include "platform/ui/HelpPage.h"
#include "platform/ui/Mnemonics.h"
#include "platform/ui/QtText.h"
#include "platform/ui/ThemedIcon.h"

#include <QAction>
#include <QMenuBar>
#include <QToolBar>

#include <functional>
#include <set>

namespace {

/// The part of a menu path that follows its parent's, up to the next slash; empty when it is no child.
std::string_view ChildName(std::string_view path, std::string_view parent)
{
    if (!parent.empty()) {
        if (!path.starts_with(parent) || path.size() <= parent.size() || path[parent.size()] != '/')
            return {};
        path.remove_prefix(parent.size() + 1);
    }
    return path.substr(0, path.find('/'));
}

/// The letters that the rows of a menu mark themselves.
Mnemonics MarkedLetters(std::string_view menu)
{
    Mnemonics letters;
    for (const CommandRow& row : CommandTable()) {
        if (row.menu != menu)
            continue;
        const QString text = TranslatedQString(row.text);
        const qsizetype mark = text.indexOf(QLatin1Char('&'));
        if (mark >= 0 && mark + 1 < text.size())
            letters.insert(text[mark + 1].toLower());
    }
    return letters;
}

/// The tool tip with the first shortcut behind it.
QString TipWithShortcut(const CommandRow& row, const QAction& action)
{
    const QString tip =
        row.tip.empty() ? TranslatedQString(row.text).remove(QLatin1Char('&')) : TranslatedQString(row.tip);
    if (action.shortcut().isEmpty())
        return tip;
    return QStringLiteral("%1 (%2)").arg(tip, action.shortcut().toString(QKeySequence::NativeText));
}

} // namespace

CCommandActions::CCommandActions(QWidget& window, const CShortcuts& shortcuts, ContextSource context)
    : QObject(&window), m_context(std::move(context))
{
    for (const CommandRow& row : CommandTable())
        CreateAction(row, window);
    SetShortcuts(shortcuts);
}

void CCommandActions::CreateAction(const CommandRow& row, QWidget& window)
{
    auto* action = new QAction(ThemedIcon(row.icon), TranslatedQString(row.text), this);
    action->setStatusTip(TranslatedQString(row.prompt));
    SetHelpPage(*action, ToQString(HelpPage(row.id)));
    action->setCheckable(row.isChecked != nullptr);
    // Platforms that move such entries into a menu of their own are not to guess from the texts.
    action->setMenuRole(row.id == CommandId::FileExit          ? QAction::QuitRole
                        : row.id == CommandId::HelpAbout       ? QAction::AboutRole
                        : row.id == CommandId::EditPreferences ? QAction::PreferencesRole
                                                               : QAction::NoRole);
    connect(action, &QAction::triggered, this, [this, id = row.id] {
        CommandContext context = m_context();
        const auto run = [&] { RunCommand(context, id); };
        const auto giveUp = [&] {
            if (context.view != nullptr)
                context.view->CancelDrag();
        };
        context.app.RunWithinMemory(std::ref(run), giveUp);
        Q_EMIT Ran();
    });
    window.addAction(action);
    m_actions.emplace(row.id, action);
}

void CCommandActions::SetShortcuts(const CShortcuts& shortcuts)
{
    for (const CommandRow& row : CommandTable()) {
        QAction& action = *m_actions.at(row.id);
        action.setShortcuts(shortcuts.Of(row.id));
        action.setToolTip(TipWithShortcut(row, action));
    }
}

QAction* CCommandActions::Find(CommandId id) const
{
    const auto found = m_actions.find(id);
    return found == m_actions.end() ? nullptr : found->second;
}

void CCommandActions::FillMenuBar(QMenuBar& bar)
{
    std::set<std::string_view> known;
    Mnemonics mnemonics;
    for (const CommandRow& row : CommandTable()) {
        const std::string_view path = ChildName(row.menu, {});
        if (path.empty() || !known.insert(path).second)
            continue;
        QMenu* menu = bar.addMenu(WithMnemonic(TranslatedQString(path), mnemonics));
        connect(menu, &QMenu::aboutToShow, this, [this, menu, path] {
            if (menu->isEmpty())
                FillFromTable(*menu, path);
            Q_EMIT MenuOpening(menu, ToQString(path));
            Refresh();
        });
    }
}

void CCommandActions::FillFromTable(QMenu& menu, std::string_view path)
{
    std::set<std::string_view> submenus;
    Mnemonics mnemonics = MarkedLetters(path);
    std::optional<int> group;
    for (const CommandRow& row : CommandTable()) {
        const std::string_view child = ChildName(row.menu, path);
        const bool isItem = row.menu == path;
        if (!isItem && (child.empty() || !submenus.insert(child).second))
            continue;
        if (group && *group != row.group)
            menu.addSeparator();
        group = row.group;
        if (isItem)
            menu.addAction(m_actions.at(row.id));
        else
            FillFromTable(*menu.addMenu(WithMnemonic(TranslatedQString(child), mnemonics)),
                          row.menu.substr(0, path.size() + 1 + child.size()));
    }
}

void CCommandActions::FillToolBar(QToolBar& bar, std::span<const std::optional<CommandId>> commands) const
{
    for (const std::optional<CommandId>& id : commands) {
        if (!id)
            bar.addSeparator();
        else if (QAction* action = Find(*id))
            bar.addAction(action);
    }
    new CToolBarKeys(bar);
}

void CCommandActions::FillMenu(QMenu& menu, std::span<const std::optional<CommandId>> commands) const
{
    for (const std::optional<CommandId>& id : commands) {
        if (!id)
            menu.addSeparator();
        else if (QAction* action = Find(*id))
            menu.addAction(action);
    }
}

void CCommandActions::Refresh()
{
    const CommandContext context = m_context();
    for (const CommandRow& row : CommandTable())
        RefreshOne(row, context);
}

void CCommandActions::RefreshOne(const CommandRow& row, const CommandContext& context)
{
    QAction& action = *m_actions.at(row.id);
    CommandContext own = context;
    own.id = row.id;
    action.setEnabled(row.isEnabled(own));
    if (row.isChecked)
        action.setChecked(row.isChecked(own));
    if (row.currentText)
        action.setText(TranslatedQString(row.currentText(own)));
}
