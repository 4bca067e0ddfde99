// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

#include <functional>
#include <memory>

class CHelpWindow;
class CShortcuts;
class QSettings;
class QWidget;

/// Help for the whole program: its window is made when it is asked for. In dialogs and open menus the keys of
/// the help command work as well.
class CHelp final : public QObject {
    Q_OBJECT

public:
    /// The page of the command or tool in use, for parts that have none of their own.
    using PageSource = std::function<QString()>;

    /// shortcuts and configuration must outlive the help.
    CHelp(const CShortcuts& shortcuts, QSettings& configuration, PageSource currentPage);
    ~CHelp() override;

    void Show(const QString& page);
    /// Shows the page of a part of the program, such as the one that has the keyboard. part: may be none.
    void ShowFor(const QWidget* part);
    /// None before help was asked for.
    [[nodiscard]] CHelpWindow* Window() const { return m_window.get(); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void ShowForMenus();

    const CShortcuts& m_shortcuts;
    QSettings& m_configuration;
    PageSource m_currentPage;
    std::unique_ptr<CHelpWindow> m_window;
};
