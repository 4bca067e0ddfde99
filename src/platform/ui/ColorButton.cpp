// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ui/ColorButton.h"

#include "platform/ui/QtPicture.h"
#include "platform/ui/QtText.h"

#include <QColorDialog>
#include <QGridLayout>
#include <QMenu>
#include <QStyleOptionButton>
#include <QStylePainter>
#include <QToolButton>
#include <QWidgetAction>

#include <array>

namespace {

constexpr int kColumns = 8;
constexpr int kSwatch = 20;

/// Greys, then one hue a column from light to dark; 0xrrggbb as people read them.
constexpr std::array<uint32_t, 40> kEverydayColors = {
    0x000000, 0x333333, 0x555555, 0x808080, 0xA6A6A6, 0xC8C8C8, 0xE6E6E6, 0xFFFFFF, //
    0xF8B4B4, 0xFBD5A5, 0xFDF3A8, 0xC9EDB0, 0xADE8E0, 0xB3D4FC, 0xC9BDF7, 0xF5BDE6, //
    0xF05252, 0xF59E2C, 0xF7DC3B, 0x66C23A, 0x26BFB0, 0x2F80ED, 0x7C5CE0, 0xD946B5, //
    0xC81E1E, 0xC2700C, 0xBFA10A, 0x3F8F1E, 0x0F8378, 0x1459B3, 0x5230B8, 0xA11A82, //
    0x771D1D, 0x6E3E06, 0x695804, 0x24530F, 0x084B45, 0x0A3266, 0x2D1A69, 0x5C0F4A,
};

QIcon Swatch(const QColor& color, const QWidget& widget)
{
    const qreal ratio = widget.devicePixelRatioF();
    QPixmap pixmap(QSize(kSwatch, kSwatch) * ratio);
    pixmap.setDevicePixelRatio(ratio);
    pixmap.fill(color);
    QPainter painter(&pixmap);
    painter.setPen(QColor(0, 0, 0, 70));
    painter.drawRect(QRectF(0.5, 0.5, kSwatch - 1, kSwatch - 1));
    return pixmap;
}

} // namespace

CColorButton::CColorButton(QWidget* parent) : QPushButton(parent)
{
    connect(this, &QPushButton::clicked, this, &CColorButton::ShowPalette);
    SetColor(0);
}

void CColorButton::SetColor(int32_t colorRef)
{
    m_color = colorRef;
    setAccessibleDescription(ToQColor(colorRef).name());
    update();
}

QSize CColorButton::sizeHint() const
{
    return {72, QPushButton::sizeHint().height()};
}

void CColorButton::paintEvent(QPaintEvent* /*event*/)
{
    QStylePainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    painter.drawControl(QStyle::CE_PushButtonBevel, option);
    const QRect swatch =
        style()->subElementRect(QStyle::SE_PushButtonContents, &option, this).adjusted(2, 2, -2, -2);
    if (isEnabled())
        painter.fillRect(swatch, ToQColor(m_color));
    painter.setPen(palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::Mid));
    painter.drawRect(swatch.adjusted(0, 0, -1, -1));
    if (hasFocus()) {
        QStyleOptionFocusRect focus;
        focus.initFrom(this);
        focus.rect = style()->subElementRect(QStyle::SE_PushButtonFocusRect, &option, this);
        painter.drawPrimitive(QStyle::PE_FrameFocusRect, focus);
    }
}

void CColorButton::ShowPalette()
{
    QMenu menu(this);
    auto* swatches = new QWidget(&menu);
    auto* grid = new QGridLayout(swatches);
    grid->setContentsMargins(6, 6, 6, 6);
    grid->setSpacing(2);
    for (size_t i = 0; i < kEverydayColors.size(); ++i) {
        const QColor color(kEverydayColors[i]);
        auto* button = new QToolButton(swatches);
        button->setAutoRaise(true);
        button->setIconSize({kSwatch, kSwatch});
        button->setIcon(Swatch(color, *this));
        button->setToolTip(color.name());
        button->setAccessibleName(color.name());
        connect(button, &QToolButton::clicked, &menu, [this, &menu, color] {
            menu.close();
            Edit(ToColorRef(color));
        });
        grid->addWidget(button, static_cast<int>(i) / kColumns, static_cast<int>(i) % kColumns);
    }
    auto* action = new QWidgetAction(&menu);
    action->setDefaultWidget(swatches);
    menu.addAction(action);
    menu.addSeparator();
    menu.addAction(ToQString(Str::MoreColors), this, &CColorButton::ChooseFreely);
    menu.exec(mapToGlobal(QPoint(0, height())));
}

void CColorButton::ChooseFreely()
{
    const QColor color = QColorDialog::getColor(ToQColor(m_color), this);
    if (color.isValid())
        Edit(ToColorRef(color));
}

void CColorButton::Edit(int32_t colorRef)
{
    if (colorRef == m_color)
        return;
    SetColor(colorRef);
    Q_EMIT ColorEdited(colorRef);
}
