// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

class QSettings;

/// The files opened or saved last, newest first, kept between runs.
class CRecentFiles {
public:
    static constexpr int kMaxFiles = 9;

    explicit CRecentFiles(QSettings& configuration) : m_configuration(configuration) {}

    [[nodiscard]] QStringList Paths() const;
    /// Puts the file first.
    void Add(const QString& path);
    void Remove(const QString& path);
    /// Where files were last chosen to be opened; empty before the first time.
    [[nodiscard]] QString Folder() const;
    void SetFolder(const QString& folder);

private:
    QSettings& m_configuration;
};
