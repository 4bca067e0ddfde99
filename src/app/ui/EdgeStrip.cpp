// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ui/EdgeStrip.h"

#include <QFocusEvent>
#include <QStyleOptionToolButton>
#include <QStylePainter>

#include <algorithm>

namespace {

/// A pointer on its way to something else does not open panels.
constexpr int kRestMs = 180;
constexpr int kPadding = 6;

} // namespace

CEdgeLabel::CEdgeLabel(const QString& text, Qt::ToolBarArea edge) : m_edge(edge)
{
    setText(text);
    setAccessibleName(text);
    setAutoRaise(true);
    setFocusPolicy(Qt::TabFocus);
}

bool CEdgeLabel::IsUpright() const
{
    return m_edge == Qt::LeftToolBarArea || m_edge == Qt::RightToolBarArea;
}

QSize CEdgeLabel::sizeHint() const
{
    const QSize flat = fontMetrics().size(Qt::TextSingleLine, text()) + QSize(4 * kPadding, kPadding);
    return IsUpright() ? flat.transposed() : flat;
}

void CEdgeLabel::paintEvent(QPaintEvent* /*event*/)
{
    QStylePainter painter(this);
    QStyleOptionToolButton option;
    initStyleOption(&option);
    option.text.clear();
    painter.drawComplexControl(QStyle::CC_ToolButton, option);
    QRect area = rect();
    if (IsUpright()) {
        const bool readsDown = m_edge == Qt::RightToolBarArea;
        painter.translate(readsDown ? width() : 0, readsDown ? 0 : height());
        painter.rotate(readsDown ? 90 : -90);
        area = area.transposed();
    }
    painter.setPen(palette().color(QPalette::ButtonText));
    painter.drawText(area, Qt::AlignCenter, text());
    if (hasFocus()) {
        QStyleOptionFocusRect focus;
        focus.initFrom(this);
        focus.rect = area.adjusted(2, 2, -2, -2);
        painter.drawPrimitive(QStyle::PE_FrameFocusRect, focus);
    }
}

void CEdgeLabel::enterEvent(QEnterEvent* event)
{
    m_rest.start(kRestMs, this);
    QToolButton::enterEvent(event);
}

void CEdgeLabel::leaveEvent(QEvent* event)
{
    m_rest.stop();
    QToolButton::leaveEvent(event);
}

void CEdgeLabel::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_rest.timerId()) {
        QToolButton::timerEvent(event);
        return;
    }
    m_rest.stop();
    Q_EMIT Approached();
}

void CEdgeLabel::focusInEvent(QFocusEvent* event)
{
    QToolButton::focusInEvent(event);
    if (event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason)
        Q_EMIT Approached();
}

CEdgeStrip::CEdgeStrip(const QString& title, Qt::ToolBarArea edge) : QToolBar(title), m_edge(edge)
{
    setObjectName(QStringLiteral("Edge%1").arg(static_cast<int>(edge)));
    setMovable(false);
    setFloatable(false);
    hide();
}

CEdgeLabel* CEdgeStrip::AddLabel(const QString& text)
{
    auto* label = new CEdgeLabel(text, m_edge);
    m_labels.emplaceBack(label, addWidget(label));
    show();
    return label;
}

void CEdgeStrip::RemoveLabel(CEdgeLabel* label)
{
    const auto found = std::ranges::find(m_labels, label, &std::pair<CEdgeLabel*, QAction*>::first);
    if (found == m_labels.end())
        return;
    removeAction(found->second);
    // The action owns the label, whose signal may be what led here.
    found->second->deleteLater();
    m_labels.erase(found);
    setVisible(!m_labels.isEmpty());
}
