// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ui/PanelLayout.h"

#include "app/ui/EdgeStrip.h"
#include "app/ui/PanelDock.h"
#include "app/ui/SlideOut.h"
#include "platform/ui/QtText.h"

#include <QMainWindow>

#include <algorithm>

namespace {

Qt::ToolBarArea EdgeOf(Qt::DockWidgetArea area)
{
    switch (area) {
    case Qt::LeftDockWidgetArea:
        return Qt::LeftToolBarArea;
    case Qt::TopDockWidgetArea:
        return Qt::TopToolBarArea;
    case Qt::BottomDockWidgetArea:
        return Qt::BottomToolBarArea;
    default:
        return Qt::RightToolBarArea;
    }
}

} // namespace

CPanelLayout::CPanelLayout(QMainWindow& window)
    : QObject(&window), m_window(window), m_slideOut(new CSlideOut(window))
{
    connect(m_slideOut, &CSlideOut::FocusReturned, this, &CPanelLayout::FocusReturned);
}

void CPanelLayout::Add(CPanelDock& dock)
{
    m_entries.push_back({&dock});
    m_window.addDockWidget(Qt::RightDockWidgetArea, &dock);
    connect(&dock, &CPanelDock::PinRequested, this, [this, &dock](bool pinned) { SetPinned(dock, pinned); });
    connect(&dock, &CPanelDock::HideRequested, this, [this, &dock] { SetShown(dock, false); });
}

size_t CPanelLayout::IndexOf(const CPanelDock& dock) const
{
    return static_cast<size_t>(std::ranges::find(m_entries, &dock, &Entry::dock) - m_entries.begin());
}

void CPanelLayout::Reset()
{
    QList<QDockWidget*> docks;
    QList<int> widths;
    QList<int> heights;
    for (const Entry& entry : m_entries) {
        CPanelDock* dock = entry.dock;
        SetPinned(*dock, true);
        dock->setFloating(false);
        // Removed first, so that docks that are tabbed come apart.
        m_window.removeDockWidget(dock);
        m_window.addDockWidget(Qt::RightDockWidgetArea, dock);
        dock->show();
        docks.append(dock);
        widths.append(dock->DefaultSize().width());
        heights.append(dock->DefaultSize().height());
    }
    m_window.resizeDocks(docks, widths, Qt::Horizontal);
    m_window.resizeDocks(docks, heights, Qt::Vertical);
}

bool CPanelLayout::IsPinned(const CPanelDock& dock) const
{
    return !m_entries[IndexOf(dock)].label;
}

bool CPanelLayout::IsShown(const CPanelDock& dock) const
{
    return !IsPinned(dock) || !dock.isHidden();
}

void CPanelLayout::SetShown(CPanelDock& dock, bool shown)
{
    if (!shown)
        SetPinned(dock, true);
    dock.setVisible(shown);
    if (shown)
        dock.raise();
}

CEdgeStrip& CPanelLayout::Strip(Qt::ToolBarArea edge)
{
    const auto found = std::ranges::find(m_strips, edge, &CEdgeStrip::Edge);
    if (found != m_strips.end())
        return **found;
    auto* strip = new CEdgeStrip(ToQString(Str::WaitingPanels), edge);
    m_strips.push_back(strip);
    m_window.addToolBarBreak(edge);
    m_window.addToolBar(edge, strip);
    return *strip;
}

void CPanelLayout::SetPinned(CPanelDock& dock, bool pinned)
{
    Entry& entry = m_entries[IndexOf(dock)];
    if (pinned == (entry.label == nullptr))
        return;
    if (!pinned) {
        dock.setFloating(false);
        entry.strip = &Strip(EdgeOf(m_window.dockWidgetArea(&dock)));
        entry.label = entry.strip->AddLabel(dock.windowTitle());
        const auto slideOut = [this, &dock] { SlideOut(m_entries[IndexOf(dock)]); };
        connect(entry.label, &CEdgeLabel::Approached, this, slideOut);
        connect(entry.label, &QToolButton::clicked, this, [this, slideOut] {
            slideOut();
            m_slideOut->TakeFocus();
        });
        dock.hide();
        return;
    }
    if (m_slideOut->Dock() == &dock)
        m_slideOut->Retract();
    entry.strip->RemoveLabel(entry.label);
    entry.strip = nullptr;
    entry.label = nullptr;
    dock.show();
}

void CPanelLayout::SlideOut(const Entry& entry)
{
    if (entry.label)
        m_slideOut->Show(*entry.dock, *entry.label, entry.strip->Edge());
}

QStringList CPanelLayout::Unpinned() const
{
    QStringList names;
    for (const Entry& entry : m_entries) {
        if (entry.label)
            names.append(entry.dock->objectName());
    }
    return names;
}

void CPanelLayout::SetUnpinned(const QStringList& names)
{
    for (const Entry& entry : m_entries)
        SetPinned(*entry.dock, !names.contains(entry.dock->objectName()));
}
