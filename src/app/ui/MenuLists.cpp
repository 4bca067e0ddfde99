// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ui/MenuLists.h"

#include "app/ui/ChildFrame.h"
#include "app/ui/DocumentArea.h"
#include "app/ui/RecentFiles.h"
#include "platform/ui/QtText.h"
#include "platform/ui/ThemedIcon.h"

#include <QFileInfo>
#include <QMenu>

namespace {

QString NumberedEntry(int number, QString name)
{
    name.replace(QLatin1Char('&'), QLatin1String("&&"));
    return QStringLiteral("&%1  %2").arg(number).arg(name);
}

} // namespace

CMenuLists::CMenuLists(const CRecentFiles& recentFiles, CDocumentArea& area, QAction& exit, QObject* parent)
    : QObject(parent), m_recentFiles(recentFiles), m_area(area), m_exit(exit)
{
}

void CMenuLists::Extend(QMenu& menu, const QString& path)
{
    if (path == QLatin1String("File"))
        ListFiles(menu);
    else if (path == QLatin1String("Window"))
        ListWindows(menu);
}

void CMenuLists::ListFiles(QMenu& menu)
{
    if (!m_recentMenu) {
        m_recentMenu = new QMenu(ToQString(Str::RecentFiles), &menu);
        m_recentMenu->setIcon(ThemedIcon("recent"));
        menu.insertMenu(&m_exit, m_recentMenu);
        menu.insertSeparator(&m_exit);
    }
    m_recentMenu->clear();
    int number = 0;
    for (const QString& path : m_recentFiles.Paths()) {
        QAction* entry = m_recentMenu->addAction(NumberedEntry(++number, QFileInfo(path).fileName()));
        entry->setStatusTip(path);
        connect(entry, &QAction::triggered, this, [this, path] { Q_EMIT FileChosen(path); });
    }
    m_recentMenu->setEnabled(number > 0);
}

void CMenuLists::ListWindows(QMenu& menu)
{
    for (QAction* entry : m_windowEntries)
        delete entry;
    m_windowEntries.clear();
    m_windowEntries.push_back(menu.addSeparator());
    int number = 0;
    for (CChildFrame* window : m_area.Frames()) {
        QString name = window->windowTitle();
        name.replace(QLatin1String("[*]"), window->isWindowModified() ? QLatin1String("*") : QLatin1String());
        QAction* entry = menu.addAction(NumberedEntry(++number, name));
        entry->setCheckable(true);
        entry->setChecked(window == m_area.ActiveFrame());
        connect(entry, &QAction::triggered, window, [this, window] { m_area.setActiveSubWindow(window); });
        m_windowEntries.push_back(entry);
    }
}
