// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/ui/AddTextDialog.h"

#include "canvas/PixoluneView.h"
#include "canvas/ui/FillBannerDialog.h"
#include "platform/settings/Settings.h"
#include "platform/ui/DialogPlacement.h"
#include "platform/ui/HelpPage.h"
#include "platform/ui/QtText.h"
#include "platform/ui/ThemedIcon.h"
#include "platform/ui/ValueControl.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDoubleValidator>
#include <QElapsedTimer>
#include <QFontComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QToolButton>

#include <algorithm>

namespace {

constexpr double kSizes[] = {6, 8, 9, 10, 11, 12, 14, 16, 18, 20, 24, 28, 32, 36, 48, 64, 72, 96, 144};
constexpr double kSmallestSize = 1;
constexpr double kLargestSize = 1000;

struct AlignmentRow {
    TextAlignment alignment;
    const char* icon;
    Str tip;
};
constexpr AlignmentRow kAlignments[] = {{TextAlignment::Left, "text-left", Str::TextLeft},
                                        {TextAlignment::Centre, "text-center", Str::TextCenter},
                                        {TextAlignment::Right, "text-right", Str::TextRight}};

QToolButton* ToggleButton(const char* icon, Str tip)
{
    auto* button = new QToolButton;
    button->setIcon(ThemedIcon(icon));
    button->setCheckable(true);
    button->setToolTip(ToQString(tip));
    button->setAccessibleName(ToQString(tip));
    return button;
}

CValueControl* NamedControl(const CValueControl::Range& range, int value, Str name)
{
    auto* control = new CValueControl(range, value);
    control->SetName(ToQString(name));
    return control;
}

} // namespace

CSettings& CAddTextDialog::SettingsOf(CPixoluneView& view)
{
    return view.Document().Services().settings;
}

void CAddTextDialog::SetUp()
{
    SetHelpPage(*this, QStringLiteral("tool-text"));
    setWindowTitle(ToQString(Str::AddText));
    m_preview.setSingleShot(true);
    connect(&m_preview, &QTimer::timeout, this, &CAddTextDialog::Preview);
    CreateControls();
    LayOut();
    m_text->setFocus();
}

void CAddTextDialog::CreateControls()
{
    const TextStyle& style = m_session.InitialStyle();
    m_font = new QFontComboBox;
    if (!style.family.empty())
        m_font->setCurrentFont(QFont(ToQString(style.family)));
    // A family that is missing has no row.
    if (!style.family.empty())
        m_font->setEditText(ToQString(style.family));
    m_size = new QComboBox;
    m_size->setEditable(true);
    m_size->setValidator(new QDoubleValidator(kSmallestSize, kLargestSize, 1, m_size));
    for (const double size : kSizes)
        m_size->addItem(locale().toString(size, 'f', 1));
    m_size->setCurrentText(locale().toString(style.size, 'f', 1));
    m_bold = ToggleButton("text-bold", Str::TextBold);
    m_italic = ToggleButton("text-italic", Str::TextItalic);
    m_underline = ToggleButton("text-underline", Str::TextUnderline);
    m_bold->setChecked(style.bold);
    m_italic->setChecked(style.italic);
    m_underline->setChecked(style.underline);
    auto* alignments = new QButtonGroup(this);
    for (size_t i = 0; i < std::size(kAlignments); ++i) {
        m_alignments[i] = ToggleButton(kAlignments[i].icon, kAlignments[i].tip);
        m_alignments[i]->setChecked(kAlignments[i].alignment == style.alignment);
        alignments->addButton(m_alignments[i]);
    }
    m_fill = ToggleButton("text-fill", Str::FillBanner);
    m_fill->setCheckable(false);
    m_line = NamedControl({0, 100, 10}, style.lineSpacing, Str::LineSpacing);
    m_character = NamedControl({-50, 100, 10}, style.characterSpacing, Str::CharacterSpacing);
    m_baseline = NamedControl({-500, 500, 0}, style.baseline, Str::BaselineShift);
    m_transparency =
        NamedControl({0, 255, 0}, m_settings.Get(Setting::TextBlendOpacity) & 255, Str::TextTransparency);
    m_vertical = new QCheckBox(ToQString(Str::TextVertical));
    m_smooth = new QCheckBox(ToQString(Str::SmoothEdge));
    m_vertical->setChecked(style.vertical);
    m_smooth->setChecked(style.smooth);
    m_text = new QPlainTextEdit;
    m_text->setAccessibleName(ToQString(Str::AddText));
    m_text->setTabChangesFocus(true);
    m_text->setMinimumHeight(m_text->fontMetrics().lineSpacing() * 6);
    m_text->setPlainText(ToQString(style.text));
    m_text->selectAll();
    m_note = new QLabel;

    connect(m_font, &QFontComboBox::currentFontChanged, this, &CAddTextDialog::SchedulePreview);
    connect(m_font, &QFontComboBox::editTextChanged, this, &CAddTextDialog::SchedulePreview);
    connect(m_size, &QComboBox::editTextChanged, this, &CAddTextDialog::SchedulePreview);
    for (QToolButton* button :
         {m_bold, m_italic, m_underline, m_alignments[0], m_alignments[1], m_alignments[2]})
        connect(button, &QToolButton::toggled, this, &CAddTextDialog::SchedulePreview);
    for (CValueControl* control : {m_line, m_character, m_baseline})
        connect(control, &CValueControl::ValueEdited, this, &CAddTextDialog::SchedulePreview);
    for (QCheckBox* box : {m_vertical, m_smooth})
        connect(box, &QCheckBox::toggled, this, &CAddTextDialog::SchedulePreview);
    connect(m_text, &QPlainTextEdit::textChanged, this, &CAddTextDialog::SchedulePreview);
    connect(m_fill, &QToolButton::clicked, this, &CAddTextDialog::ChooseFill);
    connect(m_transparency, &CValueControl::ValueEdited, this, [this](int value) {
        m_settings.Set(Setting::TextBlendOpacity, value);
        SchedulePreview();
    });
}

void CAddTextDialog::LayOut()
{
    const auto labelled = [](Str text, QWidget* buddy) {
        auto* label = new QLabel(ToQString(text));
        label->setBuddy(buddy);
        return label;
    };
    auto* font = new QHBoxLayout;
    font->addWidget(labelled(Str::TextFont, m_font));
    font->addWidget(m_font, 1);
    font->addWidget(labelled(Str::TextSize, m_size));
    font->addWidget(m_size);
    auto* style = new QHBoxLayout;
    for (QToolButton* button : {m_bold, m_italic, m_underline})
        style->addWidget(button);
    style->addSpacing(12);
    for (QToolButton* button : m_alignments)
        style->addWidget(button);
    style->addSpacing(12);
    style->addWidget(m_fill);
    style->addStretch();
    style->addWidget(m_vertical);
    style->addWidget(m_smooth);
    auto* values = new QGridLayout;
    values->addWidget(labelled(Str::TextLine, m_line), 0, 0);
    values->addWidget(m_line, 0, 1);
    values->addWidget(labelled(Str::TextBaseline, m_baseline), 0, 2);
    values->addWidget(m_baseline, 0, 3);
    values->addWidget(labelled(Str::TextCharacter, m_character), 1, 0);
    values->addWidget(m_character, 1, 1);
    values->addWidget(labelled(Str::TextTransparent, m_transparency), 1, 2);
    values->addWidget(m_transparency, 1, 3);
    values->setColumnStretch(1, 1);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::accepted, this, &CAddTextDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &CAddTextDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(font);
    layout->addLayout(style);
    layout->addLayout(values);
    layout->addWidget(m_text, 1);
    layout->addWidget(m_note);
    layout->addWidget(buttons);
}

void CAddTextDialog::showEvent(QShowEvent* event)
{
    QDialog::showEvent(event);
    MoveToCorner(*this);
}

TextStyle CAddTextDialog::Style() const
{
    TextStyle style = TextStyleFromSettings(m_settings);
    style.text = ToUtf8(m_text->toPlainText());
    style.family = ToUtf8(m_font->currentText());
    bool isNumber = false;
    const double size = locale().toDouble(m_size->currentText(), &isNumber);
    style.size = isNumber ? std::clamp(size, kSmallestSize, kLargestSize) : style.size;
    style.bold = m_bold->isChecked();
    style.italic = m_italic->isChecked();
    style.underline = m_underline->isChecked();
    for (size_t i = 0; i < std::size(kAlignments); ++i) {
        if (m_alignments[i]->isChecked())
            style.alignment = kAlignments[i].alignment;
    }
    style.lineSpacing = m_line->Value();
    style.characterSpacing = m_character->Value();
    style.baseline = m_baseline->Value();
    style.vertical = m_vertical->isChecked();
    style.smooth = m_smooth->isChecked();
    return style;
}

void CAddTextDialog::Preview()
{
    QElapsedTimer clock;
    clock.start();
    m_session.Preview(Style());
    constexpr qint64 kUnnoticedMs = 40;
    constexpr qint64 kLongestWaitMs = 600;
    const qint64 took = clock.elapsed();
    m_previewMs = took <= kUnnoticedMs ? 0 : static_cast<int>(std::min(took, kLongestWaitMs));
    m_note->setText(m_session.IsTooLarge()         ? ToQString(Str::TextIsTooLarge)
                    : m_session.UsesFallbackFont() ? ToQString(Str::FontIsMissing)
                                                   : QString());
}

void CAddTextDialog::ChooseFill()
{
    if (CFillBannerDialog(m_settings, this).exec() == QDialog::Accepted)
        SchedulePreview();
}

void CAddTextDialog::accept()
{
    m_preview.stop();
    Preview();
    if (m_session.IsTooLarge())
        return; // the note says why, and the text is not lost
    m_session.Ok(Style());
    QDialog::accept();
}

void CAddTextDialog::reject()
{
    m_preview.stop();
    m_session.Cancel();
    QDialog::reject();
}
