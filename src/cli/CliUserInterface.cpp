// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/CliUserInterface.h"

#include "platform/strings/Strings.h"

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

bool CCliUserInterface::ChooseLayeredFile(LayeredFileChoice& choice)
{
    if (choice.simplifiesLayers && !choice.asOnePicture)
        m_note = Text(Str::ObjectsSimplifyLayers);
    return false;
}
