// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/CommandTable.h"
#include "ui/UiTest.h"

#include <QAction>
#include <QDialog>
#include <QFileDialog>
#include <QMessageBox>
#include <QToolButton>

#include <functional>

/// Looks at a window; name: what to call it in failures.
using WindowVisitor = std::function<void(const std::string& name, QWidget& window)>;

/// Runs every command that opens a dialog, lets the visitor look at the dialog and closes it again. Dialogs
/// of the toolkit are left out, but not what this program adds to them.
class CDialogWalk final : public QObject {
public:
    CDialogWalk(CMainFrame& window, WindowVisitor visit) : m_window(window), m_visit(std::move(visit)) {}

    void Run()
    {
        startTimer(0);
        for (const CommandRow& row : CommandTable()) {
            QAction* action = m_window.Action(row.id);
            if (row.id == CommandId::FileExit || row.id == CommandId::FileClose || row.menu == "Window" ||
                !action->isEnabled() || row.isChecked)
                continue;
            m_current = std::string(row.menu) + "/" + std::string(row.text);
            action->trigger();
            while (m_window.Action(CommandId::EditUndo)->isEnabled()) {
                m_window.Action(CommandId::EditUndo)->trigger();
                QTest::qWait(1);
            }
        }
    }

    /// Dialogs that were looked at.
    [[nodiscard]] int Count() const { return m_count; }

protected:
    void timerEvent(QTimerEvent* /*event*/) override
    {
        QWidget* dialog = QApplication::activeModalWidget();
        if (!dialog || !dialog->isVisible() || m_isVisiting)
            return;
        m_isVisiting = true;
        if (auto* files = qobject_cast<QFileDialog*>(dialog)) {
            for (QWidget* added : files->findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
                if (!added->inherits("QFrame") &&
                    !QByteArray(added->metaObject()->className()).startsWith('Q'))
                    Visit(*added);
            }
        } else if (!dialog->inherits("QAbstractPrintDialog")) {
            Visit(*dialog);
        }
        dialog->close();
        m_isVisiting = false;
    }

private:
    void Visit(QWidget& window)
    {
        ++m_count;
        m_visit(m_current, window);
    }

    CMainFrame& m_window;
    WindowVisitor m_visit;
    std::string m_current;
    int m_count = 0;
    bool m_isVisiting = false;
};
