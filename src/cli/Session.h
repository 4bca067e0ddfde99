// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/CommandTable.h"
#include "app/PixoluneApp.h"
#include "canvas/PixoluneView.h"
#include "cli/CliUserInterface.h"

#include <memory>
#include <ostream>
#include <string>
#include <vector>

/// How a statement ended.
enum class Outcome {
    Done,        ///< unless it showed a message: then it was refused
    Disabled,    ///< the menus would show its command disabled
    Failed,      ///< for a reason given by CSession::Fail
    ScriptError, ///< an argument did not fit; nothing was done
};

/// How coordinates in a script are meant.
enum class PointerUnit { DocumentPixels, ClientPixels };

/// The editor as a script sees it: the application object, the opened documents with one view each, and the
/// current one of them.
class CSession {
public:
    explicit CSession(std::ostream& output);
    CSession(const CSession&) = delete;
    CSession& operator=(const CSession&) = delete;

    [[nodiscard]] CPixoluneApp& App() { return m_app; }
    [[nodiscard]] CSettings& Settings() { return m_app.Settings(); }
    [[nodiscard]] CCliUserInterface& Ui() { return m_ui; }
    [[nodiscard]] std::ostream& Output() { return m_output; }

    // Documents
    /// Whether there is a current document; Document and View need one.
    [[nodiscard]] bool HasDocument() const { return m_current != nullptr; }
    [[nodiscard]] CPixoluneDoc& Document() const { return *m_current->document; }
    [[nodiscard]] CPixoluneView& View() const { return *m_current->view; }
    [[nodiscard]] CObjectCanvas& Canvas() const { return Document().Canvas(); }
    /// Gives a document just opened the next number and a view, and makes it current.
    void Show(CPixoluneDoc* document);
    /// Makes the document with this number, from 1, current; false when it is not open.
    [[nodiscard]] bool SwitchTo(int number);
    /// Closes the current document. The one opened last before it becomes current, or the first of all.
    void CloseCurrent();

    // Commands
    [[nodiscard]] CommandContext Context();
    Outcome RunMenuCommand(CommandId id);
    /// What comes before a command's dialog opens: a drag of the pointer ends, as before every command.
    void FinishDrag() { View().FinishDrag(); }
    /// Gives the reason for a failure that the desktop program has no message for.
    Outcome Fail(std::string reason);
    [[nodiscard]] const std::string& FailureReason() const { return m_failureReason; }

    // Mouse
    void SetPointerUnit(PointerUnit unit) { m_pointerUnit = unit; }
    /// The client point that coordinates of a script stand for.
    [[nodiscard]] Point ToClient(Point scriptPoint) const;
    /// The button that the last press went down with.
    [[nodiscard]] MouseButton PressedButton() const { return m_pressed; }
    void SetPressedButton(MouseButton button) { m_pressed = button; }

private:
    struct OpenDocument {
        int number;
        CPixoluneDoc* document;
        std::unique_ptr<CPixoluneView> view;
    };

    std::ostream& m_output;
    CCliUserInterface m_ui;
    CPrivateClipboard m_clipboard;
    CPixoluneApp m_app;
    /// In the order of their numbers. Stands behind the application object: views go before documents.
    std::vector<std::unique_ptr<OpenDocument>> m_open;
    OpenDocument* m_current = nullptr;
    int m_nextNumber = 1;
    PointerUnit m_pointerUnit = PointerUnit::DocumentPixels;
    MouseButton m_pressed = MouseButton::Left;
    std::string m_failureReason;
};
