// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageops/ui/AngleChooser.h"

#include "platform/ui/QtText.h"
#include "platform/ui/ValueControl.h"

#include <QGridLayout>
#include <QLabel>
#include <QRadioButton>

CAngleChooser::CAngleChooser(const TransformParameter& parameter, Mnemonics& mnemonics, QWidget* parent)
    : QWidget(parent), m_choices(parameter.choices),
      m_value(new CValueControl({parameter.minimum, parameter.maximum, 0}, parameter.initial))
{
    constexpr int kColumns = 2;
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    int cell = 0;
    for (const TransformChoice& choice : m_choices) {
        auto* button = new QRadioButton(WithMnemonic(ToQString(choice.label), mnemonics));
        m_buttons.push_back(button);
        connect(button, &QRadioButton::toggled, this, [this, &choice](bool on) {
            if (on)
                Take(choice);
        });
        // The number stands in the same row.
        cell += choice.value ? 0 : cell % kColumns;
        grid->addWidget(button, cell / kColumns, cell % kColumns);
        ++cell;
    }
    const QString name = ToQString(parameter.label);
    auto* label = new QLabel(WithMnemonic(name, mnemonics));
    label->setBuddy(m_value);
    m_value->SetName(name);
    auto* angle = new QHBoxLayout;
    angle->addWidget(label);
    angle->addWidget(m_value);
    grid->addLayout(angle, cell / kColumns, cell % kColumns);
    connect(m_value, &CValueControl::ValueCommitted, this, &CAngleChooser::ValueCommitted);

    const QSignalBlocker quiet(this);
    Choose(parameter.initial);
}

int CAngleChooser::Value() const
{
    return m_value->Value();
}

void CAngleChooser::Choose(std::optional<int> value)
{
    const auto choice = std::ranges::find(m_choices, value, &TransformChoice::value);
    const auto index = static_cast<size_t>(choice - m_choices.begin());
    if (index < m_buttons.size())
        m_buttons[index]->setChecked(true);
}

void CAngleChooser::Take(const TransformChoice& choice)
{
    m_value->setEnabled(!choice.value);
    if (!choice.value)
        return;
    m_value->SetValue(*choice.value);
    Q_EMIT ValueCommitted(*choice.value);
}
