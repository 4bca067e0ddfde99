// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/ui/SaveAsPanel.h"

#include "platform/ui/ColorButton.h"
#include "platform/ui/QtText.h"
#include "platform/ui/ValueControl.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QRadioButton>
#include <QSpinBox>

#include <algorithm>

CSaveAsPanel::CSaveAsPanel(SavePanel kind, const CSettings& settings, Size canvas, QWidget* parent)
    : QWidget(parent), m_layout(new QVBoxLayout(this))
{
    static constexpr Choice kTiff[] = {
        {Str::TiffNone, 1},        {Str::TiffGroup3, 3}, {Str::TiffGroup4, 4},       {Str::TiffLzw, 5},
        {Str::TiffDeflate, 32946}, {Str::TiffJpeg, 7},   {Str::TiffAdobeDeflate, 8},
    };
    static constexpr auto kValueOf = [](DibFormat format) { return static_cast<int>(format); };
    static constexpr Choice kBmp[] = {
        {Str::BmpBlackAndWhite, kValueOf(DibFormat::BlackAndWhite)},
        {Str::Bmp16Colors, kValueOf(DibFormat::Colors16)},
        {Str::Bmp256Colors, kValueOf(DibFormat::Colors256)},
        {Str::BmpHighColors, kValueOf(DibFormat::HighColors)},
        {Str::BmpTrueColors, kValueOf(DibFormat::TrueColors)},
        {Str::Bmp16Grays, kValueOf(DibFormat::Grays16)},
        {Str::Bmp256Grays, kValueOf(DibFormat::Grays256)},
    };
    m_layout->setContentsMargins(0, 0, 0, 0);
    bool hasFillColor = true;
    switch (kind) {
    case SavePanel::Jpg:
        AddQuality(settings.Get(Setting::JPGQuality));
        break;
    case SavePanel::Tiff:
        AddChoices(
            Str::Compression, kTiff, settings.Get(Setting::TIFFEncodeMode),
            [](CSettings& kept, SaveAsOptions&, int value) { kept.Set(Setting::TIFFEncodeMode, value); });
        break;
    case SavePanel::Bmp:
        AddChoices(Str::BmpColors, kBmp, kValueOf(DibFormat::TrueColors),
                   [](CSettings&, SaveAsOptions& options, int value) {
                       options.bmpColors = static_cast<DibFormat>(value);
                   });
        break;
    case SavePanel::Tga: {
        auto* options = new QVBoxLayout(AddGroup(Str::TgaEncoding));
        AddCheckBox(*options, Str::TgaRle, Setting::TGAEncodingRLE, settings);
        AddCheckBox(*options, Str::TgaBottomUp, Setting::BottomUpOrientation, settings);
        break;
    }
    case SavePanel::FillColor:
        break;
    case SavePanel::Gif:
        AddCheckBox(*m_layout, Str::GifInterlace, Setting::Interlace, settings);
        hasFillColor = false;
        break;
    case SavePanel::HotSpot:
        AddHotSpot(canvas);
        hasFillColor = false;
        break;
    case SavePanel::None:
        hasFillColor = false;
        break;
    }
    if (hasFillColor)
        AddFillColor(settings.Get(Setting::DefaultBackgroundColor));
}

void CSaveAsPanel::Store(CSettings& settings, SaveAsOptions& options) const
{
    for (const Take& take : m_takes)
        take(settings, options);
}

void CSaveAsPanel::AddQuality(int quality)
{
    auto* control = new CValueControl({1, 100, 10}, std::clamp(quality, 1, 100));
    control->SetName(ToQString(Str::JpgQualityName));
    auto* label = new QLabel(ToQString(Str::JpgQuality));
    label->setBuddy(control);
    auto* row = new QHBoxLayout;
    row->addWidget(label);
    row->addWidget(new QLabel(ToQString(Str::BestCompression)));
    row->addWidget(control, 1);
    row->addWidget(new QLabel(ToQString(Str::BestQuality)));
    m_layout->addLayout(row);
    connect(control, &CValueControl::ValueEdited, this, &CSaveAsPanel::Changed);
    m_takes.emplace_back([control, quality](CSettings& settings, SaveAsOptions&) {
        // A stored value below the range stays unless it was changed.
        if (control->Value() != std::clamp(quality, 1, 100))
            settings.Set(Setting::JPGQuality, control->Value());
    });
}

QGroupBox* CSaveAsPanel::AddGroup(Str title)
{
    auto* group = new QGroupBox(ToQString(title));
    m_layout->addWidget(group);
    return group;
}

void CSaveAsPanel::AddCheckBox(QVBoxLayout& layout, Str text, Setting setting, const CSettings& settings)
{
    auto* box = new QCheckBox(ToQString(text));
    box->setChecked(settings.IsOn(setting));
    layout.addWidget(box);
    connect(box, &QCheckBox::toggled, this, &CSaveAsPanel::Changed);
    m_takes.emplace_back(
        [box, setting](CSettings& kept, SaveAsOptions&) { kept.Set(setting, box->isChecked()); });
}

void CSaveAsPanel::AddChoices(Str title, std::span<const Choice> choices, int current,
                              std::function<void(CSettings&, SaveAsOptions&, int)> take)
{
    constexpr int kColumns = 4;
    auto* grid = new QGridLayout(AddGroup(title));
    auto* group = new QButtonGroup(this);
    int index = 0;
    for (const Choice& choice : choices) {
        auto* button = new QRadioButton(ToQString(choice.text));
        button->setChecked(choice.value == current);
        group->addButton(button, choice.value);
        grid->addWidget(button, index / kColumns, index % kColumns);
        ++index;
    }
    connect(group, &QButtonGroup::idClicked, this, &CSaveAsPanel::Changed);
    m_takes.emplace_back([group, take = std::move(take)](CSettings& settings, SaveAsOptions& options) {
        take(settings, options, group->checkedId());
    });
}

void CSaveAsPanel::AddFillColor(int32_t color)
{
    auto* button = new CColorButton;
    button->SetColor(color);
    auto* label = new QLabel(ToQString(Str::FillColor));
    label->setBuddy(button);
    auto* row = new QHBoxLayout;
    row->addWidget(label);
    row->addWidget(button);
    row->addStretch();
    m_layout->addLayout(row);
    connect(button, &CColorButton::ColorEdited, this, &CSaveAsPanel::Changed);
    m_takes.emplace_back([button](CSettings& settings, SaveAsOptions&) {
        settings.Set(Setting::DefaultBackgroundColor, button->Color());
    });
}

void CSaveAsPanel::AddHotSpot(Size canvas)
{
    const auto spin = [](int size) {
        auto* box = new QSpinBox;
        box->setRange(0, std::max(0, size - 1));
        return box;
    };
    auto* x = spin(canvas.width);
    auto* y = spin(canvas.height);
    auto* row = new QHBoxLayout;
    row->addWidget(new QLabel(ToQString(Str::DefineHotSpot)));
    const struct {
        Str text;
        QSpinBox* box;
    } parts[] = {{Str::HotSpotX, x}, {Str::HotSpotY, y}};
    for (const auto& part : parts) {
        auto* label = new QLabel(ToQString(part.text));
        label->setBuddy(part.box);
        row->addWidget(label);
        row->addWidget(part.box);
    }
    row->addStretch();
    m_layout->addLayout(row);
    m_takes.emplace_back([x, y](CSettings&, SaveAsOptions& options) {
        options.hotSpot = {x->value(), y->value()};
    });
}
