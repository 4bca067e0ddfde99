// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ui/NewImageDialog.h"

#include "platform/settings/Settings.h"
#include "platform/ui/ColorButton.h"
#include "platform/ui/QtText.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QRadioButton>
#include <QSpinBox>

CNewImageDialog::CNewImageDialog(CSettings& settings, QWidget* parent)
    : QDialog(parent), m_settings(settings), m_width(new QSpinBox), m_height(new QSpinBox),
      m_simpleColor(new QRadioButton(ToQString(Str::SimpleColor))),
      m_transparent(new QRadioButton(ToQString(Str::Transparent))), m_color(new CColorButton)
{
    setWindowTitle(ToQString(Str::NewImage));

    auto* dimension = new QGroupBox(ToQString(Str::ImageDimension));
    auto* sizes = new QFormLayout(dimension);
    const struct {
        QSpinBox* edit;
        Str label;
        Setting setting;
    } rows[] = {{m_width, Str::Width, Setting::NewImageWidth},
                {m_height, Str::Height, Setting::NewImageHeight}};
    for (const auto& row : rows) {
        row.edit->setRange(1, 2000);
        row.edit->setValue(settings.Get(row.setting));
        row.edit->setAccelerated(true);
        sizes->addRow(ToQString(row.label), row.edit);
    }

    auto* appearance = new QGroupBox(ToQString(Str::Appearance));
    auto* choices = new QGridLayout(appearance);
    choices->addWidget(m_simpleColor, 0, 0);
    choices->addWidget(m_color, 0, 1);
    choices->addWidget(m_transparent, 1, 0);
    choices->setColumnStretch(0, 1);
    m_color->SetColor(settings.Get(Setting::InitColor));
    m_color->setAccessibleName(ToQString(Str::SimpleColor));
    connect(m_simpleColor, &QRadioButton::toggled, m_color, &QWidget::setEnabled);
    m_transparent->setChecked(settings.IsOn(Setting::InitTransparent));
    m_simpleColor->setChecked(!settings.IsOn(Setting::InitTransparent));
    m_color->setEnabled(m_simpleColor->isChecked());

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(dimension);
    layout->addWidget(appearance);
    layout->addStretch();
    layout->addWidget(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    m_width->selectAll();
}

void CNewImageDialog::accept()
{
    m_settings.Set(Setting::NewImageWidth, m_width->value());
    m_settings.Set(Setting::NewImageHeight, m_height->value());
    m_settings.Set(Setting::InitTransparent, m_transparent->isChecked());
    m_settings.Set(Setting::InitColor, m_color->Color());
    QDialog::accept();
}
