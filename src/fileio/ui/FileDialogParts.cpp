// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/ui/FileDialogParts.h"

#include <QFileDialog>
#include <QHeaderView>
#include <QLineEdit>
#include <QTreeView>

void FitColumns(QFileDialog& dialog)
{
    auto* tree = dialog.findChild<QTreeView*>(QStringLiteral("treeView"));
    if (!tree)
        return;
    QHeaderView& header = *tree->header();
    header.setStretchLastSection(false);
    header.setSectionResizeMode(QHeaderView::ResizeToContents);
    header.setSectionResizeMode(0, QHeaderView::Stretch);
}

QLineEdit* NameEdit(const QFileDialog& dialog)
{
    return dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
}
