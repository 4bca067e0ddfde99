// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/ui/SaveAsDialog.h"

#include "fileio/ui/DialogFilters.h"
#include "fileio/ui/FileDialogParts.h"
#include "fileio/ui/SaveAsPanel.h"
#include "fileio/ui/SavePreview.h"
#include "platform/ui/DialogPlacement.h"
#include "platform/ui/QtText.h"

#include <QGridLayout>

CSaveAsDialog::CSaveAsDialog(const SaveFormatRow& format, CSettings& settings, const CObjectCanvas& canvas,
                             const QString& folder, const QString& name, QWidget* parent)
    : QFileDialog(parent, TranslatedQString(format.tip), folder, ToDialogFilter(format.filter)),
      m_settings(settings)
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
    FitColumns(*this);
    m_panel = new CSaveAsPanel(format.panel, settings, canvas.Size());
    QWidget* below = m_panel;
    if (CSavePreview::CanShow(canvas, format)) {
        m_preview = new CSavePreview(canvas, format, m_panel);
        below = m_preview;
        connect(m_panel, &CSaveAsPanel::Changed, this, &CSaveAsDialog::ShowPreview);
        ShowPreview();
    }
    if (auto* grid = qobject_cast<QGridLayout*>(layout()))
        grid->addWidget(below, grid->rowCount(), 0, 1, grid->columnCount());
    // The options are not to take their room from the list of files.
    FitOnScreen(*this);
}

void CSaveAsDialog::ShowPreview()
{
    CSettings settings = m_settings;
    SaveAsOptions options;
    m_panel->Store(settings, options);
    m_preview->Show(settings, options);
}

void CSaveAsDialog::done(int result)
{
    if (result == Accepted && m_panel != nullptr)
        m_panel->Store(m_settings, m_options);
    QFileDialog::done(result);
}
