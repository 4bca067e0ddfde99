// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>

class CColorButton;
class CKeyboardPage;
class CSettings;
class CShortcuts;
class QRadioButton;
class QSpinBox;

/// Edits the settings that belong to no tool: history limit, layered PSD files, export background; and the
/// keys of the commands on a page of their own.
class CPreferencesDialog final : public QDialog {
    Q_OBJECT

public:
    CPreferencesDialog(CSettings& settings, CShortcuts& shortcuts, QWidget* parent);

    void accept() override;

private:
    QWidget* CreateGeneralPage();

    CSettings& m_settings;
    CShortcuts& m_shortcuts;
    QSpinBox* m_undoLevels;
    QRadioButton* m_layersAsObjects;
    QRadioButton* m_compositeAsFrame;
    CColorButton* m_background;
    CKeyboardPage* m_keyboard;
};
