// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ui/HelpContents.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>

namespace {

constexpr QLatin1String kFolder(":/help/");
constexpr QLatin1String kEnding(".md");
constexpr QLatin1String kTitleMark("# ");
constexpr QLatin1String kSectionMark("## ");
constexpr QLatin1String kIndex("index");

} // namespace

QUrl CHelpContents::Url(const QString& name)
{
    return QUrl(QLatin1String("qrc") + kFolder + name + kEnding);
}

QString CHelpContents::NameOf(const QUrl& url)
{
    return QFileInfo(url.path()).completeBaseName();
}

QString CHelpContents::Text(const QString& name)
{
    QFile file(kFolder + name + kEnding);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QString CHelpContents::Title(const QString& name)
{
    return Text(name).section(QLatin1Char('\n'), 0, 0).mid(kTitleMark.size());
}

CHelpContents::CHelpContents()
{
    static const QRegularExpression entry(QStringLiteral("^- \\[(.+)\\]\\((.+)\\.md\\)"));
    QString section;
    for (const QString& line : Text(kIndex).split(QLatin1Char('\n'))) {
        if (line.startsWith(kSectionMark))
            section = line.mid(kSectionMark.size());
        else if (const auto match = entry.match(line); match.hasMatch())
            m_pages.push_back({section, match.captured(1), match.captured(2)});
    }
}

std::vector<CHelpContents::Page> CHelpContents::Search(const QString& words) const
{
    const QStringList list = words.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    std::vector<Page> inTitle;
    std::vector<Page> inText;
    const auto holdsAll = [&list](const QString& text) {
        return std::ranges::all_of(
            list, [&text](const QString& word) { return text.contains(word, Qt::CaseInsensitive); });
    };
    for (const Page& page : m_pages) {
        if (holdsAll(page.title))
            inTitle.push_back(page);
        else if (holdsAll(page.title + Text(page.name)))
            inText.push_back(page);
    }
    inTitle.insert(inTitle.end(), inText.begin(), inText.end());
    return inTitle;
}
