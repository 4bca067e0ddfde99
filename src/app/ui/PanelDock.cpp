// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ui/PanelDock.h"

#include "app/ui/PanelTitle.h"

#include <QCloseEvent>

CPanelDock::CPanelDock(const QString& title, const QString& name, QSize defaultSize)
    : QDockWidget(title), m_defaultSize(defaultSize), m_lastSize(defaultSize)
{
    setObjectName(name);
    auto* line = new CPanelTitle(title, this);
    line->AddButton("unpin", Str::UnpinPanel, [this] { Q_EMIT PinRequested(false); });
    line->AddButton("float", Str::FloatPanel, [this] { setFloating(!isFloating()); });
    line->AddButton("panel-close", Str::HidePanel, [this] { Q_EMIT HideRequested(); });
    setTitleBarWidget(line);
}

void CPanelDock::resizeEvent(QResizeEvent* event)
{
    QDockWidget::resizeEvent(event);
    if (isVisible())
        m_lastSize = event->size();
}

void CPanelDock::closeEvent(QCloseEvent* event)
{
    event->ignore();
    Q_EMIT HideRequested();
}
