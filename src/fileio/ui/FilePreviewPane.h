// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "fileio/FilePreview.h"
#include "platform/settings/Settings.h"
#include "platform/strings/Strings.h"
#include "platform/ui/LatestJob.h"

#include <QImage>
#include <QTimer>
#include <QWidget>

#include <vector>

class CPictureView;
class QCheckBox;
class QLabel;

/// What an open dialog shows of the chosen file: its picture, or its animation, and what is in it. The file
/// is read beside the window, a moment after it was chosen. Two boxes switch the preview and the playing of
/// animations; their settings take the state at once.
class CFilePreviewPane final : public QWidget {
    Q_OBJECT

public:
    explicit CFilePreviewPane(CSettings& settings, QWidget* parent = nullptr);

    /// An empty path and one of a folder show nothing.
    void Show(const QString& path);

Q_SIGNALS:
    /// The file asked for is shown, or that it cannot be.
    void Shown();

private:
    struct Outcome {
        FilePreview preview;
        std::vector<QImage> pictures;
    };

    QCheckBox* AddBox(Str text, Setting setting);
    void Read();
    void ShowOutcome(Outcome outcome);
    void ShowNothing();
    void PlayOrStop();
    void Step();

    CSettings& m_settings;
    QString m_path;
    CPictureView* m_view;
    QLabel* m_facts;
    QCheckBox* m_showPreview;
    QCheckBox* m_play;
    std::vector<QImage> m_pictures;
    size_t m_shown = 0;
    QTimer m_pause;
    QTimer m_steps;
    CLatestJob<Outcome> m_job;
};
