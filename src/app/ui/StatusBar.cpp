// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ui/StatusBar.h"

#include <QCoreApplication>
#include <QLabel>
#include <QProgressBar>

namespace {

constexpr int kRepaintMs = 60;

} // namespace

CStatusBar::CStatusBar(QWidget* parent)
    : QStatusBar(parent), m_prompt(new QLabel(this)), m_progress(new QProgressBar(this)),
      m_dragged(new QLabel(this)), m_pointer(new QLabel(this)), m_size(new QLabel(this)),
      m_zoom(new QLabel(this))
{
    m_prompt->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_progress->setMaximumSize(160, fontMetrics().height());
    m_progress->setTextVisible(false);
    addWidget(m_prompt, 1);
    addPermanentWidget(m_progress);
    m_progress->hide();
    addPermanentWidget(m_dragged);

    const struct {
        QLabel* label;
        QLatin1String widest;
    } panes[] = {{m_pointer, QLatin1String(" x=-8888 y=-8888 ")},
                 {m_size, QLatin1String(" 88888 x 88888 ")},
                 {m_zoom, QLatin1String(" 100% ")}};
    for (const auto& pane : panes) {
        pane.label->setMinimumWidth(fontMetrics().horizontalAdvance(pane.widest));
        addPermanentWidget(pane.label);
    }
    m_lastPaint.start();
}

void CStatusBar::SetPrompt(const QString& text)
{
    m_prompt->setText(text);
}

void CStatusBar::SetProgress(int percent)
{
    const bool busy = percent > 0 && percent < 100;
    m_progress->setValue(percent);
    if (busy != m_progress->isVisibleTo(this)) {
        m_progress->setVisible(busy);
        m_lastPaint.restart();
    } else if (busy && m_lastPaint.hasExpired(kRepaintMs) && isVisible()) {
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        m_lastPaint.restart();
    }
}

void CStatusBar::SetPointerText(const QString& text)
{
    m_pointer->setText(text);
}

void CStatusBar::SetDraggedRectText(const QString& text)
{
    m_dragged->setText(text);
}

void CStatusBar::SetCanvas(Size size, int zoom)
{
    m_size->setText(QStringLiteral("%1 x %2").arg(size.width).arg(size.height));
    m_zoom->setText(zoom > 0 ? QStringLiteral("%1%").arg(zoom * 100) : QStringLiteral("1/%1").arg(-zoom));
}

void CStatusBar::ClearCanvas()
{
    m_dragged->clear();
    m_pointer->clear();
    m_size->clear();
    m_zoom->clear();
}

QString CStatusBar::Prompt() const
{
    return m_prompt->text();
}

QString CStatusBar::PointerText() const
{
    return m_pointer->text();
}

QString CStatusBar::DraggedRectText() const
{
    return m_dragged->text();
}
