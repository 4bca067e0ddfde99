// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageops/ui/ResizeDialog.h"

#include "platform/settings/Settings.h"
#include "platform/ui/Mnemonics.h"
#include "platform/ui/QtText.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QRadioButton>
#include <QSpinBox>

CResizeDialog::CResizeDialog(CSettings& settings, Size entry, QWidget* parent)
    : QDialog(parent), m_settings(settings), m_entry(entry),
      m_pixelWidth(AddEdit(&CSizeEntry::SetPixelWidth, m_entry.PixelWidthRange(), Str::Width)),
      m_pixelHeight(AddEdit(&CSizeEntry::SetPixelHeight, m_entry.PixelHeightRange(), Str::Height)),
      m_percentWidth(AddEdit(&CSizeEntry::SetPercentWidth, m_entry.PercentWidthRange(), Str::Width)),
      m_percentHeight(AddEdit(&CSizeEntry::SetPercentHeight, m_entry.PercentHeightRange(), Str::Height)),
      m_preserve(new QCheckBox(ToQString(Str::PreserveRatio)))
{
    setWindowTitle(ToQString(Str::ResizeImage));
    m_preserve->setChecked(settings.IsOn(Setting::KeepAspectWhenResizing));

    auto* group = new QGroupBox(ToQString(Str::NewSize));
    auto* grid = new QGridLayout(group);
    Mnemonics mnemonics;
    auto* pixels = new QRadioButton(WithMnemonic(ToQString(Str::Pixels), mnemonics));
    auto* percentage = new QRadioButton(WithMnemonic(ToQString(Str::Percentage), mnemonics));
    m_preserve->setText(WithMnemonic(m_preserve->text(), mnemonics));
    const struct {
        QRadioButton* unit;
        QSpinBox* width;
        QSpinBox* height;
        const char* suffix;
    } columns[] = {{pixels, m_pixelWidth, m_pixelHeight, ""},
                   {percentage, m_percentWidth, m_percentHeight, " %"}};
    int column = 0;
    for (const auto& unit : columns) {
        grid->addWidget(unit.unit, 0, column, 1, 2);
        int line = 1;
        for (QSpinBox* edit : {unit.width, unit.height}) {
            auto* label = new QLabel(WithMnemonic(edit->accessibleName(), mnemonics));
            label->setBuddy(edit);
            grid->addWidget(label, line, column);
            grid->addWidget(edit, line++, column + 1);
            edit->setSuffix(QLatin1String(unit.suffix));
            edit->setEnabled(false);
            connect(unit.unit, &QRadioButton::toggled, edit, &QWidget::setEnabled);
        }
        column += 2;
    }
    pixels->setChecked(true);
    grid->addWidget(m_preserve, 3, 0, 1, 4);
    grid->setHorizontalSpacing(12);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(group);
    layout->addWidget(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    ShowValues();
    m_pixelWidth->setFocus();
    m_pixelWidth->selectAll();
}

QSpinBox* CResizeDialog::AddEdit(Setter set, const CSizeEntry::Range& range, Str name)
{
    auto* edit = new QSpinBox(this);
    edit->setRange(range.minimum, range.maximum);
    edit->setAccelerated(true);
    edit->setAccessibleName(ToQString(name));
    connect(edit, &QSpinBox::valueChanged, this, [this, set](int value) {
        if (m_showing)
            return;
        (m_entry.*set)(value, m_preserve->isChecked() ? RatioChoice::Preserve : RatioChoice::Free);
        ShowValues();
    });
    return edit;
}

void CResizeDialog::ShowValues()
{
    m_showing = true;
    m_pixelWidth->setValue(m_entry.Pixels().width);
    m_pixelHeight->setValue(m_entry.Pixels().height);
    m_percentWidth->setValue(m_entry.Percent().width);
    m_percentHeight->setValue(m_entry.Percent().height);
    m_showing = false;
}

void CResizeDialog::accept()
{
    m_settings.Set(Setting::KeepAspectWhenResizing, m_preserve->isChecked());
    QDialog::accept();
}
