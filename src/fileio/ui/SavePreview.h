// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "fileio/SaveLosses.h"
#include "fileio/TrialSave.h"
#include "platform/ui/LatestJob.h"

#include <QImage>
#include <QTimer>
#include <QWidget>

#include <memory>
#include <optional>
#include <vector>

class CPictureView;
class QLabel;

/// What a save with the chosen options gives: the picture before and after at its actual size, or the frames
/// of an animation in turns, the length of the file, and a line about what the file will not keep. The save
/// is tried beside the window, a moment after the last change.
class CSavePreview final : public QWidget {
    Q_OBJECT

public:
    /// canvas: one that CanShow. panel: the options, which are taken in beside the pictures.
    CSavePreview(const CObjectCanvas& canvas, const SaveFormatRow& format, QWidget* panel,
                 QWidget* parent = nullptr);

    /// False for an animation that is too long to be saved by way of trial.
    [[nodiscard]] static bool CanShow(const CObjectCanvas& canvas, const SaveFormatRow& format);

    void Show(const CSettings& settings, const SaveAsOptions& options);

Q_SIGNALS:
    /// What Show asked for is seen.
    void Shown();

private:
    /// What is saved: the flattened picture, or every frame of an animation as an object. One worker at a
    /// time reads it, the window never.
    struct Frame {
        CObjectCanvas canvas;
        PictureFacts facts;
        bool hasPixelFacts = false;
    };
    struct Outcome {
        std::optional<TrialSave> trial;
        std::vector<QImage> after;
        std::string losses;
    };

    void TakeCanvas(const CObjectCanvas& canvas);
    void Try();
    void ShowPictures();
    void ShowOutcome(Outcome outcome);

    const SaveFormatRow& m_format;
    std::shared_ptr<Frame> m_frame;
    CSettings m_settings;
    SaveAsOptions m_options;
    std::vector<QImage> m_picturesBefore;
    std::vector<QImage> m_picturesAfter; ///< of the last trial; empty when it failed
    size_t m_shown = 0;
    CPictureView* m_before;
    CPictureView* m_after;
    QLabel* m_size;
    QLabel* m_warning;
    QLabel* m_losses;
    QTimer m_pause;
    QTimer m_steps;
    CLatestJob<Outcome> m_job;
};
