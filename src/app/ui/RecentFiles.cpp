// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ui/RecentFiles.h"

#include <QSettings>

namespace {

constexpr QLatin1String kKey("Recent/Files");
constexpr QLatin1String kFolderKey("Recent/Folder");

} // namespace

QStringList CRecentFiles::Paths() const
{
    return m_configuration.value(kKey).toStringList();
}

void CRecentFiles::Add(const QString& path)
{
    QStringList paths = Paths();
    paths.removeAll(path);
    paths.prepend(path);
    m_configuration.setValue(kKey, QStringList(paths.mid(0, kMaxFiles)));
}

void CRecentFiles::Remove(const QString& path)
{
    QStringList paths = Paths();
    if (paths.removeAll(path) > 0)
        m_configuration.setValue(kKey, paths);
}

QString CRecentFiles::Folder() const
{
    return m_configuration.value(kFolderKey).toString();
}

void CRecentFiles::SetFolder(const QString& folder)
{
    m_configuration.setValue(kFolderKey, folder);
}
