// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/ui/UserInterface.h"

#include <ostream>
#include <utility>

/// Prints what the desktop program would show in a box: "message: TEXT" and "question: TEXT".
class CCliUserInterface final : public IUserInterface {
public:
    explicit CCliUserInterface(std::ostream& output) : m_output(output) {}

    void ShowMessage(const std::string& text) override;
    [[nodiscard]] bool AskYesNo(const std::string& question) override;
    void SetStatusText(const std::string& /*text*/) override {}
    void SetPosition(int /*percent*/) override {}
    /// The settings decide; what there is to know is kept.
    [[nodiscard]] bool ChooseLayeredFile(LayeredFileChoice& choice) override;

    /// How the following questions are answered.
    void SetAnswer(bool isYes) { m_answer = isYes; }
    /// Messages shown so far.
    [[nodiscard]] int MessageCount() const { return m_messageCount; }

    /// From now on messages are kept instead of printed.
    void KeepMessages() { m_keepsMessages = true; }
    /// The last one kept since the last call.
    [[nodiscard]] std::string TakeMessage() { return std::exchange(m_kept, {}); }

    /// What there is to know about how a file was opened since the last call; empty for nothing.
    [[nodiscard]] std::string TakeNote() { return std::exchange(m_note, {}); }

private:
    std::ostream& m_output;
    bool m_answer = true;
    int m_messageCount = 0;
    bool m_keepsMessages = false;
    std::string m_kept;
    std::string m_note;
};
