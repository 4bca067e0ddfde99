// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ui/QtUserInterface.h"

#include "app/ui/Help.h"
#include "app/ui/StatusBar.h"
#include "fileio/ui/LayeredFileDialog.h"
#include "platform/ui/HelpPage.h"
#include "platform/ui/QtText.h"

#include <QCheckBox>
#include <QMessageBox>

void CQtUserInterface::Attach(QWidget* window, CStatusBar* statusBar)
{
    m_window = window;
    m_statusBar = statusBar;
}

void CQtUserInterface::ShowMessage(const std::string& text)
{
    if (!m_attended) {
        qWarning("%s", text.c_str());
        return;
    }
    QMessageBox box(QMessageBox::Warning, ToQString(Str::ApplicationTitle), ToQString(text), QMessageBox::Ok,
                    m_window);
    box.setTextFormat(Qt::PlainText);
    SetHelpPage(box, QStringLiteral("messages"));
    box.exec();
}

bool CQtUserInterface::AskYesNo(const std::string& question)
{
    if (m_settledQuestions.contains(question))
        return true;
    if (!m_attended)
        return false;
    QMessageBox box(QMessageBox::Question, ToQString(Str::ApplicationTitle), ToQString(question),
                    QMessageBox::Yes | QMessageBox::No, m_window);
    box.setTextFormat(Qt::PlainText);
    auto* settle = new QCheckBox(ToQString(Str::DoNotAskAgain), &box);
    box.setCheckBox(settle);
    const bool yes = box.exec() == QMessageBox::Yes;
    if (yes && settle->isChecked())
        m_settledQuestions.insert(question);
    return yes;
}

bool CQtUserInterface::ChooseLayeredFile(LayeredFileChoice& choice)
{
    if (!m_attended)
        return false;
    CLayeredFileDialog dialog(choice, m_window);
    SetHelpPage(dialog, QStringLiteral("format-psd"));
    if (dialog.exec() != QDialog::Accepted)
        return false;
    choice = dialog.Choice();
    return true;
}

void CQtUserInterface::SetStatusText(const std::string& text)
{
    if (!m_statusBar)
        return;
    m_statusBar->SetPrompt(ToQString(text));
    // Readers of broken files stop anywhere, and some end below 100.
    if (text.empty())
        m_statusBar->SetProgress(0);
}

void CQtUserInterface::SetPosition(int percent)
{
    if (m_statusBar)
        m_statusBar->SetProgress(percent);
}
