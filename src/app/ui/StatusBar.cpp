// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ui/StatusBar.h"

#include "platform/ui/QtText.h"

#include <QCoreApplication>
#include <QEvent>
#include <QLabel>
#include <QPainter>
#include <QProgressBar>

#include <utility>

namespace {

constexpr int kRepaintMs = 60;

} // namespace

/// A line of text that gives way to the panes beside it and says so with dots.
class CPromptLabel final : public QLabel {
public:
    explicit CPromptLabel(QWidget* parent) : QLabel(parent)
    {
        setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    }

protected:
    void paintEvent(QPaintEvent* /*event*/) override
    {
        QPainter painter(this);
        painter.setPen(palette().color(foregroundRole()));
        painter.drawText(rect(), Qt::AlignVCenter | Qt::AlignLeft,
                         fontMetrics().elidedText(text(), Qt::ElideRight, width()));
    }
};

CStatusBar::CStatusBar(QWidget* parent)
    : QStatusBar(parent), m_prompt(new CPromptLabel(this)), m_progress(new QProgressBar(this)),
      m_pointer(new QLabel(this)), m_dragged(new QLabel(this)), m_size(new QLabel(this)),
      m_zoom(new QLabel(this))
{
    m_progress->setTextVisible(false);
    m_progress->setAccessibleName(ToQString(Str::ProgressPane));
    addWidget(m_prompt, 1);
    addPermanentWidget(m_progress);
    m_progress->hide();
    const struct {
        QLabel* label;
        Str name;
    } panes[] = {{m_pointer, Str::PointerPane},
                 {m_dragged, Str::DraggedRectPane},
                 {m_size, Str::CanvasSizePane},
                 {m_zoom, Str::ZoomPane}};
    for (const auto& pane : panes) {
        pane.label->setToolTip(ToQString(pane.name));
        pane.label->setAccessibleDescription(pane.label->toolTip());
        addPermanentWidget(pane.label);
    }
    FitPanes();
}

/// Panes do not change their widths with every number, and take what is wider than usual all the same.
void CStatusBar::FitPanes()
{
    const struct {
        QLabel* label;
        QLatin1String usual;
    } panes[] = {{m_pointer, QLatin1String(" x=-8888 y=-8888 ")},
                 {m_dragged, QLatin1String("888 x 888 at x=888 y=888")},
                 {m_size, QLatin1String(" 8888 x 8888 ")},
                 {m_zoom, QLatin1String(" 800% ")}};
    for (const auto& pane : panes)
        pane.label->setMinimumWidth(fontMetrics().horizontalAdvance(pane.usual));
    m_progress->setMaximumSize(10 * fontMetrics().height(), fontMetrics().height());
}

void CStatusBar::changeEvent(QEvent* event)
{
    QStatusBar::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        FitPanes();
}

void CStatusBar::SetPrompt(const QString& text)
{
    m_prompt->setText(text);
}

void CStatusBar::SetProgress(int percent)
{
    const bool wasBusy = std::exchange(m_isBusy, percent > 0 && percent < 100);
    m_progress->setValue(percent);
    if (!m_isBusy) {
        m_progress->hide();
    } else if (!wasBusy) {
        m_sincePaint.start();
    } else if (m_sincePaint.hasExpired(kRepaintMs) && isVisible()) {
        // What takes less shows no progress.
        m_progress->show();
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        m_sincePaint.restart();
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
    m_pointer->clear();
    m_dragged->clear();
    m_size->clear();
    m_zoom->clear();
}

QString CStatusBar::Prompt() const
{
    return m_prompt->text();
}

QString CStatusBar::DraggedRectText() const
{
    return m_dragged->text();
}

QString CStatusBar::PointerText() const
{
    return m_pointer->text();
}
