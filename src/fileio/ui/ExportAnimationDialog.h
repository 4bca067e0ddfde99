// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "fileio/AnimationExport.h"
#include "platform/settings/Settings.h"

#include <QFileDialog>
#include <QImage>
#include <QTimer>

#include <vector>

class CPictureView;
class QButtonGroup;
class QGroupBox;
class QLabel;
class QSpinBox;

/// Asks for the file that the visible objects go to as frames, and how they play, which is shown.
class CExportAnimationDialog final : public QFileDialog {
    Q_OBJECT

public:
    /// The canvas stays as it is meanwhile. name: proposed, without an ending; may be empty.
    CExportAnimationDialog(const CObjectCanvas& canvas, const CSettings& settings, const QString& folder,
                           const QString& name, QWidget* parent);

    [[nodiscard]] AnimationOptions Options() const;

private:
    QWidget* CreatePanel(const AnimationOptions& options);
    QWidget* CreatePaletteBox();
    void OnFilterSelected(const QString& filter);
    void OnDelayChanged();
    void ShowFrame(size_t index);

    CAnimationFrames m_frames;
    std::vector<QImage> m_pictures; ///< reduced frames, made when they are seen first
    size_t m_shown = 0;
    QTimer m_steps;
    QSpinBox* m_plays = nullptr;
    QSpinBox* m_delay = nullptr;
    QGroupBox* m_paletteBox = nullptr;
    QButtonGroup* m_palette = nullptr;
    QLabel* m_length = nullptr;
    CPictureView* m_view = nullptr;
};
