// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageops/ui/PropertiesDialog.h"

#include "document/PanelOperations.h"
#include "platform/ui/DialogPlacement.h"
#include "platform/ui/QtText.h"
#include "platform/ui/ValueControl.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>

namespace {

/// A number below the others of a form.
CValueControl* AddNumber(QFormLayout& form, Str label, const CValueControl::Range& range, int value,
                         Mnemonics& mnemonics)
{
    auto* control = new CValueControl(range, value);
    const QString name = ToQString(label);
    control->SetName(name);
    form.addRow(WithMnemonic(name, mnemonics), control);
    return control;
}

} // namespace

CPropertiesDialog::CPropertiesDialog(CPixoluneDoc& document, Ref<CPicObject> object, QWidget* window)
    : QDialog(window), m_session(document, std::move(object)), m_entry(m_session.EntrySize()),
      m_name(new QLineEdit), m_visible(new QCheckBox), m_lock(new QCheckBox), m_unit(new QComboBox),
      m_preserveRatio(new QCheckBox)
{
    setWindowTitle(ToQString(Str::Properties));
    const CPicObject& shown = m_session.Object();
    Mnemonics mnemonics;

    m_name->setMaxLength(static_cast<int>(kMaxNameCharacters));
    m_name->setText(shown.image ? ToQString(shown.image->name) : QString());
    m_name->setEnabled(shown.image != nullptr);
    connect(m_name, &QLineEdit::textEdited, this,
            [this](const QString& text) { m_session.SetName(ToUtf8(text)); });
    m_visible->setText(WithMnemonic(ToQString(Str::Visible), mnemonics));
    m_visible->setChecked(shown.visible);
    connect(m_visible, &QCheckBox::toggled, this, [this](bool on) { m_session.SetVisible(on); });

    auto* form = new QFormLayout;
    form->addRow(WithMnemonic(ToQString(Str::ObjectName), mnemonics), m_name);
    form->addRow(QString(), new QLabel(ToQString(Str::ObjectNameLimit)));
    m_transparency = AddNumber(*form, Str::TransparencyLabel, {0, 255, 0}, shown.transparency, mnemonics);
    connect(m_transparency, &CValueControl::ValueEdited, this,
            [this](int value) { m_session.SetTransparency(static_cast<uint8_t>(value)); });
    form->addRow(QString(), m_visible);

    auto* groups = new QHBoxLayout;
    groups->addWidget(CreateLocation(mnemonics));
    groups->addWidget(CreateDimension(mnemonics));
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addLayout(groups);
    layout->addWidget(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);
}

QWidget* CPropertiesDialog::CreateLocation(Mnemonics& mnemonics)
{
    const CPicObject& shown = m_session.Object();
    auto* group = new QGroupBox(ToQString(Str::Location));
    auto* form = new QFormLayout(group);
    constexpr CValueControl::Range kRange{CPropertiesSession::kMinPosition, CPropertiesSession::kMaxPosition,
                                          0};
    m_place = {AddNumber(*form, Str::Left, kRange, shown.x, mnemonics),
               AddNumber(*form, Str::Top, kRange, shown.y, mnemonics)};
    // What is not edited may lie outside the range and stays there.
    connect(m_place[0], &CValueControl::ValueEdited, this, [this](int x) {
        m_session.SetPosition({x, m_session.Object().y});
    });
    connect(m_place[1], &CValueControl::ValueEdited, this, [this](int y) {
        m_session.SetPosition({m_session.Object().x, y});
    });

    m_lock->setText(WithMnemonic(ToQString(Str::Lock), mnemonics));
    form->addRow(m_lock);
    connect(m_lock, &QCheckBox::toggled, this, [this](bool on) {
        m_session.SetLocked(on);
        EnablePlace();
    });
    const QSignalBlocker quiet(m_lock);
    m_lock->setChecked(shown.locked);
    EnablePlace();
    return group;
}

void CPropertiesDialog::EnablePlace()
{
    for (CValueControl* control : m_place)
        control->setEnabled(!m_lock->isChecked());
}

QWidget* CPropertiesDialog::CreateDimension(Mnemonics& mnemonics)
{
    auto* group = new QGroupBox(ToQString(Str::Dimension));
    auto* form = new QFormLayout(group);
    m_size = {AddNumber(*form, Str::Width, {}, 0, mnemonics),
              AddNumber(*form, Str::Height, {}, 0, mnemonics)};
    for (const Side side : {Side::Width, Side::Height}) {
        CValueControl* control = m_size[static_cast<size_t>(side)];
        connect(control, &CValueControl::ValueEdited, this, [this, side](int value) { Edit(side, value); });
        connect(control, &CValueControl::ValueCommitted, this, &CPropertiesDialog::ApplySize);
    }
    m_unit->addItems({ToQString(Str::Pixels), ToQString(Str::Percentage)});
    form->addRow(WithMnemonic(ToQString(Str::Unit), mnemonics), m_unit);
    connect(m_unit, &QComboBox::currentIndexChanged, this, &CPropertiesDialog::ShowUnit);
    m_preserveRatio->setText(WithMnemonic(ToQString(Str::PreserveObjectRatio), mnemonics));
    m_preserveRatio->setChecked(true);
    form->addRow(m_preserveRatio);
    ShowUnit();
    return group;
}

bool CPropertiesDialog::IsPercent() const
{
    return m_unit->currentIndex() == 1;
}

void CPropertiesDialog::Edit(Side side, int value)
{
    constexpr void (CSizeEntry::*kSetters[2][2])(int, RatioChoice) = {
        {&CSizeEntry::SetPixelWidth, &CSizeEntry::SetPixelHeight},
        {&CSizeEntry::SetPercentWidth, &CSizeEntry::SetPercentHeight}};
    const auto set = kSetters[IsPercent()][static_cast<size_t>(side)];
    (m_entry.*set)(value, m_preserveRatio->isChecked() ? RatioChoice::Preserve : RatioChoice::Free);
    const Size shown = IsPercent() ? m_entry.Percent() : m_entry.Pixels();
    // Only the other one: this one may be under the user's hands.
    if (side == Side::Width)
        m_size[1]->SetValue(shown.height);
    else
        m_size[0]->SetValue(shown.width);
}

void CPropertiesDialog::ShowUnit()
{
    const CSizeEntry::Range ranges[2][2] = {{m_entry.PixelWidthRange(), m_entry.PixelHeightRange()},
                                            {m_entry.PercentWidthRange(), m_entry.PercentHeightRange()}};
    const Size shown = IsPercent() ? m_entry.Percent() : m_entry.Pixels();
    for (size_t i = 0; i < m_size.size(); ++i) {
        const CSizeEntry::Range& range = ranges[IsPercent()][i];
        m_size[i]->SetRange(range.minimum, range.maximum);
        m_size[i]->SetValue(i == 0 ? shown.width : shown.height);
    }
}

void CPropertiesDialog::ApplySize()
{
    m_session.SetSize(m_entry.Pixels());
}

void CPropertiesDialog::accept()
{
    ApplySize();
    m_session.Ok();
    QDialog::accept();
}

void CPropertiesDialog::reject()
{
    m_session.Cancel();
    QDialog::reject();
}

void CPropertiesDialog::showEvent(QShowEvent* event)
{
    QDialog::showEvent(event);
    MoveToCorner(*this);
}
