// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/ui/SaveAsDialog.h"

#include "fileio/ui/SaveAsPanel.h"
#include "platform/ui/QtText.h"

#include <QGridLayout>

QString ToDialogFilter(std::string_view filter)
{
    const QStringList parts = ToQString(filter).split(QLatin1Char('|'));
    QString patterns = parts.value(1);
    patterns.replace(QLatin1Char(';'), QLatin1Char(' '));
    return QStringLiteral("%1 (%2)").arg(parts.value(0), patterns);
}

CSaveAsDialog::CSaveAsDialog(const SaveFormatRow& format, CSettings& settings, Size canvas,
                             const QString& folder, const QString& name, QWidget* parent)
    : QFileDialog(parent, ToQString(format.tip), folder, ToDialogFilter(format.filter)), m_settings(settings)
{
    const QString ending = ToQString(format.extension);
    setAcceptMode(AcceptSave);
    setFileMode(AnyFile);
    setDefaultSuffix(ending.mid(1));
    if (!name.isEmpty())
        selectFile(name + ending);
    if (format.panel == SavePanel::None)
        return;
    // The window system's own dialog has no room for the options.
    setOption(DontUseNativeDialog);
    m_panel = new CSaveAsPanel(format.panel, settings, canvas);
    if (auto* grid = qobject_cast<QGridLayout*>(layout()))
        grid->addWidget(m_panel, grid->rowCount(), 0, 1, grid->columnCount());
}

void CSaveAsDialog::done(int result)
{
    if (result == Accepted && m_panel != nullptr)
        m_panel->Store(m_settings, m_options);
    QFileDialog::done(result);
}
