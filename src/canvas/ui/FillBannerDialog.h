// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/transform/ColourFill.h"

#include <QDialog>

class CColorButton;
class CSettings;
class QButtonGroup;
class QLabel;
class QRadioButton;

/// "Fill Banner": how the letters of a text are coloured, singly or by one of five gradients. Starts from
/// the settings; OK stores the choice there.
class CFillBannerDialog final : public QDialog {
    Q_OBJECT

public:
    explicit CFillBannerDialog(CSettings& settings, QWidget* parent);

    void accept() override;

private:
    void ShowChoice();
    /// The gradient whose button is pressed, 1 to 5.
    [[nodiscard]] int GradientMode() const;

    CSettings& m_settings;
    QRadioButton* m_single;
    QRadioButton* m_gradient;
    QButtonGroup* m_modes;
    QLabel* m_modeLabel;
    CColorButton* m_singleColor;
    CColorButton* m_firstColor;
    CColorButton* m_secondColor;
};
