// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/ui/OpenFilesDialog.h"

#include "fileio/ui/FileDialogParts.h"
#include "fileio/ui/FilePreviewPane.h"
#include "platform/ui/QtText.h"

#include <QGridLayout>
#include <QLineEdit>

COpenFilesDialog::COpenFilesDialog(Str title, const QStringList& filters, CSettings& settings,
                                   const QString& folder, QWidget* parent)
    : QFileDialog(parent, ToQString(title), folder)
{
    // The window system's own dialog has no room for the preview.
    setOption(DontUseNativeDialog);
    setFileMode(ExistingFiles);
    setNameFilters(filters);
    auto* pane = new CFilePreviewPane(settings);
    FitColumns(*this);
    connect(this, &QFileDialog::currentChanged, pane, &CFilePreviewPane::Show);
    if (QLineEdit* name = NameEdit(*this)) {
        connect(name, &QLineEdit::textEdited, pane,
                [this, pane](const QString& text) { pane->Show(directory().absoluteFilePath(text)); });
    }
    if (auto* grid = qobject_cast<QGridLayout*>(layout()))
        grid->addWidget(pane, 0, grid->columnCount(), grid->rowCount(), 1);
    // For the list of files.
    resize(sizeHint() + QSize(200, 60));
}
