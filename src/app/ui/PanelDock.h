// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDockWidget>

/// The dock of a panel, with a title line of its own: pin, float, hide.
class CPanelDock final : public QDockWidget {
    Q_OBJECT

public:
    /// name: under which layouts know the dock.
    CPanelDock(const QString& title, const QString& name, QSize defaultSize);

    [[nodiscard]] QSize DefaultSize() const { return m_defaultSize; }
    /// How large the dock was when it was last seen.
    [[nodiscard]] QSize LastSize() const { return m_lastSize; }

Q_SIGNALS:
    /// The panel is to stay beside the picture, or to wait at the edge of the window.
    void PinRequested(bool pinned);
    void HideRequested();

protected:
    void resizeEvent(QResizeEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    QSize m_defaultSize;
    QSize m_lastSize;
};
