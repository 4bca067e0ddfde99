// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ui/Application.h"

#include "app/PixoluneApp.h"
#include "app/ui/ChildFrame.h"
#include "app/ui/MainFrame.h"

#include <QEvent>

#include <functional>
#include <new>

int CApplication::Run(CPixoluneApp& app, CMainFrame& window)
{
    m_app = &app;
    m_window = &window;
    const int status = exec();
    m_app = nullptr;
    return status;
}

bool CApplication::notify(QObject* receiver, QEvent* event)
{
    if (m_app == nullptr)
        return QApplication::notify(receiver, event);
    bool isHandled = false;
    const auto run = [&] { isHandled = QApplication::notify(receiver, event); };
    // Nobody has asked for these, and they come again.
    const bool isPainting = event->type() == QEvent::Paint || event->type() == QEvent::UpdateRequest;
    if (isPainting || m_isGivingUp) {
        try {
            run();
        } catch (const std::bad_alloc&) {
            isHandled = false;
        }
        return isHandled;
    }
    m_app->RunWithinMemory(std::ref(run), [this] { GiveUp(); });
    m_isGivingUp = false;
    return isHandled;
}

void CApplication::GiveUp()
{
    m_isGivingUp = true;
    if (CChildFrame* frame = m_window->ActiveFrame())
        frame->View().CancelDrag();
}
