// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/CommandTable.h"

#include <QDialog>

class CShortcuts;
class QLineEdit;
class QListView;
class QStandardItemModel;

/// Finds a command by parts of its name. The typing stays in the edit box while the arrow keys move through
/// the list; Enter or a click chooses an enabled command.
class CCommandSearch final : public QDialog {
    Q_OBJECT

public:
    /// context: what decides whether commands are enabled.
    CCommandSearch(const CommandContext& context, const CShortcuts& shortcuts, QWidget* parent);

    /// None before one was chosen.
    [[nodiscard]] std::optional<CommandId> Chosen() const { return m_chosen; }

    void accept() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    bool event(QEvent* event) override;

private:
    void Fill(const QString& words);
    void Announce();

    const CommandContext& m_context;
    const CShortcuts& m_shortcuts;
    QLineEdit* m_words;
    QStandardItemModel* m_model;
    QListView* m_list;
    std::optional<CommandId> m_chosen;
};
