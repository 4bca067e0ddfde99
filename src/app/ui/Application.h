// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QApplication>

class CMainFrame;
class CPixoluneApp;

/// What the events of the windows pass through: none of them ends the program when memory runs out.
class CApplication final : public QApplication {
public:
    using QApplication::QApplication;

    /// Runs the event loop of the window; returns the exit status.
    int Run(CPixoluneApp& app, CMainFrame& window);
    bool notify(QObject* receiver, QEvent* event) override;

private:
    void GiveUp();

    CPixoluneApp* m_app = nullptr; ///< none outside the event loop
    CMainFrame* m_window = nullptr;
    bool m_isGivingUp = false;
};
