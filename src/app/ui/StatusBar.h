// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/geometry/Geometry.h"

#include <QElapsedTimer>
#include <QStatusBar>

class CPromptLabel;
class QLabel;
class QProgressBar;

/// The main window's status bar: prompt, progress of a long operation, pointer position, size of what is
/// selected or being drawn, canvas size and zoom.
class CStatusBar final : public QStatusBar {
    Q_OBJECT

public:
    explicit CStatusBar(QWidget* parent = nullptr);

    void SetPrompt(const QString& text);
    /// 0 to 100; the bar is only seen in between. Keeps the window painted during a long operation without
    /// taking any input.
    void SetProgress(int percent);
    void SetPointerText(const QString& text);
    /// Size and place of what is being drawn or selected; empty for nothing.
    void SetDraggedRectText(const QString& text);
    /// zoom as views count it: 2 is twice the size, -2 half of it.
    void SetCanvas(Size size, int zoom);
    /// No document is open.
    void ClearCanvas();

    [[nodiscard]] QString Prompt() const;
    [[nodiscard]] QString PointerText() const;
    [[nodiscard]] QString DraggedRectText() const;

protected:
    void changeEvent(QEvent* event) override;

private:
    void FitPanes();

    CPromptLabel* m_prompt;
    QProgressBar* m_progress;
    QLabel* m_pointer;
    QLabel* m_dragged;
    QLabel* m_size;
    QLabel* m_zoom;
    bool m_isBusy = false;
    QElapsedTimer m_sincePaint;
};
