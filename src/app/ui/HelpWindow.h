// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/ui/HelpContents.h"

#include <QMainWindow>

class CHelpBrowser;
class CShortcuts;
class QLineEdit;
class QListWidget;
class QSettings;
class QTabWidget;
class QTreeWidget;

/// The window of the help: contents and search at the left, the page at the right.
class CHelpWindow final : public QMainWindow {
    Q_OBJECT

public:
    /// configuration: where the window keeps its size. Both must outlive the window.
    CHelpWindow(const CShortcuts& shortcuts, QSettings& configuration);

    /// Shows a page, or the index when there is none of that name.
    void ShowPage(const QString& name);
    [[nodiscard]] QString CurrentPage() const;

protected:
    void hideEvent(QHideEvent* event) override;

private:
    void CreateBar();
    QWidget* CreateContents();
    QWidget* CreateSearch();
    void Search(const QString& words);
    void OnPageShown();

    QSettings& m_configuration;
    CHelpContents m_contents;
    CHelpBrowser* m_browser;
    QTabWidget* m_tabs;
    QTreeWidget* m_tree;
    QLineEdit* m_words;
    QListWidget* m_found;
};
