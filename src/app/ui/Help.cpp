// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ui/Help.h"

#include "app/ui/HelpWindow.h"
#include "app/ui/Shortcuts.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWindow>

namespace {

constexpr const char* kPageProperty = "helpPage";

/// The page of a part or of the nearest part around it, up to its window.
QString PageOf(const QWidget* part)
{
    for (; part; part = part->isWindow() ? nullptr : part->parentWidget()) {
        if (const QVariant page = part->property(kPageProperty); page.isValid())
            return page.toString();
    }
    return {};
}

} // namespace

void SetHelpPage(QWidget& part, const char* page)
{
    part.setProperty(kPageProperty, QLatin1String(page));
}

CHelp::CHelp(const CShortcuts& shortcuts, QSettings& configuration, PageSource currentPage)
    : m_shortcuts(shortcuts), m_configuration(configuration), m_currentPage(std::move(currentPage))
{
    qApp->installEventFilter(this);
}

CHelp::~CHelp()
{
    // It keeps its size when it is closed.
    if (m_window)
        m_window->close();
}

void CHelp::Show(const QString& page)
{
    if (!m_window)
        m_window = std::make_unique<CHelpWindow>(m_shortcuts, m_configuration);
    m_window->ShowPage(page);
    // A dialog lets nothing but its own windows be used.
    QWidget* dialog = QApplication::activeModalWidget();
    m_window->winId();
    QWindow* const owner = dialog ? dialog->window()->windowHandle() : nullptr;
    if (m_window->windowHandle()->transientParent() != owner) {
        m_window->hide();
        m_window->windowHandle()->setTransientParent(owner);
    }
    m_window->show();
    m_window->raise();
    m_window->activateWindow();
}

void CHelp::ShowFor(const QWidget* part)
{
    const QString page = PageOf(part);
    Show(page.isEmpty() ? m_currentPage() : page);
}

bool CHelp::eventFilter(QObject* watched, QEvent* event)
{
    // The help command's own shortcut serves the main window only.
    if (event->type() != QEvent::KeyPress || !watched->isWidgetType() || !QApplication::activeModalWidget())
        return false;
    const auto* part = static_cast<const QWidget*>(watched);
    const auto* key = static_cast<const QKeyEvent*>(event);
    if (part->window() != QApplication::activeModalWidget() ||
        !m_shortcuts.Of(CommandId::HelpTopics).contains(QKeySequence(key->keyCombination())))
        return false;
    ShowFor(part);
    return true;
}
