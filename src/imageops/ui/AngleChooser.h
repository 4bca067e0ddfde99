// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "imageops/TransformTable.h"
#include "platform/ui/Mnemonics.h"

#include <QWidget>

class CValueControl;
class QRadioButton;

/// A button for each of the usual values and one for any other, which is then typed.
class CAngleChooser final : public QWidget {
    Q_OBJECT

public:
    /// parameter: one with choices.
    CAngleChooser(const TransformParameter& parameter, Mnemonics& mnemonics, QWidget* parent = nullptr);

    [[nodiscard]] int Value() const;
    /// Presses the button of the value, as the user would; none: the one for any other.
    void Choose(std::optional<int> value);

Q_SIGNALS:
    void ValueCommitted(int value);

private:
    void Take(const TransformChoice& choice);

    std::span<const TransformChoice> m_choices;
    std::vector<QRadioButton*> m_buttons;
    CValueControl* m_value;
};
