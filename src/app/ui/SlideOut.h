// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QBasicTimer>
#include <QFrame>

class CEdgeLabel;
class CPanelDock;
class QMainWindow;
class QVariantAnimation;

/// A panel over the picture, beside the label at the edge of the window that it slid out of. It goes back
/// when neither the pointer nor the keyboard is in it, and with Esc.
class CSlideOut final : public QFrame {
    Q_OBJECT

public:
    explicit CSlideOut(QMainWindow& window);

    /// Takes the panel from its dock.
    void Show(CPanelDock& dock, CEdgeLabel& label, Qt::ToolBarArea edge);
    /// Gives the panel back to its dock.
    void Retract();
    /// None while nothing is out.
    [[nodiscard]] CPanelDock* Dock() const { return m_dock; }
    /// Gives the keyboard to the panel.
    void TakeFocus();

Q_SIGNALS:
    /// The panel went back while it had the keyboard.
    void FocusReturned();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    [[nodiscard]] bool IsInUse() const;
    /// Where the panel stands, `part` of the way out, 0 to 1.
    [[nodiscard]] QRect Place(qreal part) const;

    QMainWindow& m_window;
    CPanelDock* m_dock = nullptr;
    CEdgeLabel* m_label = nullptr;
    Qt::ToolBarArea m_edge = Qt::RightToolBarArea;
    QWidget* m_title = nullptr;
    QVariantAnimation* m_motion;
    QBasicTimer m_watch;
    int m_idleChecks = 0;
};
