// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/ui/UserInterface.h"

#include <set>

class CStatusBar;
class QWidget;

/// Messages and questions as boxes above the main window, prompts and progress in its status bar.
class CQtUserInterface final : public IUserInterface {
public:
    /// attended: whether somebody is there to close boxes. Otherwise messages go to standard error and
    /// questions are answered No.
    explicit CQtUserInterface(bool attended) : m_attended(attended) {}

    /// The window and status bar that are spoken through; until they are set nothing is shown but boxes.
    void Attach(QWidget* window, CStatusBar* statusBar);

    void ShowMessage(const std::string& text) override;
    [[nodiscard]] bool AskYesNo(const std::string& question) override;
    [[nodiscard]] bool ChooseLayeredFile(LayeredFileChoice& choice) override;
    void SetStatusText(const std::string& text) override;
    void SetPosition(int percent) override;

private:
    bool m_attended;
    QWidget* m_window = nullptr;
    CStatusBar* m_statusBar = nullptr;
    std::set<std::string> m_settledQuestions; ///< answered Yes for the rest of the session
};
