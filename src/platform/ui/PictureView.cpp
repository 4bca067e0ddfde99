// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ui/PictureView.h"

#include <QMouseEvent>
#include <QPainter>
#include <QStyle>

#include <algorithm>
#include <cmath>

namespace {

constexpr int kSquare = 8;
constexpr int kMostEnlarged = 4;
constexpr QColor kLight(255, 255, 255);
constexpr QColor kDark(212, 212, 212);

QPixmap Checkerboard()
{
    QPixmap tile(2 * kSquare, 2 * kSquare);
    tile.fill(kLight);
    QPainter painter(&tile);
    painter.fillRect(kSquare, 0, kSquare, kSquare, kDark);
    painter.fillRect(0, kSquare, kSquare, kSquare, kDark);
    return tile;
}

/// Reduced by any factor, enlarged by a whole number only.
double FittingScale(const QSizeF& picture, const QSizeF& view)
{
    const double scale = std::min(view.width() / picture.width(), view.height() / picture.height());
    return scale < 1 ? scale : std::min(std::floor(scale), static_cast<double>(kMostEnlarged));
}

/// The middle of a stretch that shows as much as it can; of the whole when all of it fits.
double ClampedMiddle(double middle, double length, double shown)
{
    return shown >= length ? length / 2 : std::clamp(middle, shown / 2, length - shown / 2);
}

} // namespace

CPictureView::CPictureView(Scaling scaling, QWidget* parent) : QWidget(parent), m_scaling(scaling)
{
    if (scaling == Scaling::Actual)
        setCursor(Qt::OpenHandCursor);
}

void CPictureView::SetImage(QImage image)
{
    const bool isNew = image.size() != m_image.size();
    m_image = std::move(image);
    m_text.clear();
    if (isNew)
        m_center = QPointF(m_image.width() / 2.0, m_image.height() / 2.0);
    update();
}

void CPictureView::SetText(const QString& text)
{
    m_image = {};
    m_text = text;
    update();
}

void CPictureView::SetCenter(const QPointF& center)
{
    m_center = center;
    update();
}

QPointF CPictureView::Clamped(QPointF center) const
{
    const QSizeF view = QSizeF(size()) * devicePixelRatioF();
    return {ClampedMiddle(center.x(), m_image.width(), view.width()),
            ClampedMiddle(center.y(), m_image.height(), view.height())};
}

QRectF CPictureView::Place(const QSizeF& view) const
{
    const QSizeF picture(m_image.size());
    if (m_scaling == Scaling::Fit) {
        const QSizeF shown = picture * FittingScale(picture, view);
        return {QPointF(std::floor((view.width() - shown.width()) / 2),
                        std::floor((view.height() - shown.height()) / 2)),
                shown};
    }
    const QPointF center = Clamped(m_center);
    return {QPointF(std::floor(view.width() / 2 - center.x()), std::floor(view.height() / 2 - center.y())),
            picture};
}

void CPictureView::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
    if (m_image.isNull()) {
        painter.setPen(palette().color(QPalette::WindowText));
        const int margin = style()->pixelMetric(QStyle::PM_LayoutLeftMargin);
        painter.drawText(rect().adjusted(margin, margin, -margin, -margin),
                         Qt::AlignCenter | Qt::TextWordWrap, m_text);
        return;
    }
    painter.setClipRect(rect().adjusted(1, 1, -1, -1));
    const qreal ratio = devicePixelRatioF();
    // The screen's own pixels, whatever the scale of the desktop.
    painter.setTransform(QTransform::fromScale(1 / ratio, 1 / ratio));
    const QRectF place = Place(QSizeF(size()) * ratio);
    painter.drawTiledPixmap(place, Checkerboard());
    painter.setRenderHint(QPainter::SmoothPixmapTransform, place.width() < m_image.width());
    painter.drawImage(place, m_image);
}

void CPictureView::mousePressEvent(QMouseEvent* event)
{
    if (m_scaling != Scaling::Actual || event->button() != Qt::LeftButton)
        return;
    m_center = Clamped(m_center);
    m_dragFrom = event->position();
    setCursor(Qt::ClosedHandCursor);
}

void CPictureView::mouseMoveEvent(QMouseEvent* event)
{
    if (!m_dragFrom)
        return;
    m_center = Clamped(m_center - (event->position() - *m_dragFrom) * devicePixelRatioF());
    m_dragFrom = event->position();
    update();
    Q_EMIT Dragged(m_center);
}

void CPictureView::mouseReleaseEvent(QMouseEvent* /*event*/)
{
    if (m_dragFrom)
        setCursor(Qt::OpenHandCursor);
    m_dragFrom.reset();
}
