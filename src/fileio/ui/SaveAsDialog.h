// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "fileio/SaveAs.h"

#include <QFileDialog>

class CSaveAsPanel;

/// The Save dialog of one format with its option panel. OK copies the panel's values into the settings.
class CSaveAsDialog final : public QFileDialog {
    Q_OBJECT

public:
    /// name: proposed, without an ending; may be empty.
    CSaveAsDialog(const SaveFormatRow& format, CSettings& settings, Size canvas, const QString& folder,
                  const QString& name, QWidget* parent);

    [[nodiscard]] const SaveAsOptions& Options() const { return m_options; }

protected:
    void done(int result) override;

private:
    CSettings& m_settings;
    CSaveAsPanel* m_panel = nullptr;
    SaveAsOptions m_options;
};

/// A filter as the file dialogs of the toolkit want it: "Name|*.a;*.b||" becomes "Name (*.a *.b)".
[[nodiscard]] QString ToDialogFilter(std::string_view filter);
