// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/settings/Settings.h"
#include "platform/strings/Strings.h"

#include <QFileDialog>

/// Asks for files to open or to add, with a preview of the one that was chosen last.
class COpenFilesDialog final : public QFileDialog {
    Q_OBJECT

public:
    COpenFilesDialog(Str title, const QStringList& filters, CSettings& settings, const QString& folder,
                     QWidget* parent);
};
