// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/PixoluneApp.h"
#include "app/ui/ChildFrame.h"
#include "app/ui/MainFrame.h"
#include "canvas/ui/CanvasWidget.h"
#include "platform/clipboard/Clipboard.h"
#include "support/SilentUserInterface.h"

#include <QEvent>
#include <QSettings>
#include <QTemporaryDir>

/// A main window whose canvas has 1920 x 1080 pixels, with all its panels, and a folder for files.
class CBenchWindow {
public:
    CBenchWindow();
    ~CBenchWindow();

    [[nodiscard]] QString File(const char* name) const { return m_folder.filePath(QLatin1String(name)); }
    [[nodiscard]] CMainFrame& Frame() { return m_window; }
    [[nodiscard]] CPixoluneDoc& Document() { return m_window.ActiveFrame()->Document(); }
    [[nodiscard]] CPixoluneView& View() { return m_window.ActiveFrame()->View(); }
    [[nodiscard]] QWidget& Canvas() { return *m_window.ActiveFrame()->Canvas().viewport(); }

    /// Opens a file and shows it.
    void Open(const QString& path);
    /// Shows a document of a canvas, alone, in a canvas of the stated size.
    void Show(CObjectCanvas canvas);
    void CloseAll();
    /// Actual size, the middle in sight, no button held and no tool at work.
    void Reset();
    void Run(CommandId id);
    void Press(QPoint place, Qt::MouseButton button);
    void Drag(QPoint place, Qt::MouseButton button);
    void Release(QPoint place, Qt::MouseButton button);
    /// Paints what is pending.
    static void Paint();
    /// Waits until the canvas has been painted again.
    void AwaitPaint();
    /// Handles what is pending, paints included.
    static void Settle();
    /// Handles what is pending until the canvas shows the document as it is.
    void AwaitExact();
    /// Gives the canvas its size; the first document that is shown changes it.
    void FitCanvas();

private:
    void Mouse(QEvent::Type type, QPoint place, Qt::MouseButton button, Qt::MouseButtons buttons);

    QTemporaryDir m_folder;
    QSettings m_settings;
    CSilentUserInterface m_ui;
    CPrivateClipboard m_clipboard;
    CPixoluneApp m_app{m_ui, m_clipboard};
    CMainFrame m_window{m_app, m_settings};
};
