// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "canvas/PixoluneView.h"

#include <QAbstractScrollArea>
#include <QBasicTimer>
#include <QImage>

#include <optional>

/// Shows a view: forwards the events to it and copies its picture to the screen. The view's client pixels
/// are the screen's own, whatever the scale factor of the desktop, so a picture at actual size is never
/// resampled.
///
/// Ctrl+wheel zooms at the pointer, the wheel scrolls, with Shift sideways; the middle button, or any
/// button while Space is held, drags the canvas; Esc gives up an unfinished drag or, without one, what is
/// selected.
class CCanvasWidget final : public QAbstractScrollArea, private IViewHost {
    Q_OBJECT

public:
    /// The view must outlive the widget's last event; the widget becomes its host.
    explicit CCanvasWidget(CPixoluneView& view, QWidget* parent = nullptr);
    ~CCanvasWidget() override;

    [[nodiscard]] CPixoluneView& View() const { return m_view; }

Q_SIGNALS:
    void PointerTextChanged(const QString& text);
    /// Size and place of what is being drawn or dragged; empty when nothing is.
    void DraggedRectTextChanged(const QString& text);
    void LayoutChanged();
    /// The context menu is asked for, at a point of the screen; what is under the pointer has been selected.
    void MenuRequested(const QPoint& globalPosition);
    void ToolModeChanged();
    /// Something is being drawn or dragged now, or no longer.
    void BusyChanged();
    /// The colour picker is over a pixel, 0xAARRGGBB.
    void ColorUnderPointer(uint32_t pixel);
    /// A paint colour of the settings was picked.
    void PaintColorsChanged();

protected:
    bool viewportEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool event(QEvent* event) override;

private:
    void Invalidate(const Rect& client) override;
    void OnLayoutChanged() override;
    void OnPointerText(const std::string& text) override;
    void OnDraggedRectText(const std::string& text) override;
    void OnToolModeChanged() override;
    void OnBusyChanged() override { Q_EMIT BusyChanged(); }
    void OnCursorChanged(CursorShape shape) override;
    void OnColourUnderPointer(uint32_t pixel) override { Q_EMIT ColorUnderPointer(pixel); }
    void OnPaintColoursChanged() override { Q_EMIT PaintColorsChanged(); }
    void OnTextPoint(Point documentPoint) override;
    void OnPlaybackChanged() override;
    void OnTextObject(const Ref<CPicObject>& object) override;

    [[nodiscard]] Point ToClient(const QPointF& position) const;
    [[nodiscard]] MouseInput ToInput(const QMouseEvent& event) const;
    void UpdateClientSize();
    /// Composes a slice of the frame.
    void Refine();
    void ScheduleRefinement();
    void TakeColours();
    void UpdateScrollBars();
    void ShowCursor();
    void PaintFocus(QPainter& painter) const;
    void PanTo(Point client);
    /// Gives up the selection of pixels or, without one, that of objects; false without either.
    bool ClearMarks();
    bool NudgeOrScroll(const QKeyEvent& event);
    /// Whether an unfinished gesture wants the key before any shortcut does.
    [[nodiscard]] bool IsWantedByTool(int key) const;

    CPixoluneView& m_view;
    QBasicTimer m_outlineTimer;          ///< runs while a selection is shown
    QBasicTimer m_refineTimer;           ///< runs until the frame shown is exact
    QBasicTimer m_playTimer;             ///< runs while the animation plays
    QImage m_band;                       ///< pixels on their way to the screen, reused
    std::optional<CursorShape> m_cursor; ///< what the view asked for
    std::optional<CursorShape> m_shownCursor;
    Qt::MouseButton m_held = Qt::NoButton; ///< the button of the view's drag
    std::optional<Point> m_panFrom;
    Ref<CPicObject> m_textObject; ///< whose text is asked for
    qreal m_ratio = 0;            ///< device pixels a pixel when the client size was taken
    bool m_spaceHeld = false;
    bool m_showsFocus = false; ///< the keyboard brought the focus here
    bool m_updatingBars = false;
    int m_wheelRest = 0; ///< what is left of a notch, in eighths of a degree
};
