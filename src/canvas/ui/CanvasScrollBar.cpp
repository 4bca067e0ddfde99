// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/ui/CanvasScrollBar.h"

#include <QPainter>

#include <cmath>

namespace {

/// Styles draw the outline of a slider so far beyond its rectangle.
constexpr int kOutline = 1;

} // namespace

QRect CCanvasScrollBar::SliderRect(const QStyleOptionSlider& option) const
{
    return style()
        ->subControlRect(QStyle::CC_ScrollBar, &option, QStyle::SC_ScrollBarSlider, this)
        .adjusted(-kOutline, -kOutline, kOutline, kOutline);
}

QPixmap CCanvasScrollBar::Draw(QStyleOptionSlider option, QStyle::SubControls parts, const QRect& rect) const
{
    QPixmap picture(rect.size() * devicePixelRatioF());
    picture.setDevicePixelRatio(devicePixelRatioF());
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.translate(-rect.topLeft());
    option.subControls = parts;
    style()->drawComplexControl(QStyle::CC_ScrollBar, &option, &painter, this);
    return picture;
}

void CCanvasScrollBar::paintEvent(QPaintEvent* event)
{
    QStyleOptionSlider option;
    initStyleOption(&option);
    const qreal ratio = devicePixelRatioF();
    // Parts light up under the pointer, some bars fade away, and pictures between two pixels would blur.
    if (underMouse() || isSliderDown() || ratio != std::floor(ratio) ||
        style()->styleHint(QStyle::SH_ScrollBar_Transient, &option, this) != 0) {
        QScrollBar::paintEvent(event);
        return;
    }
    const Look look{
        style(),        size(), option.state, palette().cacheKey(), ratio, option.maximum - option.minimum,
        option.pageStep};
    if (look != m_look || m_slider.size() != SliderRect(option).size() * ratio) {
        m_groove = Draw(option, ~QStyle::SubControls(QStyle::SC_ScrollBarSlider), rect());
        m_slider = Draw(option, QStyle::SC_ScrollBarSlider, SliderRect(option));
        m_look = look;
    }
    QPainter painter(this);
    painter.drawPixmap(rect().topLeft(), m_groove);
    // The outline ends where the groove does.
    painter.setClipRect(
        style()->subControlRect(QStyle::CC_ScrollBar, &option, QStyle::SC_ScrollBarGroove, this));
    painter.drawPixmap(SliderRect(option).topLeft(), m_slider);
}
