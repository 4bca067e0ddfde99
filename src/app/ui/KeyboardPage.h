// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/ui/Shortcuts.h"

#include <QWidget>

#include <array>

class QKeySequenceEdit;
class QLabel;
class QLineEdit;
class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;

/// The page of the preferences that gives commands their keys: all commands by menu, a filter, and the two
/// keys of the chosen one. A key that another command has is taken over only when the user says so.
class CKeyboardPage final : public QWidget {
    Q_OBJECT

public:
    explicit CKeyboardPage(const CShortcuts& shortcuts, QWidget* parent = nullptr);

    /// The keys as they are now on the page.
    [[nodiscard]] const CShortcuts& Shortcuts() const { return m_shortcuts; }

private:
    static constexpr int kKeyCount = 2;

    void FillTree();
    void Filter(const QString& words);
    void ShowCommand();
    void ShowKeys();
    void OnKeyEdited();
    void TakeOver();
    [[nodiscard]] std::optional<CommandId> Current() const;
    [[nodiscard]] CShortcuts::Keys EditedKeys() const;

    CShortcuts m_shortcuts;
    QLineEdit* m_filter;
    QTreeWidget* m_tree;
    std::array<QKeySequenceEdit*, kKeyCount> m_keys;
    QLabel* m_warning;
    QPushButton* m_takeOver;
    QPushButton* m_reset;
    QPushButton* m_resetAll;
};
