// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/ui/FillBannerDialog.h"

#include "platform/settings/Settings.h"
#include "platform/ui/ColorButton.h"
#include "platform/ui/QtPicture.h"
#include "platform/ui/QtText.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QDialogButtonBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QRadioButton>
#include <QToolButton>

namespace {

constexpr int kSwatch = 32;

constexpr Str kModeTips[] = {Str::FillLeftToRight, Str::FillTopToBottom, Str::FillDiagonal,
                             Str::FillOtherDiagonal, Str::FillFromCenter};

/// What a gradient looks like, from black to white.
QIcon SwatchOf(int mode)
{
    CPackedDib coverage = CPackedDib::Create(kSwatch, kSwatch, 8);
    std::ranges::fill(coverage.Bits(), uint8_t{255});
    return QPixmap::fromImage(ToQImage(ColourCoverage(coverage, {0x000000, 0xFFFFFF, mode})));
}

} // namespace

CFillBannerDialog::CFillBannerDialog(CSettings& settings, QWidget* parent)
    : QDialog(parent), m_settings(settings), m_single(new QRadioButton(ToQString(Str::SingleColor))),
      m_gradient(new QRadioButton(ToQString(Str::Gradient))), m_modes(new QButtonGroup(this)),
      m_modeLabel(new QLabel(ToQString(Str::FillMode))), m_singleColor(new CColorButton),
      m_firstColor(new CColorButton), m_secondColor(new CColorButton)
{
    setWindowTitle(ToQString(Str::FillBanner));
    const int mode = settings.Get(Setting::BannerFillMode);
    auto* modes = new QHBoxLayout;
    for (int i = 1; i <= 5; ++i) {
        auto* button = new QToolButton;
        button->setIcon(SwatchOf(i));
        button->setIconSize({kSwatch, kSwatch});
        button->setCheckable(true);
        button->setChecked(i == mode);
        const QString tip = ToQString(kModeTips[i - 1]);
        button->setToolTip(tip);
        button->setAccessibleName(tip);
        m_modes->addButton(button, i);
        modes->addWidget(button);
    }
    const struct {
        CColorButton* button;
        Setting setting;
        Str name;
    } colors[] = {{m_singleColor, Setting::BannerSingleColor, Str::SingleColor},
                  {m_firstColor, Setting::BannerGradientColor1, Str::GradientFirstColor},
                  {m_secondColor, Setting::BannderGradientColor2, Str::GradientSecondColor}};
    auto* colorRow = new QHBoxLayout;
    for (const auto& color : colors) {
        color.button->SetColor(settings.Get(color.setting));
        color.button->setAccessibleName(ToQString(color.name));
        color.button->setToolTip(ToQString(color.name));
        colorRow->addWidget(color.button);
    }
    colorRow->addStretch();

    auto* fill = new QGroupBox(ToQString(Str::Fill));
    auto* fillLayout = new QVBoxLayout(fill);
    auto* choice = new QHBoxLayout;
    choice->addWidget(m_single);
    choice->addWidget(m_gradient);
    choice->addStretch();
    fillLayout->addLayout(choice);
    fillLayout->addLayout(colorRow);
    fillLayout->addWidget(m_modeLabel);
    fillLayout->addLayout(modes);
    (mode == 0 ? m_single : m_gradient)->setChecked(true);
    connect(m_single, &QRadioButton::toggled, this, &CFillBannerDialog::ShowChoice);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(fill);
    layout->addStretch();
    layout->addWidget(buttons);
    // The size that shows everything, so that choosing does not move the buttons.
    ShowChoice();
    setMinimumSize(sizeHint());
}

int CFillBannerDialog::GradientMode() const
{
    return m_modes->checkedId() < 1 ? 1 : m_modes->checkedId();
}

void CFillBannerDialog::ShowChoice()
{
    const bool gradient = m_gradient->isChecked();
    if (gradient)
        m_modes->button(GradientMode())->setChecked(true);
    for (QAbstractButton* button : m_modes->buttons())
        button->setVisible(gradient);
    m_modeLabel->setVisible(gradient);
    m_firstColor->setVisible(gradient);
    m_secondColor->setVisible(gradient);
    m_singleColor->setVisible(!gradient);
}

void CFillBannerDialog::accept()
{
    m_settings.Set(Setting::BannerFillMode, m_gradient->isChecked() ? GradientMode() : 0);
    m_settings.Set(Setting::BannerSingleColor, m_singleColor->Color());
    m_settings.Set(Setting::BannerGradientColor1, m_firstColor->Color());
    m_settings.Set(Setting::BannderGradientColor2, m_secondColor->Color());
    QDialog::accept();
}
