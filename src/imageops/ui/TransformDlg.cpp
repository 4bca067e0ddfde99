// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageops/ui/TransformDlg.h"

#include "imageops/ui/AngleChooser.h"
#include "platform/ui/DialogPlacement.h"
#include "platform/ui/QtText.h"
#include "platform/ui/ValueControl.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QSpinBox>

CTransformDlg::CTransformDlg(CPixoluneDoc& document, const TransformRow& transform, QWidget* window)
    : QDialog(window), m_session(document, transform), m_preview(new QCheckBox)
{
    setWindowTitle(ToQString(transform.title));

    auto* group = new QGroupBox(ToQString(transform.group));
    auto* grid = new QGridLayout(group);
    int row = 0;
    for (const TransformParameter& parameter : transform.parameters) {
        if (parameter.choices.empty())
            AddSlider(parameter, *grid, row++);
        else
            AddChooser(parameter, *grid, row++);
    }

    m_preview->setText(WithMnemonic(ToQString(Str::Preview), m_mnemonics));
    m_preview->setChecked(true);
    connect(m_preview, &QCheckBox::toggled, this, &CTransformDlg::Preview);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* bottom = new QHBoxLayout;
    bottom->addWidget(m_preview);
    bottom->addStretch();
    bottom->addWidget(buttons);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(group);
    layout->addLayout(bottom);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    if (auto* number = findChild<QSpinBox*>(); number && number->isEnabled()) {
        number->setFocus();
        number->selectAll();
    }
}

void CTransformDlg::AddSlider(const TransformParameter& parameter, QGridLayout& grid, int row)
{
    const QString name = ToQString(parameter.label);
    auto* control =
        new CValueControl({parameter.minimum, parameter.maximum, parameter.tick}, parameter.initial);
    control->SetName(name);
    auto* label = new QLabel(WithMnemonic(name, m_mnemonics));
    label->setBuddy(control);
    grid.addWidget(label, row, 0);
    grid.addWidget(control, row, 1);
    connect(control, &CValueControl::ValueCommitted, this, &CTransformDlg::Preview);
    m_values.emplace_back([control] { return control->Value(); });
}

void CTransformDlg::AddChooser(const TransformParameter& parameter, QGridLayout& grid, int row)
{
    m_chooser = new CAngleChooser(parameter, m_mnemonics);
    QWidget* framed = m_chooser;
    if (parameter.choicesTitle) {
        auto* box = new QGroupBox(ToQString(*parameter.choicesTitle));
        (new QVBoxLayout(box))->addWidget(m_chooser);
        framed = box;
    }
    grid.addWidget(framed, row, 0, 1, 2);
    connect(m_chooser, &CAngleChooser::ValueCommitted, this, &CTransformDlg::Preview);
    m_values.emplace_back([chooser = m_chooser] { return chooser->Value(); });
}

void CTransformDlg::Choose(std::optional<int> value)
{
    if (m_chooser)
        m_chooser->Choose(value);
}

std::vector<int> CTransformDlg::Values() const
{
    std::vector<int> values;
    for (const auto& value : m_values)
        values.push_back(value());
    return values;
}

void CTransformDlg::Preview()
{
    if (m_preview->isChecked())
        m_session.Preview(Values());
    else
        m_session.ShowInitial();
}

void CTransformDlg::accept()
{
    const bool recorded = m_session.Ok(Values());
    done(recorded ? Accepted : Rejected);
}

void CTransformDlg::reject()
{
    m_session.Cancel();
    QDialog::reject();
}

void CTransformDlg::showEvent(QShowEvent* event)
{
    QDialog::showEvent(event);
    MoveToCorner(*this);
}
