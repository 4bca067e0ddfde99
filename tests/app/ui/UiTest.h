// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/ui/MainFrame.h"
#include "app/ui/ObjectsPanel.h"
#include "platform/clipboard/Clipboard.h"
#include "support/TestPictures.h"

#include <QApplication>
#include <QSettings>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <string>
#include <vector>

/// Remembers what would have been shown.
class CRecordingInterface final : public IUserInterface {
public:
    void ShowMessage(const std::string& text) override { messages.push_back(text); }
    [[nodiscard]] bool AskYesNo(const std::string& /*question*/) override { return true; }
    void SetStatusText(const std::string& /*text*/) override {}
    void SetPosition(int /*percent*/) override {}

    std::vector<std::string> messages;
};

/// Runs `act` on the next dialog of that kind, while whoever opened it waits for its end.
template <typename Dialog, typename Act> void OnNextDialog(Act act)
{
    QTimer::singleShot(0, qApp, [act] {
        auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
        if (dialog)
            act(*dialog);
        else
            OnNextDialog<Dialog>(act);
    });
}

/// Shows the window and waits for its panels, which are made when it is on the screen.
inline void ShowWithPanels(CMainFrame& window)
{
    window.show();
    ASSERT_TRUE(QTest::qWaitFor([&window] { return window.findChild<CObjectsPanel*>() != nullptr; }));
}

/// A main window with everything it needs, and a folder for files.
class CWindowTest : public testing::Test {
protected:
    CRecordingInterface m_ui;
    CPrivateClipboard m_clipboard;
    CTemporaryFolder m_folder;
    QSettings m_configuration{QString::fromStdString((m_folder.Path() / "settings.ini").string()),
                              QSettings::IniFormat};
    CPixoluneApp m_app{m_ui, m_clipboard};
    CMainFrame m_window{m_app, m_configuration};

    void ShowWindow() { ShowWithPanels(m_window); }
};
