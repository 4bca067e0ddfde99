// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QBasicTimer>
#include <QToolBar>
#include <QToolButton>

/// The label of a panel that waits at an edge of the window, written along that edge.
class CEdgeLabel final : public QToolButton {
    Q_OBJECT

public:
    CEdgeLabel(const QString& text, Qt::ToolBarArea edge);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

Q_SIGNALS:
    /// The pointer rests on the label, or the keyboard came to it: the panel is to be seen.
    void Approached();

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    [[nodiscard]] bool IsUpright() const;

    Qt::ToolBarArea m_edge;
    QBasicTimer m_rest;
};

/// The labels of the panels that wait at one edge of the window.
class CEdgeStrip final : public QToolBar {
    Q_OBJECT

public:
    CEdgeStrip(const QString& title, Qt::ToolBarArea edge);

    /// The strip shows itself with its first label and hides with its last.
    CEdgeLabel* AddLabel(const QString& text);
    void RemoveLabel(CEdgeLabel* label);
    [[nodiscard]] Qt::ToolBarArea Edge() const { return m_edge; }

private:
    Qt::ToolBarArea m_edge;
    QList<std::pair<CEdgeLabel*, QAction*>> m_labels;
};
