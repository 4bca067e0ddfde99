// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ui/SlideOut.h"

#include "app/ui/EdgeStrip.h"
#include "app/ui/PanelDock.h"
#include "app/ui/PanelTitle.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMainWindow>
#include <QStyle>
#include <QVBoxLayout>
#include <QVariantAnimation>

namespace {

constexpr int kWatchMs = 150;
/// A pointer that strays for a moment does not lose the panel.
constexpr int kIdleChecks = 4;

} // namespace

CSlideOut::CSlideOut(QMainWindow& window)
    : QFrame(&window), m_window(window), m_motion(new QVariantAnimation(this))
{
    setFrameStyle(QFrame::StyledPanel | QFrame::Raised);
    setAutoFillBackground(true);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(1, 1, 1, 1);
    layout->setSpacing(0);
    m_motion->setStartValue(0.0);
    m_motion->setEndValue(1.0);
    connect(m_motion, &QVariantAnimation::valueChanged, this,
            [this](const QVariant& part) { setGeometry(Place(part.toReal())); });
    hide();
}

void CSlideOut::Show(CPanelDock& dock, CEdgeLabel& label, Qt::ToolBarArea edge)
{
    if (m_dock == &dock || !dock.widget())
        return;
    Retract();
    m_dock = &dock;
    m_label = &label;
    m_edge = edge;
    auto* title = new CPanelTitle(dock.windowTitle(), this);
    title->AddButton("pin", Str::PinPanel, [&dock] { Q_EMIT dock.PinRequested(true); });
    title->AddButton("panel-close", Str::HidePanel, [&dock] { Q_EMIT dock.HideRequested(); });
    m_title = title;
    layout()->addWidget(title);
    QWidget* panel = dock.widget();
    layout()->addWidget(panel);
    static_cast<QVBoxLayout*>(layout())->setStretchFactor(panel, 1);
    panel->show();

    m_idleChecks = 0;
    m_watch.start(kWatchMs, this);
    m_motion->setDuration(style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, this));
    setGeometry(Place(0));
    show();
    raise();
    m_motion->start();
}

void CSlideOut::Retract()
{
    if (!m_dock)
        return;
    m_motion->stop();
    m_watch.stop();
    const bool hadFocus = isAncestorOf(QApplication::focusWidget());
    hide();
    CPanelDock* dock = std::exchange(m_dock, nullptr);
    for (int i = layout()->count(); i-- > 0;) {
        QWidget* widget = layout()->itemAt(i)->widget();
        if (widget != m_title)
            dock->setWidget(widget);
    }
    // One of its buttons may be what led here.
    m_title->hide();
    layout()->removeWidget(m_title);
    m_title->deleteLater();
    m_title = nullptr;
    if (hadFocus)
        Q_EMIT FocusReturned();
}

void CSlideOut::TakeFocus()
{
    for (QWidget* next = nextInFocusChain(); next != this; next = next->nextInFocusChain()) {
        if (isAncestorOf(next) && next->isEnabled() && next->isVisible() && !m_title->isAncestorOf(next) &&
            (next->focusPolicy() & Qt::TabFocus)) {
            next->setFocus(Qt::TabFocusReason);
            return;
        }
    }
}

QRect CSlideOut::Place(qreal part) const
{
    // Bars and label stand outside the panel; docks may lie below it.
    const QWidget* strip = m_label->parentWidget();
    const QRect bar(strip->mapTo(&m_window, QPoint()), strip->size());
    const QSize wanted = m_dock->LastSize().expandedTo(minimumSizeHint());
    const int width = std::min(wanted.width(), m_window.width() * 3 / 4);
    const int height = std::min(wanted.height(), m_window.height() * 3 / 4);
    const auto shown = [part](int length) { return std::max(1, qRound(length * part)); };
    switch (m_edge) {
    case Qt::LeftToolBarArea:
        return {bar.right() + 1, bar.top(), shown(width), bar.height()};
    case Qt::TopToolBarArea:
        return {bar.left(), bar.bottom() + 1, bar.width(), shown(height)};
    case Qt::BottomToolBarArea:
        return {bar.left(), bar.top() - shown(height), bar.width(), shown(height)};
    default:
        return {bar.left() - shown(width), bar.top(), shown(width), bar.height()};
    }
}

bool CSlideOut::IsInUse() const
{
    if (QApplication::activePopupWidget() || QApplication::activeModalWidget())
        return true;
    const QPoint pointer = QCursor::pos();
    const auto holds = [&pointer](const QWidget& widget) {
        return QRect(widget.mapToGlobal(QPoint()), widget.size()).contains(pointer);
    };
    const QWidget* focus = QApplication::focusWidget();
    return holds(*this) || holds(*m_label) || focus == m_label || isAncestorOf(focus);
}

void CSlideOut::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_watch.timerId()) {
        QFrame::timerEvent(event);
        return;
    }
    if (m_motion->state() != QAbstractAnimation::Running)
        setGeometry(Place(1));
    m_idleChecks = IsInUse() ? 0 : m_idleChecks + 1;
    if (m_idleChecks >= kIdleChecks)
        Retract();
}

void CSlideOut::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
        Retract();
    else
        QFrame::keyPressEvent(event);
}
