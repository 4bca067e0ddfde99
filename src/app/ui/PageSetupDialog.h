// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/ui/PageSetup.h"

#include <QDialog>

#include <array>

class QCheckBox;
class QComboBox;
class QDoubleSpinBox;
class QRadioButton;
class QSpinBox;

/// Paper, orientation, margins, and how the frame stands on the page.
class CPageSetupDialog final : public QDialog {
    Q_OBJECT

public:
    explicit CPageSetupDialog(const PageSetup& setup, QWidget* parent);

    [[nodiscard]] PageSetup Setup() const;

private:
    [[nodiscard]] QWidget* CreatePaper(const PageSetup& setup);
    [[nodiscard]] QWidget* CreateMargins(const PageSetup& setup);
    [[nodiscard]] QWidget* CreateScale(const PageSetup& setup);
    [[nodiscard]] QWidget* CreatePosition(const PageSetup& setup);

    QComboBox* m_paper;
    QRadioButton* m_portrait;
    QRadioButton* m_landscape;
    std::array<QDoubleSpinBox*, 4> m_margins; ///< left, top, right, bottom
    QRadioButton* m_fitsPage;
    QRadioButton* m_actualSize;
    QSpinBox* m_resolution;
    QCheckBox* m_centered;
    std::array<QDoubleSpinBox*, 2> m_offset;
};
