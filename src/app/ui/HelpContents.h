// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>
#include <QUrl>

#include <span>
#include <vector>

/// What the help holds: the sections and pages that its index lists, in that order.
class CHelpContents {
public:
    struct Page {
        QString section;
        QString title;
        QString name; ///< of the file, without its ending
    };

    CHelpContents();

    [[nodiscard]] std::span<const Page> Pages() const { return m_pages; }
    /// The pages that hold every word, those with one in their titles first.
    [[nodiscard]] std::vector<Page> Search(const QString& words) const;

    [[nodiscard]] static QUrl Url(const QString& name);
    [[nodiscard]] static QString NameOf(const QUrl& url);
    /// The page as it was written; empty when there is none.
    [[nodiscard]] static QString Text(const QString& name);
    /// Its first heading.
    [[nodiscard]] static QString Title(const QString& name);

private:
    std::vector<Page> m_pages;
};
