// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/CliUserInterface.h"

void CCliUserInterface::ShowMessage(const std::string& text)
{
    ++m_messageCount;
    if (m_keepsMessages)
        m_kept = text;
    else
        m_output << "message: " << text << '\n';
}

bool CCliUserInterface::AskYesNo(const std::string& question)
{
    m_output << "question: " << question << '\n';
    return m_answer;
}
