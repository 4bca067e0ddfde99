// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "fileio/SaveLosses.h"
#include "fileio/TrialSave.h"
#include "platform/ui/LatestJob.h"

#include <QTimer>
#include <QWidget>

class CPictureView;
class QLabel;

/// What a save with the chosen options gives: the picture before and after at its actual size, the length of
/// the file, and a line about what the file will not keep. The save is tried beside the window, a moment
/// after the last change.
class CSavePreview final : public QWidget {
    Q_OBJECT

public:
    /// panel: the options, which are taken in beside the pictures.
    CSavePreview(const CObjectCanvas& canvas, const SaveFormatRow& format, QWidget* panel,
                 QWidget* parent = nullptr);

    void Show(const CSettings& settings, const SaveAsOptions& options);

Q_SIGNALS:
    /// What Show asked for is seen.
    void Shown();

private:
    /// The flattened picture. One worker at a time reads it, the window never.
    struct Frame {
        CObjectCanvas canvas;
        PictureFacts facts;
        bool hasPixelFacts = false;
    };
    struct Outcome {
        std::optional<TrialSave> trial;
        QImage after;
        std::string losses;
    };

    void Try();
    void ShowOutcome(const Outcome& outcome);

    const SaveFormatRow& m_format;
    std::shared_ptr<Frame> m_frame;
    CSettings m_settings;
    SaveAsOptions m_options;
    CPictureView* m_before;
    CPictureView* m_after;
    QLabel* m_size;
    QLabel* m_warning;
    QLabel* m_losses;
    QTimer m_pause;
    CLatestJob<Outcome> m_job;
};
