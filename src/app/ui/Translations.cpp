// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ui/Translations.h"

#include "platform/ui/QtText.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

namespace {

constexpr const char* kContext = "Pixolune";

/// Stands for a language that nobody has translated the program into yet.
class CPseudoTranslator final : public QTranslator {
public:
    using QTranslator::QTranslator;

    [[nodiscard]] QString translate(const char* /*context*/, const char* source, const char* /*comment*/,
                                    int /*number*/) const override
    {
        return PseudoText(QString::fromUtf8(source));
    }
    [[nodiscard]] bool isEmpty() const override { return false; }
};

std::string TranslateText(std::string_view source)
{
    const std::string text(source);
    return ToUtf8(QCoreApplication::translate(kContext, text.c_str()));
}

bool InstallFrom(QCoreApplication& application, const QString& file, const QString& folder)
{
    auto* translator = new QTranslator(&application);
    return translator->load(QLocale(), file, QStringLiteral("_"), folder) &&
           QCoreApplication::installTranslator(translator);
}

QChar Accented(QChar letter)
{
    constexpr QStringView kPlain = u"aeiouyAEIOUcnsz";
    constexpr QStringView kMarked =
        u"\u00e4\u00e9\u00ef\u00f6\u00fc\u00ff\u00c4\u00c9\u00cf\u00d6\u00dc\u00e7\u00f1\u0161\u017e";
    const qsizetype at = kPlain.indexOf(letter);
    return at < 0 ? letter : kMarked[at];
}

} // namespace

QString PseudoText(const QString& source)
{
    if (source.trimmed().isEmpty() || source.contains(QLatin1String("*.")))
        return source;
    QString text;
    bool isMark = false;
    for (const QChar letter : source) {
        // The letter after one of these belongs to it.
        text += isMark ? letter : Accented(letter);
        isMark = letter == QLatin1Char('&') || letter == QLatin1Char('%');
    }
    const qsizetype longer = (source.size() * 2 + 4) / 5;
    for (qsizetype added = 0; added < longer; ++added)
        text += added % 6 == 0 ? QLatin1Char(' ') : QLatin1Char('~');
    return text;
}

void InstallTranslations(QCoreApplication& application, Language language)
{
    if (language == Language::Pseudo) {
        QCoreApplication::installTranslator(new CPseudoTranslator(&application));
    } else {
        const QString folder =
            QCoreApplication::applicationDirPath() + QStringLiteral("/../share/pixolune/translations");
        if (!InstallFrom(application, QStringLiteral("pixolune"), folder))
            return;
        InstallFrom(application, QStringLiteral("qtbase"),
                    QLibraryInfo::path(QLibraryInfo::TranslationsPath));
    }
    SetTextTranslator(TranslateText);
}
