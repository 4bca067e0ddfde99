// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ui/ChildFrame.h"

#include "canvas/ui/CanvasWidget.h"
#include "platform/ui/QtText.h"

#include <QAccessible>
#include <QCloseEvent>
#include <QMenu>

CChildFrame::CChildFrame(CPixoluneDoc& document, CloseQuestion mayClose)
    : m_document(document), m_view(std::make_unique<CPixoluneView>(document)),
      m_canvas(new CCanvasWidget(*m_view)), m_mayClose(std::move(mayClose))
{
    setAttribute(Qt::WA_DeleteOnClose);
    setWidget(m_canvas);
    setFocusProxy(m_canvas);
    // A key that the menu in the frame's corner wants as well as a command would run neither.
    for (QAction* action : systemMenu()->actions())
        action->setShortcuts(QList<QKeySequence>());
    document.AddObserver(this);
    connect(m_canvas, &CCanvasWidget::LayoutChanged, this, &CChildFrame::StateChanged);
    connect(m_canvas, &CCanvasWidget::ToolModeChanged, this, &CChildFrame::StateChanged);
    OnStateChanged();
}

CChildFrame::~CChildFrame()
{
    m_document.RemoveObserver(this);
    // The widget speaks to the view until it is gone.
    delete m_canvas;
    m_view.reset();
    Q_EMIT Closed(this, &m_document);
}

void CChildFrame::closeEvent(QCloseEvent* event)
{
    m_view->CancelDrag();
    m_closing = m_closing || m_mayClose(*this);
    event->setAccepted(m_closing);
}

void CChildFrame::CloseUnasked()
{
    m_closing = true;
    close();
}

void CChildFrame::SetNumber(int number)
{
    if (number == m_number)
        return;
    m_number = number;
    OnStateChanged();
}

void CChildFrame::OnContentChanged()
{
    if (QAccessible::isActive()) {
        QAccessibleEvent event(m_canvas, QAccessible::DescriptionChanged);
        QAccessible::updateAccessibility(&event);
    }
    Q_EMIT StateChanged();
}

void CChildFrame::OnStateChanged()
{
    const QString number = m_number > 0 ? QStringLiteral(":%1").arg(m_number) : QString();
    setWindowTitle(ToQString(m_document.Title()) + number + QStringLiteral("[*]"));
    setWindowModified(m_document.IsModified());
    setToolTip(PathToQString(m_document.Path()));
    Q_EMIT StateChanged();
}
