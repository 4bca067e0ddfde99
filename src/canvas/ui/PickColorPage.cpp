// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/ui/PickColorPage.h"

#include "platform/ui/QtText.h"

#include <QGridLayout>
#include <QLabel>
#include <QPainter>

namespace {

constexpr int kSwatch = 64;

/// The colour over a checkerboard, or that alone.
QPixmap Swatch(const QColor& color, qreal ratio)
{
    QPixmap pixmap(QSize(kSwatch, kSwatch) * ratio);
    pixmap.setDevicePixelRatio(ratio);
    pixmap.fill(Qt::white);
    QPainter painter(&pixmap);
    constexpr int kCell = kSwatch / 8;
    for (int y = 0; y < kSwatch; y += kCell) {
        for (int x = y % (2 * kCell); x < kSwatch; x += 2 * kCell)
            painter.fillRect(x, y, kCell, kCell, Qt::lightGray);
    }
    painter.fillRect(0, 0, kSwatch, kSwatch, color);
    return pixmap;
}

} // namespace

CPickColorPage::CPickColorPage(QWidget* parent) : QWidget(parent), m_swatch(new QLabel)
{
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    constexpr Str kLabels[] = {Str::Red, Str::Green, Str::Blue, Str::PickedTransparency};
    for (int i = 0; i < 4; ++i) {
        const QString name = ToQString(kLabels[i]);
        auto* field = m_fields[static_cast<size_t>(i)] = new QLabel;
        field->setAccessibleName(name);
        field->setAlignment(Qt::AlignRight);
        field->setMinimumWidth(field->fontMetrics().horizontalAdvance(QStringLiteral("0000")));
        grid->addWidget(new QLabel(name), i, 0);
        grid->addWidget(field, i, 1);
    }
    m_swatch->setFrameShape(QFrame::StyledPanel);
    grid->addWidget(m_swatch, 0, 2, 4, 1, Qt::AlignRight | Qt::AlignVCenter);
    grid->setColumnStretch(2, 1);
    ShowPixel(0);
}

void CPickColorPage::ShowPixel(uint32_t pixel)
{
    const int alpha = static_cast<int>(pixel >> 24);
    for (int i = 0; i < 3; ++i) {
        const int channel = static_cast<int>(pixel >> (16 - 8 * i) & 255);
        m_fields[static_cast<size_t>(i)]->setText(alpha > 0 ? QString::number(channel) : QString());
    }
    m_fields[3]->setText(QString::number(255 - alpha));
    m_swatch->setPixmap(Swatch(QColor::fromRgba(pixel), devicePixelRatioF()));
}
