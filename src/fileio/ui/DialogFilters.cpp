// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/ui/DialogFilters.h"

#include "fileio/FormatTable.h"
#include "platform/ui/QtText.h"

namespace {

constexpr QLatin1String kNameAndPatterns("%1 (%2)");

/// "BMP DIB" as "*.bmp *.dib".
QString PatternsOf(std::string_view extensions)
{
    QStringList patterns;
    for (const QString& extension : ToQString(extensions).toLower().split(QLatin1Char(' ')))
        patterns += QStringLiteral("*.") + extension;
    return patterns.join(QLatin1Char(' '));
}

} // namespace

QString ToDialogFilter(std::string_view filter)
{
    const QStringList parts = ToQString(filter).split(QLatin1Char('|'));
    QString patterns = parts.value(1);
    patterns.replace(QLatin1Char(';'), QLatin1Char(' '));
    return QString(kNameAndPatterns).arg(TranslatedQString(ToUtf8(parts.value(0))), patterns);
}

QString FilterOf(std::string_view name, std::string_view extensions)
{
    return QString(kNameAndPatterns).arg(TranslatedQString(name), PatternsOf(extensions));
}

QStringList OpenFilters()
{
    QStringList patterns;
    QStringList filters;
    for (const FormatRow& format : FormatTable()) {
        patterns += PatternsOf(format.extensions);
        filters += FilterOf(format.name, format.extensions);
    }
    filters.prepend(
        QString(kNameAndPatterns).arg(ToQString(Str::AllSupportedFormats), patterns.join(QLatin1Char(' '))));
    filters.append(QString(kNameAndPatterns).arg(ToQString(Str::AllFiles), QStringLiteral("*")));
    return filters;
}
