// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ui/HelpBrowser.h"

#include "app/CommandNames.h"
#include "app/HelpPages.h"
#include "app/ui/HelpContents.h"
#include "app/ui/Shortcuts.h"
#include "platform/ui/QtText.h"

#include <QTextTable>

CHelpBrowser::CHelpBrowser(const CShortcuts& shortcuts, QWidget* parent)
    : QTextBrowser(parent), m_shortcuts(shortcuts)
{
    setOpenExternalLinks(true);
    setFrameShape(QFrame::NoFrame);
    document()->setDocumentMargin(fontMetrics().height());
    document()->setUndoRedoEnabled(false);
    connect(this, &QTextBrowser::historyChanged, this, &CHelpBrowser::StyleTables);
}

void CHelpBrowser::ShowPage(const QUrl& page)
{
    setSource(page);
    reload();
    StyleTables();
}

void CHelpBrowser::StyleTables()
{
    constexpr qreal kPadding = 4;
    for (QTextFrame* frame : document()->rootFrame()->childFrames()) {
        auto* table = qobject_cast<QTextTable*>(frame);
        if (!table)
            continue;
        QTextTableFormat format = table->format();
        format.setBorderCollapse(true);
        format.setBorder(1);
        format.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
        format.setBorderBrush(palette().mid());
        format.setCellPadding(kPadding);
        format.setBottomMargin(document()->documentMargin());
        table->setFormat(format);
    }
}

QVariant CHelpBrowser::loadResource(int type, const QUrl& name)
{
    const QString page = CHelpContents::NameOf(name);
    if (type == QTextDocument::MarkdownResource && page == ToQString(HelpPage(CommandId::HelpKeyboard)))
        return CHelpContents::Text(page) + KeyTables(m_shortcuts);
    return QTextBrowser::loadResource(type, name);
}

QString KeyTables(const CShortcuts& shortcuts)
{
    QString text;
    QString shown;
    for (const CommandRow& row : CommandTable()) {
        const QString keys = shortcuts.TextOf(row.id).toHtmlEscaped();
        if (keys.isEmpty())
            continue;
        const QString place = ToQString(CommandPlace(row));
        if (place != shown)
            text += QStringLiteral("\n## %1\n\n| %2 | %3 |\n|---|---|\n")
                        .arg(place, ToQString(Str::CommandColumn), ToQString(Str::ShortcutColumn));
        shown = place;
        text += QStringLiteral("| [%1](%2.md) | %3 |\n")
                    .arg(ToQString(CommandName(row)), ToQString(HelpPage(row.id)), keys);
    }
    return text;
}
