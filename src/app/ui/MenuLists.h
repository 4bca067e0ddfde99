// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

#include <vector>

class CDocumentArea;
class CRecentFiles;
class QAction;
class QMenu;

/// The entries of the menus that change from one opening to the next: the recent files of the File menu and
/// the open windows of the Window menu.
class CMenuLists final : public QObject {
    Q_OBJECT

public:
    /// exit: the entry above which the recent files stand. All must outlive the lists.
    CMenuLists(const CRecentFiles& recentFiles, CDocumentArea& area, QAction& exit, QObject* parent);

    /// Brings the menu of this path up to date, when it has such entries.
    void Extend(QMenu& menu, const QString& path);

Q_SIGNALS:
    void FileChosen(const QString& path);

private:
    void ListFiles(QMenu& menu);
    void ListWindows(QMenu& menu);

    const CRecentFiles& m_recentFiles;
    CDocumentArea& m_area;
    QAction& m_exit;
    QMenu* m_recentMenu = nullptr;
    std::vector<QAction*> m_windowEntries;
};
