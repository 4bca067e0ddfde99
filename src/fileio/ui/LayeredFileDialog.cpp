// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/ui/LayeredFileDialog.h"

#include "platform/ui/QtText.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QGroupBox>
#include <QLabel>
#include <QRadioButton>
#include <QVBoxLayout>

CLayeredFileDialog::CLayeredFileDialog(const LayeredFileChoice& choice, QWidget* parent)
    : QDialog(parent), m_asObjects(new QRadioButton(ToQString(Str::ImportLayersAsObjects))),
      m_asOnePicture(new QRadioButton(ToQString(Str::ImportCompositeAsImage))),
      m_showAgain(new QCheckBox(ToQString(Str::ShowTipNextTime)))
{
    setWindowTitle(ToQString(Str::OpenPsdFile));
    auto* text = new QLabel(ToQString(Str::PsdConsistsOfLayers));
    text->setWordWrap(true);
    text->setMinimumWidth(text->fontMetrics().averageCharWidth() * 60);
    (choice.asOnePicture ? m_asOnePicture : m_asObjects)->setChecked(true);
    m_showAgain->setChecked(choice.showAgain);

    auto* layers = new QGroupBox(ToQString(Str::Layers));
    auto* layersLayout = new QVBoxLayout(layers);
    layersLayout->addWidget(m_asObjects);
    layersLayout->addWidget(m_asOnePicture);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(text);
    if (choice.simplifiesLayers) {
        auto* note = new QLabel(ToQString(Str::ObjectsSimplifyLayers));
        note->setObjectName("note");
        note->setWordWrap(true);
        layout->addWidget(note);
    }
    layout->addWidget(layers);
    layout->addWidget(m_showAgain);
    layout->addWidget(buttons);
}

LayeredFileChoice CLayeredFileDialog::Choice() const
{
    return {m_asOnePicture->isChecked(), m_showAgain->isChecked(), false};
}
