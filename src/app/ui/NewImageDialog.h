// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>

class CColorButton;
class CSettings;
class QRadioButton;
class QSpinBox;

/// Asks for size and appearance of a new picture. Starts from the settings; OK stores all four back.
class CNewImageDialog final : public QDialog {
    Q_OBJECT

public:
    CNewImageDialog(CSettings& settings, QWidget* parent);

    void accept() override;

private:
    CSettings& m_settings;
    QSpinBox* m_width;
    QSpinBox* m_height;
    QRadioButton* m_simpleColor;
    QRadioButton* m_transparent;
    CColorButton* m_color;
};
