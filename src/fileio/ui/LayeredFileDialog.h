// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/ui/UserInterface.h"

#include <QDialog>

class QCheckBox;
class QRadioButton;

/// "Open PSD File...": whether the layers of a file become objects or its merged picture one object.
class CLayeredFileDialog final : public QDialog {
    Q_OBJECT

public:
    CLayeredFileDialog(const LayeredFileChoice& choice, QWidget* parent);

    [[nodiscard]] LayeredFileChoice Choice() const;

private:
    QRadioButton* m_asObjects;
    QRadioButton* m_asOnePicture;
    QCheckBox* m_showAgain;
};
