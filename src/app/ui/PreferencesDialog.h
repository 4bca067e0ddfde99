// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>

class CColorButton;
class CSettings;
class QRadioButton;
class QSpinBox;

/// Edits the settings that belong to no tool: history limit, layered PSD files, export background.
class CPreferencesDialog final : public QDialog {
    Q_OBJECT

public:
    CPreferencesDialog(CSettings& settings, QWidget* parent);

    void accept() override;

private:
    CSettings& m_settings;
    QSpinBox* m_undoLevels;
    QRadioButton* m_layersAsObjects;
    QRadioButton* m_compositeAsFrame;
    CColorButton* m_background;
};
