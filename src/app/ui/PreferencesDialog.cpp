// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ui/PreferencesDialog.h"

#include "app/ui/Help.h"
#include "app/ui/KeyboardPage.h"
#include "platform/settings/Settings.h"
#include "platform/ui/ColorButton.h"
#include "platform/ui/HelpPage.h"
#include "platform/ui/QtText.h"

#include <QDialogButtonBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QRadioButton>
#include <QSpinBox>
#include <QTabWidget>

CPreferencesDialog::CPreferencesDialog(CSettings& settings, CShortcuts& shortcuts, QWidget* parent)
    : QDialog(parent), m_settings(settings), m_shortcuts(shortcuts), m_undoLevels(new QSpinBox),
      m_layersAsObjects(new QRadioButton(ToQString(Str::ImportLayersAsObjects))),
      m_compositeAsFrame(new QRadioButton(ToQString(Str::ImportCompositeAsFrame))),
      m_background(new CColorButton), m_keyboard(new CKeyboardPage(shortcuts))
{
    setWindowTitle(ToQString(Str::Preferences));

    auto* pages = new QTabWidget;
    pages->addTab(CreateGeneralPage(), ToQString(Str::GeneralPage));
    SetHelpPage(*m_keyboard, QStringLiteral("preferences-keyboard"));
    pages->addTab(m_keyboard, ToQString(Str::KeyboardPage));

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(pages);
    layout->addWidget(buttons);
}

QWidget* CPreferencesDialog::CreateGeneralPage()
{
    m_undoLevels->setRange(1, 1000);
    m_undoLevels->setAccelerated(true);
    m_undoLevels->setValue(m_settings.Get(Setting::UndoMaxTimes));
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
    const bool composite = m_settings.Get(Setting::PSDOpenFashion) == 1;
    m_compositeAsFrame->setChecked(composite);
    m_layersAsObjects->setChecked(!composite);

    auto* background = new QGroupBox(ToQString(Str::DefaultBackgroundColor));
    auto* note = new QLabel(ToQString(Str::DefaultBackgroundColorNote));
    note->setWordWrap(true);
    note->setMinimumHeight(note->fontMetrics().lineSpacing() * 3);
    m_background->SetColor(m_settings.Get(Setting::DefaultBackgroundColor));
    m_background->setAccessibleName(ToQString(Str::DefaultBackgroundColor));
    auto* backgroundLayout = new QVBoxLayout(background);
    backgroundLayout->addWidget(note);
    backgroundLayout->addWidget(m_background, 0, Qt::AlignLeft);

    auto* page = new QWidget;
    auto* layout = new QVBoxLayout(page);
    layout->addLayout(undo);
    layout->addWidget(psd);
    layout->addWidget(background);
    layout->addStretch();
    return page;
}

void CPreferencesDialog::accept()
{
    m_settings.Set(Setting::UndoMaxTimes, m_undoLevels->value());
    m_settings.Set(Setting::PSDOpenFashion, m_compositeAsFrame->isChecked());
    m_settings.Set(Setting::DefaultBackgroundColor, m_background->Color());
    m_shortcuts = m_keyboard->Shortcuts();
    QDialog::accept();
}
