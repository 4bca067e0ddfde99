// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "fileio/SaveAs.h"

#include <QFileDialog>

class CSaveAsPanel;
class CSavePreview;

/// The Save dialog of one format with its option panel and what the options lead to. OK copies the panel's
/// values into the settings.
class CSaveAsDialog final : public QFileDialog {
    Q_OBJECT

public:
    /// name: proposed, without an ending; may be empty.
    CSaveAsDialog(const SaveFormatRow& format, CSettings& settings, const CObjectCanvas& canvas,
                  const QString& folder, const QString& name, QWidget* parent);

    [[nodiscard]] const SaveAsOptions& Options() const { return m_options; }

protected:
    void done(int result) override;

private:
    void ShowPreview();

    CSettings& m_settings;
    CSaveAsPanel* m_panel = nullptr;
    CSavePreview* m_preview = nullptr;
    SaveAsOptions m_options;
};
