// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ui/PreferencesDialog.h"

#include "platform/settings/Settings.h"
#include "platform/ui/ColorButton.h"
#include "platform/ui/QtText.h"

#include <QDialogButtonBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QRadioButton>
#include <QSpinBox>

CPreferencesDialog::CPreferencesDialog(CSettings& settings, QWidget* parent)
    : QDialog(parent), m_settings(settings), m_undoLevels(new QSpinBox),
      m_layersAsObjects(new QRadioButton(ToQString(Str::ImportLayersAsObjects))),
      m_compositeAsFrame(new QRadioButton(ToQString(Str::ImportCompositeAsFrame))),
      m_background(new CColorButton)
{
    setWindowTitle(ToQString(Str::Preferences));

    m_undoLevels->setRange(1, 1000);
    m_undoLevels->setAccelerated(true);
    m_undoLevels->setValue(settings.Get(Setting::UndoMaxTimes));
    m_undoLevels->setAccessibleName(ToQString(Str::LevelsOfUndoRedo));
    auto* undo = new QHBoxLayout;
    undo->addWidget(new QLabel(ToQString(Str::Maintain)));
    undo->addWidget(m_undoLevels);
    undo->addWidget(new QLabel(ToQString(Str::LevelsOfUndoRedo)));
    undo->addStretch();

    auto* psd = new QGroupBox(ToQString(Str::HandlingPsdLayers));
    auto* psdLayout = new QVBoxLayout(psd);
    psdLayout->addWidget(m_layersAsObjects);
    psdLayout->addWidget(m_compositeAsFrame);
    const bool composite = settings.Get(Setting::PSDOpenFashion) == 1;
    m_compositeAsFrame->setChecked(composite);
    m_layersAsObjects->setChecked(!composite);

    auto* background = new QGroupBox(ToQString(Str::DefaultBackgroundColor));
    auto* note = new QLabel(ToQString(Str::DefaultBackgroundColorNote));
    note->setWordWrap(true);
    note->setMinimumHeight(note->fontMetrics().lineSpacing() * 3);
    m_background->SetColor(settings.Get(Setting::DefaultBackgroundColor));
    m_background->setAccessibleName(ToQString(Str::DefaultBackgroundColor));
    auto* backgroundLayout = new QVBoxLayout(background);
    backgroundLayout->addWidget(note);
    backgroundLayout->addWidget(m_background, 0, Qt::AlignLeft);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(undo);
    layout->addWidget(psd);
    layout->addWidget(background);
    layout->addStretch();
    layout->addWidget(buttons);
}

void CPreferencesDialog::accept()
{
    m_settings.Set(Setting::UndoMaxTimes, m_undoLevels->value());
    m_settings.Set(Setting::PSDOpenFashion, m_compositeAsFrame->isChecked());
    m_settings.Set(Setting::DefaultBackgroundColor, m_background->Color());
    QDialog::accept();
}
