// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ui/Help.h"

#include "app/ui/HelpWindow.h"
#include "app/ui/Shortcuts.h"
#include "platform/ui/HelpPage.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QWindow>

namespace {

/// The page of a part or of the nearest part around it, up to its window.
QString PageOf(const QWidget* part)
{
    for (; part; part = part->isWindow() ? nullptr : part->parentWidget()) {
        if (QString page = HelpPageOf(*part); !page.isEmpty())
            return page;
    }
    return {};
}

} // namespace

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

void CHelp::ShowForMenus()
{
    QString page;
    while (auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget())) {
        // The innermost menu has the entry that is meant.
        if (page.isEmpty() && menu->activeAction())
            page = HelpPageOf(*menu->activeAction());
        menu->close();
    }
    Show(page.isEmpty() ? m_currentPage() : page);
}

bool CHelp::eventFilter(QObject* watched, QEvent* event)
{
    // The help command's own shortcut serves the main window only.
    QWidget* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    QWidget* const dialog = QApplication::activeModalWidget();
    if (event->type() != QEvent::KeyPress || !watched->isWidgetType() || !(menu || dialog))
        return false;
    const auto* part = static_cast<const QWidget*>(watched);
    const auto* key = static_cast<const QKeyEvent*>(event);
    if ((!menu && part->window() != dialog) ||
        !m_shortcuts.Of(CommandId::HelpTopics).contains(QKeySequence(key->keyCombination())))
        return false;
    if (menu)
        ShowForMenus();
    else
        ShowFor(part);
    return true;
}
